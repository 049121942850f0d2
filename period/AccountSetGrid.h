// The second tab of the period dialog: books, account sets and budget documents, row by row.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "period/BaselList.h"
#include "period/BookCache.h"
#include "platform/ado.h"

namespace qva {

/// A range of days, both included.
struct DateRange {
  Date from;
  Date to;
};

/// Handles the list's events. Each handler ends without further changes when something fails in it; none
/// raises.
class AccountSetGrid {
 public:
  /// `books` is borrowed. `dates` gives the dialog's current (true) or previous period.
  AccountSetGrid(BookCache& books, std::function<DateRange(bool current)> dates)
      : books_(books), dates_(std::move(dates)) {}

  /// Sets the list up on the grid and fills it with the rows of `budgets`. `book` is the dialog's current
  /// book. Raises what the host raises.
  void Prepare(ui::Grid& grid, host::Book book, ado::Recordset budgets);

  BaselList& list() { return m_BaselList; }

  /// Puts the list's rows in the place of the records: every field that the list also has takes the list's
  /// value. Raises 91, with all records in place, when the list never got them all: a failure that the user
  /// did not see must not empty the workbook's table. Raises what the recordset raises.
  void WriteBack(const ado::Recordset& budgets);

  // The events.
  void m_BaselList_OnAddFields();
  void m_BaselList_OnAddColumn(BaselList::Column& column);
  void m_BaselList_AfterFillList();
  void m_BaselList_OnShowLookUp(std::u16string_view column, BaselList::Lookup& lookup);
  void m_BaselList_AfterChangeColValue(std::u16string_view column);
  void SpecGrid_ButtonClick(std::u16string_view column);
  void SpecGrid_BeforeColUpdate(std::u16string_view column, const Value& value, bool& cancel);
  void btSpecDelete_Click();

 private:
  struct SelectedDocument {
    Value id;
    std::u16string code;
  };

  /// Nothing when the user chooses none.
  std::optional<SelectedDocument> SelectBudgetDocument(const host::Book& book,
                                                       std::u16string_view account_set,
                                                       const DateRange& dates) const;
  std::u16string Text(std::u16string_view field) const { return m_BaselList.Get(field).ToText(); }

  BookCache& books_;
  std::function<DateRange(bool current)> dates_;
  host::Book book_;
  ado::Recordset budgets_;
  bool has_budgets_ = false;  ///< the list was filled with all of them
  BaselList m_BaselList;
};

/// The text, in parentheses, of the query for the budget documents that have postings on an account set of
/// the book. Raises what the host raises.
std::u16string BudgetDocumentSubQuery(const host::Book& book, std::u16string_view account_set);

}  // namespace qva
