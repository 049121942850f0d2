// What tests of the report period share.
#pragma once

#include "period/CRepPeriod.h"
#include "platform/date.h"
#include "platform/excel.h"
#include "tests/library_fixture.h"

namespace qva {

inline const std::vector<std::u16string> kNames = {
    u"AccPlan",           u"RepYear",         u"RepQuarter",        u"RepMon",
    u"RepType",           u"RepLastPerBeg",   u"RepLastPerEnd",     u"RepCurrPerBeg",
    u"RepCurrPerEnd",     u"CurrBudgetDocId", u"CurrBudgetDocCode", u"LastBudgetDocId",
    u"LastBudgetDocCode", u"IsBudgetPlan",    u"BudgetCount",       u"BookCode"};

/// A workbook whose sheet keeps the period.
class ReportPeriodTest : public LibraryTest {
 protected:
  ReportPeriodTest() {
    global = Connected();
    workbook = excel->AddWorkbook();
    sheet = excel::Worksheet(GetObject(workbook, u"ActiveSheet"));
    period = Create(u"CRepPeriod");
  }

  ObjectPtr Sheet() { return interceptor.Wrap(sheet.object(), u"Worksheet"); }
  void Init() { Call(period, u"Init", {Sheet()}); }
  bool Edit() { return Call(period, u"Edit").ToBoolean(); }
  /// Lets the user act and confirm.
  bool EditAndConfirm(const std::function<void(MemoryForm&)>& user = {}) {
    platform.forms.user = [user](MemoryForm& form) {
      if (user) user(form);
      form.Click(u"btOk");
    };
    return Edit();
  }
  /// Lets the user, who is to see the dialog, do something and leave it.
  void EditAndLeave(const std::function<void(MemoryForm&)>& user) { EditAndLeave(period, user); }
  void EditAndLeave(const ObjectPtr& object, const std::function<void(MemoryForm&)>& user) {
    bool is_shown = false;
    platform.forms.user = [&](MemoryForm& form) {
      is_shown = true;
      user(form);
    };
    EXPECT_FALSE(Call(object, u"Edit").ToBoolean());
    EXPECT_TRUE(is_shown);
  }

  excel::Names Names() { return excel::Workbook(workbook).Names(); }
  /// All names of the workbook with what they refer to.
  std::vector<std::u16string> NameList() {
    std::vector<std::u16string> list;
    for (std::int32_t i = 1; i <= Names().Count(); ++i) {
      list.push_back(Names().Item(i).Name() + Names().Item(i).RefersTo());
    }
    return list;
  }
  excel::Range Cell(std::u16string_view address) { return sheet.Range(address); }
  Value At(std::u16string_view address) { return Cell(address).Value(); }
  void Set(std::u16string_view address, Value value) { Cell(address).SetValue(std::move(value)); }

  /// The 16 names on A1:A16, with the values of a report of 2024; the budget table begins at A17.
  void NameCells() {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      Names().Add(kNames[i], u"=Sheet1!$A$" + NumberText(static_cast<long long>(i) + 1));
    }
    Set(u"AccPlan", u"F1");
    Set(u"RepYear", 2024);
    Set(u"RepQuarter", 2);
    Set(u"RepMon", 5);
    Set(u"RepType", 3);
    Init();
  }
  void SetRow(std::int32_t row, const std::vector<Value>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      Cell(u"BookCode").Offset(row, static_cast<std::int32_t>(i)).SetValue(values[i]);
    }
  }
  std::vector<Value> RowOf(std::int32_t row) {
    std::vector<Value> values;
    for (std::int32_t i = 0; i < 7; ++i) values.push_back(Cell(u"BookCode").Offset(row, i).Value());
    return values;
  }
  /// What the named cells hold, in their order.
  std::vector<Value> Cells() {
    std::vector<Value> values;
    for (const std::u16string& name : kNames) values.push_back(At(name));
    return values;
  }
  /// What the dialog is given, shown to a user who cancels.
  std::string ShownPeriods() {
    std::string shown;
    EditAndLeave([&](MemoryForm& form) {
      const auto day = [&](std::u16string_view name) {
        return ToUtf8(FormatByWindowsPattern(ui::Get<ui::DatePicker>(form, name).Value(), u"yyyy-MM-dd"));
      };
      shown = day(u"edPrevBegDate") + ".." + day(u"edPrevEndDate") + " " + day(u"edCurrBegDate") + ".." +
              day(u"edCurrEndDate");
    });
    return shown;
  }
  /// The rows that the dialog shows.
  std::vector<std::vector<std::u16string>> ShownRows() {
    std::vector<std::vector<std::u16string>> rows;
    EditAndLeave([&](MemoryForm& form) {
      for (std::size_t row = 0; row < form.RowCount(u"SpecGrid"); ++row) {
        rows.emplace_back();
        for (const ui::GridColumn& column : form.Columns(u"SpecGrid")) {
          rows.back().push_back(form.CellText(u"SpecGrid", row, column.name));
        }
      }
    });
    return rows;
  }

  ObjectPtr global;
  ObjectPtr workbook;
  excel::Worksheet sheet;
  ObjectPtr period;
};

}  // namespace qva
