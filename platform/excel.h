// Excel's object model as far as the library uses it: thin façades over the automation protocol, one method
// for each member, so that library code reads like the model. Each raises Excel's own AutomationError.
#pragma once

#include <string>
#include <string_view>

#include "platform/automation.h"

namespace qva::excel {

/// One or more cells.
class Range : public Facade {
 public:
  using Facade::Facade;
  qva::Value Value() const { return Get(u"Value"); }
  void SetValue(qva::Value value) const { Put(u"Value", std::move(value)); }
};

/// A window on a workbook.
class Window : public Facade {
 public:
  using Facade::Facade;
  void SetCaption(std::u16string_view caption) const { Put(u"Caption", caption); }
};

/// A workbook that is open in the application.
class Workbook : public Facade {
 public:
  using Facade::Facade;
};

/// A sheet of cells.
class Worksheet : public Facade {
 public:
  using Facade::Facade;
};

/// Excel itself.
class Application : public Facade {
 public:
  using Facade::Facade;
  Workbook ActiveWorkbook() const { return Workbook(GetObject(u"ActiveWorkbook")); }
  /// Empty when no window is open.
  Window ActiveWindow() const { return Window(GetObject(u"ActiveWindow")); }
  bool Visible() const { return Get(u"Visible").ToBoolean(); }
  void SetScreenUpdating(bool on) const { Put(u"ScreenUpdating", on); }
  void SetDisplayFormulaBar(bool on) const { Put(u"DisplayFormulaBar", on); }
  /// One of XlMousePointer.
  void SetCursor(std::int32_t pointer) const { Put(u"Cursor", pointer); }
  /// Hands the status bar back to Excel.
  void ResetStatusBar() const { Put(u"StatusBar", false); }
  void Quit() const { Call(u"Quit"); }
};

}  // namespace qva::excel
