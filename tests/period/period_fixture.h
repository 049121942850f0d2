// What tests of the period dialog share: its settings, and a user.
#pragma once

#include <functional>

#include "period/frmReportPeriod.h"
#include "platform/ado.h"
#include "platform/date.h"
#include "tests/library_fixture.h"

namespace qva {

/// The settings of 2024 as a whole year, and the dialog on the book "MEDVILNE".
class PeriodTest : public LibraryTest {
 protected:
  PeriodTest() {
    Connected();
    settings.Add(u"Plan", 7, u"F1");
    settings.Add(u"Year", 3, 2024);
    settings.Add(u"Quarter", 3, 2);
    settings.Add(u"Month", 3, 5);
    settings.Add(u"RepPeriodType", 3, 1);
    settings.Add(u"LastPerBeg", 9, DateFromParts(2023, 1, 1));
    settings.Add(u"LastPerEnd", 9, DateFromParts(2023, 12, 31));
    settings.Add(u"CurrPerBeg", 9, DateFromParts(2024, 1, 1));
    settings.Add(u"CurrPerEnd", 9, DateFromParts(2024, 12, 31));
    settings.Add(u"IsBudgetPlan", 14);
    settings.Add(u"BudgetCount", 2);
    const ado::Fields fields = budgets.Fields();
    fields.Append(u"BookCode", ado::adVarChar, 25, ado::adFldUnspecified);
    fields.Append(u"PlanCode", ado::adVarChar, 25, ado::adFldUnspecified);
    fields.Append(u"PlanIsBudget", ado::adInteger, 0, ado::adFldUnspecified);
    fields.Append(u"BudgetCurrDocId", ado::adCurrency, 0, ado::adFldIsNullable);
    fields.Append(u"BudgetCurrDocCode", ado::adVarChar, 250, ado::adFldIsNullable);
    fields.Append(u"BudgetLastDocId", ado::adCurrency, 0, ado::adFldIsNullable);
    fields.Append(u"BudgetLastDocCode", ado::adVarChar, 250, ado::adFldIsNullable);
    fields.Append(u"Note", ado::adVarChar, 50, ado::adFldIsNullable);  // not known to the grid
    budgets.Open();
    settings.Add(u"BudgetRS", 100, budgets.object());
  }
  ~PeriodTest() override {
    settings = {};
    budgets = {};
    TheGlobals() = {};
  }

  using User = std::function<void(MemoryForm& form)>;

  /// Shows the dialog to a user; one who does not confirm cancels.
  bool Show(const User& user) {
    platform.forms.user = user;
    return dialog.Run(settings, TheGlobals().oBook);
  }
  /// Shows the dialog to a user who confirms it in the end.
  bool ShowAndConfirm(const User& user) {
    return Show([&](MemoryForm& form) {
      user(form);
      form.Click(u"btOk");
    });
  }

  Value Setting(std::u16string_view name) const { return settings.Item(name).Value(); }
  void SetSettingItem(std::u16string_view name, Value value) {
    settings.Item(name).SetValue(std::move(value));
  }

  void AddBudget(std::vector<Value> values) {
    budgets.AddNew(Array::Of({u"BookCode", u"PlanCode", u"PlanIsBudget", u"BudgetCurrDocId",
                              u"BudgetCurrDocCode", u"BudgetLastDocId", u"BudgetLastDocCode", u"Note"}),
                   Array::Of(std::move(values)));
    budgets.MoveFirst();
  }

  /// The period that the form shows: current and previous, by months.
  static std::string Periods(MemoryForm& form) {
    return ToUtf8(form.Text(u"edCurrBegDate") + u".." + form.Text(u"edCurrEndDate") + u" after " +
                  form.Text(u"edPrevBegDate") + u".." + form.Text(u"edPrevEndDate"));
  }
  static Date PickerDate(MemoryForm& form, std::u16string_view name) {
    return ui::Get<ui::DatePicker>(form, name).Value();
  }

  host::SettingsCollection settings = host::SettingsCollection::Create(factory);
  ado::Recordset budgets = ado::Recordset::Create(factory);
  frmReportPeriod dialog;
};

}  // namespace qva
