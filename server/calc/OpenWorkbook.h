// A workbook that a job of ours opens in LibreOffice, or finds open there.
#pragma once

#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/script/provider/XScript.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// Why a macro does not run, or did not run to its end.
class MacroFailure : public std::runtime_error {
 public:
  enum class Reason {
    NoWorkbook,  ///< it cannot be opened
    NoMacro,     ///< there is none of that name
    DoesNotCompile,
    Ended  ///< by an End statement or by quitting Excel
  };
  MacroFailure(Reason reason, const std::string& text) : std::runtime_error(text), reason_(reason) {}
  Reason reason() const { return reason_; }

 private:
  Reason reason_;
};

/// An error that a macro did not handle.
class MacroError : public AutomationError {
 public:
  MacroError(const AutomationError& error, int line) : AutomationError(error), line_(line) {}
  /// Of the module where it came up, from 1; 0 when LibreOffice does not tell.
  int line() const { return line_; }

 private:
  int line_;
};

/// One that was opened here is visible where there is a display, its macros enabled, and closed when the
/// object goes, unless it is to stay. All texts are in UTF-8. Errors are MacroFailure, UNO's exceptions, and
/// those of the macros (MacroError).
class OpenWorkbook {
 public:
  /// Opens the file of a path of the system. Raises MacroFailure when it is no workbook.
  OpenWorkbook(const Reference<css::uno::XComponentContext>& context, const std::string& path);
  /// Takes a workbook of the user, which stays open.
  OpenWorkbook(const Reference<css::uno::XComponentContext>& context,
               const Reference<css::lang::XComponent>& model)
      : context_(context), model_(model), is_kept_(true) {}
  ~OpenWorkbook();
  OpenWorkbook(const OpenWorkbook&) = delete;
  OpenWorkbook& operator=(const OpenWorkbook&) = delete;

  /// Hides the cells in its window, where that can be done, so that they are not painted. They stay as large
  /// as they are, since the place that is in sight there is stored with the workbook, and the window itself
  /// stays visible: LibreOffice tells nothing of the bars of one that is hidden.
  void HideCells() const;

  /// The workbook's entry macro as Library.Module.Procedure: the public Sub Main without parameters of the
  /// module "Ataskaita", else the first one of any module. The workbook's own libraries come before
  /// "Standard", which LibreOffice gives every document. Nothing when there is none.
  std::optional<std::string> FindMain() const;

  /// Whether LibreOffice runs macros of the workbook; it may ask the user.
  bool AllowsMacros() const;

  /// Runs a macro of the workbook, named as Library.Module.Procedure or as Module.Procedure, of which the
  /// first library that has the module is meant, "Standard" being the last. Raises the error that it did not
  /// handle, and MacroFailure. Nothing of ours stands in the workbook while the macro runs, nor does it count
  /// as modified by this.
  void RunMacro(const std::string& macro) const;

  /// Runs what the workbook has to do before it is closed: the macros Auto_Close of the libraries in which
  /// macros ran, as Excel does when the user closes a workbook. Raises as RunMacro.
  void RunAutoClose() const;

  /// Stores the whole workbook as PDF under a path of the system. Raises what LibreOffice raises.
  void PrintToPdf(const std::string& path) const;

  /// First and last day, yyyy-mm-dd, of the report period that the workbook's named cells hold (CRepPeriod).
  /// Nothing where there is none, or anything fails.
  std::optional<std::pair<std::string, std::string>> Period() const;

  /// Leaves the workbook to the user.
  void Keep() { is_kept_ = true; }

 private:
  void Call(const Reference<css::script::provider::XScript>& called, const std::string& macro) const;

  Reference<css::uno::XComponentContext> context_;
  Reference<css::lang::XComponent> model_;
  bool is_kept_ = false;
};

}  // namespace qva::calc
