// A workbook that a job of ours opens in LibreOffice.
#pragma once

#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/script/provider/XScript.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace qva::calc {

/// Visible where there is a display, its macros enabled. Closed when the object goes, unless it is to stay.
/// All texts are in UTF-8. Errors are std::runtime_error, UNO's exceptions, and those of the macros
/// (AutomationError).
class OpenWorkbook {
 public:
  /// Opens the file of a path of the system.
  OpenWorkbook(const css::uno::Reference<css::uno::XComponentContext>& context, const std::string& path);
  ~OpenWorkbook();
  OpenWorkbook(const OpenWorkbook&) = delete;
  OpenWorkbook& operator=(const OpenWorkbook&) = delete;

  /// Runs a macro of the workbook, named as Library.Module.Procedure or, in its own library, as
  /// Module.Procedure. Raises the error that it did not handle, and for a macro that does not compile or was
  /// ended. Nothing of ours stands in the workbook while the macro runs.
  void RunMacro(const std::string& macro) const;

  /// Runs what the workbook has to do before it is closed: the macros Auto_Close of its own library, which
  /// Excel runs when the user closes a workbook. Raises as RunMacro.
  void RunAutoClose() const;

  void PrintToPdf(const std::string& path) const;

  /// Leaves the workbook to the user.
  void Keep() { is_kept_ = true; }

 private:
  void Call(const css::uno::Reference<css::script::provider::XScript>& called,
            const std::string& macro) const;

  css::uno::Reference<css::uno::XComponentContext> context_;
  css::uno::Reference<css::lang::XComponent> model_;
  bool is_kept_ = false;
};

}  // namespace qva::calc
