// The two fixed states of Excel.
#pragma once

#include "excelui/ConnectedExcel.h"
#include "platform/member_table.h"

namespace qva {

/// Puts Excel into the report state or into its ordinary state. Each setting, each command bar, key and name
/// is a step of its own: one that Excel refuses (there is no active window, a bar has no controls) is
/// skipped, all others are applied, and nothing is raised. The user's own state is CExcelState's matter.
class CEnvironment : public Described<CEnvironment> {
 public:
  static ClassBuilder Describe();
  CEnvironment() = default;
  explicit CEnvironment(ConnectedExcel excel) : excel_(std::move(excel)) {}

  /// The state for reading a report: no formula bar, gridlines and headings, every command bar disabled but
  /// the report toolbars, F1 and F3 to F12 without effect, the active workbook's names hidden.
  /// `bDisplayHorizontalScrollBar` is accepted and not used: the scroll bars stay as they are.
  void SetDefaultAppState(bool bDisplayHorizontalScrollBar);
  /// The state of an Excel that nobody changed; gives keys and names back.
  void SetDefaultExcelState();

 private:
  ConnectedExcel excel_;
};

}  // namespace qva
