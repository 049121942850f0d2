// The period dialog.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "period/AccountSetGrid.h"
#include "period/HostForm.h"
#include "period/PeriodArithmetic.h"
#include "platform/controls.h"
#include "platform/host.h"

namespace qva {

/// Lets the user choose the period of a report, the period to compare it with, the chart of accounts and the
/// budget documents. Event handlers end without further changes when something fails in them; none raises.
class frmReportPeriod {
 public:
  frmReportPeriod();
  ~frmReportPeriod();

  /// Shows the dialog with the settings, and writes them back when the user confirms it; then the result is
  /// true. Otherwise the settings stay as they are. `book` is the host's current book. Raises 91 without a
  /// book or settings, and what the host and the form raise.
  bool Run(const host::SettingsCollection& settings, const host::Book& book);

  /// The folder word under which the host's framework keeps the settings of this dialog.
  std::u16string ImpTag() const { return u"\\Brisvane"; }

  /// Fills the controls.
  void m_oForm_BeforeShow();
  /// Checks what the user entered: a verdict, and the text that tells what is wrong.
  void m_oForm_btOKClick(bool& verdict, std::u16string& message);

 private:
  /// What lives while the dialog is shown.
  struct Showing;

  ui::TextBox& Box(std::u16string_view name) const;
  ui::DatePicker& Picker(std::u16string_view name) const;
  ui::OptionButton& Option(std::u16string_view name) const;
  ui::ComboBox& AccountPlan() const;
  /// The plan code that the combo box holds, in the list's own letters, whichever were typed; empty when it
  /// holds none of the list. Where the list could not be read, any text is a code.
  std::u16string AccountPlanCode() const;
  int Number(std::u16string_view box) const;

  void ConnectEvents();
  void FillAccountPlans();
  void FillControls();
  void ApplyEnabling();
  PeriodKind SelectedKind() const;
  void OptionClicked(std::u16string_view name);
  void ControlChanged(std::u16string_view name);
  void Recompute(std::u16string_view name);
  void ShowPreviousPeriod(std::int16_t months_back);
  std::int32_t Refusal(std::u16string_view& focus) const;
  void WriteBack();

  std::unique_ptr<Showing> showing_;
};

/// The dialog's window.
ui::FormDescription ReportPeriodLayout();

}  // namespace qva
