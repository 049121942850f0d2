// What tests of the budgets' grid share.
#pragma once

#include "period/AccountSetGrid.h"
#include "tests/period/period_fixture.h"

namespace qva {

class AccountSets : public PeriodTest {
 protected:
  static constexpr std::u16string_view kGrid = u"SpecGrid";

  /// The cells of a row by their shown columns.
  static std::vector<std::u16string> Row(MemoryForm& form, std::size_t row) {
    std::vector<std::u16string> cells;
    for (const ui::GridColumn& column : form.Columns(kGrid))
      cells.push_back(form.CellText(kGrid, row, column.name));
    return cells;
  }
  /// A row of the book MEDVILNE and an account set.
  static void TypeRow(MemoryForm& form, std::size_t row, std::u16string_view account_set = u"B1") {
    EXPECT_TRUE(form.TypeCell(kGrid, row, u"BookCode", u"MEDVILNE"));
    EXPECT_TRUE(form.TypeCell(kGrid, row, u"PlanCode", account_set));
  }
  /// Gives a grid that was not shown a row with a flag and a document.
  static void AddRowOf(AccountSetGrid& grid, std::u16string_view book, std::u16string_view account_set) {
    grid.m_BaselList_OnAddFields();
    grid.list().AddRow();
    grid.list().Set(u"BookCode", book);
    grid.list().Set(u"PlanCode", account_set);
    grid.list().Set(u"PlanIsBudget", 1);
    grid.list().Set(u"BudgetCurrDocCode", u"BIU-2024");
  }
  /// Lets the user pick the code from the next list.
  void Pick(std::u16string code) {
    platform.list_chooser.user = [code](const ChoiceList& list,
                                        std::u16string_view) -> std::optional<std::size_t> {
      for (std::size_t i = 0; i < list.rows.size(); ++i) {
        if (list.rows[i][0] == code) return i;
      }
      return std::nullopt;
    };
  }
  std::vector<std::u16string> OfferedCodes() const {
    std::vector<std::u16string> codes;
    for (const auto& row : platform.list_chooser.shown.back().rows) codes.push_back(row[0]);
    return codes;
  }
  /// The fields of the budgets' records.
  std::vector<std::vector<Value>> Records() const {
    std::vector<std::vector<Value>> records;
    if (budgets.RecordCount() == 0) return records;
    budgets.MoveFirst();
    const Value rows = budgets.GetRows();
    const Array& block = rows.ToArray();
    const auto count = static_cast<std::size_t>(block.dimensions[1].count);
    for (std::size_t i = 0; i < count; ++i) {
      std::vector<Value>& record = records.emplace_back();
      for (std::size_t field = 0; field < 8; ++field) record.push_back(block.elements[field * count + i]);
    }
    return records;
  }
};

}  // namespace qva
