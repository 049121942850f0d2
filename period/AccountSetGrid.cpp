#include "period/AccountSetGrid.h"

#include <algorithm>

#include "global/Progress.h"
#include "period/BudgetFields.h"
#include "platform/services.h"

namespace qva {
namespace {

// What the status bar says meanwhile, where it takes long.
constexpr std::u16string_view kShowingBudgets = u"Rodomi biudžetai";
constexpr std::u16string_view kTakingBudgets = u"Perimami biudžetai";

/// Whether a text has more characters than its field keeps: it could not be stored when all is confirmed.
bool IsTooLong(std::u16string_view field, std::u16string_view text) {
  const auto found = std::ranges::find(kBudgetFields, field, &BudgetField::name);
  return found != kBudgetFields.end() && found->type == ado::adVarChar &&
         text.size() > static_cast<std::size_t>(found->size);
}

// How the query for budget documents calls what it reads.
constexpr std::u16string_view kPostings = u"AccPost";
constexpr std::u16string_view kDocuments = u"Doc";

std::u16string FieldOf(std::u16string_view alias, std::u16string_view field) {
  return std::u16string(alias).append(1, u'.').append(field);
}

}  // namespace

void AccountSetGrid::Prepare(ui::Grid& grid, host::Book book, ado::Recordset budgets) {
  book_ = std::move(book);
  budgets_ = std::move(budgets);
  m_BaselList.on_add_fields = [this] { m_BaselList_OnAddFields(); };
  m_BaselList.on_add_column = [this](BaselList::Column& column) { m_BaselList_OnAddColumn(column); };
  m_BaselList.after_fill_list = [this] { m_BaselList_AfterFillList(); };
  m_BaselList.on_show_look_up = [this](std::u16string_view column, BaselList::Lookup& lookup) {
    m_BaselList_OnShowLookUp(column, lookup);
  };
  m_BaselList.after_change_col_value = [this](std::u16string_view column) {
    m_BaselList_AfterChangeColValue(column);
  };
  m_BaselList.button_click = [this](std::u16string_view column) { SpecGrid_ButtonClick(column); };
  m_BaselList.before_column_update = [this](std::u16string_view column, const Value& value, bool& cancel) {
    SpecGrid_BeforeColUpdate(column, value, cancel);
  };
  m_BaselList.Init(grid, book_.Table(host::kCarrierTable));
  m_BaselList.SetOptions({.edit = true, .add_rows = true, .delete_rows = true, .lookups = true});
  // The table lends its structure alone: all rows come from the budgets.
  m_BaselList.SetCondition(u"1=0");
  m_BaselList.Fill();
}

void AccountSetGrid::WriteBack(const ado::Recordset& budgets) {
  if (!has_budgets_) throw AutomationError(kObjectNotSet);
  Progress progress;
  const std::int32_t old_count = budgets.RecordCount();
  if (old_count > 0) budgets.MoveFirst();
  for (std::int32_t i = 0; i < old_count; ++i) {
    progress.Say(kTakingBudgets);
    budgets.Delete();
    budgets.MoveNext();
  }
  if (m_BaselList.RowCount() == 0) return;

  std::vector<std::u16string> shared;
  const ado::Fields fields = budgets.Fields();
  const std::int32_t count = fields.Count();
  for (std::int32_t i = 0; i < count; ++i) {
    std::u16string name = fields.Item(i).Name();
    if (m_BaselList.HasField(name)) shared.push_back(std::move(name));
  }
  const Value names = Array::Of({shared.begin(), shared.end()});
  for (std::size_t row = 0; row < m_BaselList.RowCount(); ++row) {
    progress.Say(kTakingBudgets);
    m_BaselList.MoveTo(row);
    std::vector<Value> values;
    values.reserve(shared.size());
    for (const std::u16string& name : shared) values.push_back(m_BaselList.Get(name));
    budgets.AddNew(names, Array::Of(std::move(values)));
  }
  budgets.MoveFirst();
}

void AccountSetGrid::m_BaselList_OnAddFields() {
  IgnoreErrors([&] {
    m_BaselList.AppendField(u"BookCode", u"");
    m_BaselList.AppendField(u"PlanCode", u"");
    m_BaselList.AppendField(u"PlanIsBudget", 0);
    m_BaselList.AppendField(u"BudgetCurrDocId", 0);
    m_BaselList.AppendField(u"BudgetCurrDocCode", u"");
    m_BaselList.AppendField(u"BudgetLastDocId", 0);
    m_BaselList.AppendField(u"BudgetLastDocCode", u"");
  });
}

void AccountSetGrid::m_BaselList_OnAddColumn(BaselList::Column& column) {
  if (column.name == u"BookCode") {
    column.lookup_table = host::kBookTable;
    column.cell_button = true;
  } else if (column.name == u"PlanCode") {
    column.lookup_table = host::kAccountSetTable;
    column.cell_button = true;
  } else if (column.name.find(u"DocCode") != column.name.npos) {
    column.cell_button = true;
  } else if (column.name == u"PlanIsBudget") {
    column.read_only = true;
  }
  if (column.caption.empty()) {
    column.read_only = true;
    column.hidden = true;
  }
}

void AccountSetGrid::m_BaselList_AfterFillList() {
  has_budgets_ = IgnoreErrors([&] {
    const ado::Recordset budgets = budgets_.Clone();
    if (budgets.RecordCount() == 0) return;
    budgets.MoveFirst();
    const ado::Fields fields = budgets.Fields();
    std::vector<std::pair<std::size_t, std::u16string>> shared;  // number in the records and name
    const std::int32_t count = fields.Count();
    for (std::int32_t i = 0; i < count; ++i) {
      std::u16string name = fields.Item(i).Name();
      if (m_BaselList.HasField(name)) shared.emplace_back(i, std::move(name));
    }
    const Value block = budgets.GetRows();
    const Array& records = block.ToArray();  // fields by records
    const auto record_count = static_cast<std::size_t>(records.dimensions.at(1).count);
    Progress progress;
    for (std::size_t record = 0; record < record_count; ++record) {
      progress.Say(kShowingBudgets, static_cast<std::int64_t>(record),
                   static_cast<std::int64_t>(record_count));
      m_BaselList.AddRow();
      for (const auto& [field, name] : shared) {
        m_BaselList.Set(name, records.elements.at(field * record_count + record));
      }
    }
    m_BaselList.MoveTo(0);
  });
}

void AccountSetGrid::m_BaselList_OnShowLookUp(std::u16string_view column, BaselList::Lookup& lookup) {
  IgnoreErrors([&] {
    if (column == u"BookCode") {
      lookup.Init(book_, host::kBookTable);
    } else if (column == u"PlanCode") {
      lookup.Init(books_.Get(Text(u"BookCode")), host::kAccountSetTable);  // none is read without a book
    }
    lookup.Reload();
  });
}

void AccountSetGrid::m_BaselList_AfterChangeColValue(std::u16string_view column) {
  IgnoreErrors([&] {
    if (column == u"BookCode") {
      m_BaselList.Clear(u"PlanCode");
      m_BaselList.Clear(u"PlanIsBudget");
    } else if (column == u"PlanCode") {
      const std::u16string book_code = Text(u"BookCode");
      if (book_code.empty()) return;
      m_BaselList.Clear(u"PlanIsBudget");
      const host::Table account_sets = books_.Get(book_code).Table(host::kAccountSetTable);
      if (account_sets.Seek(Text(u"PlanCode"))) {
        m_BaselList.Set(u"PlanIsBudget", account_sets.Field(host::kIsBudgetField));
      }
    } else {
      return;
    }
    // Documents belong to one account set.
    m_BaselList.Clear(u"BudgetCurrDocCode");
    m_BaselList.Clear(u"BudgetCurrDocId");
    m_BaselList.Clear(u"BudgetLastDocCode");
    m_BaselList.Clear(u"BudgetLastDocId");
  });
}

void AccountSetGrid::SpecGrid_ButtonClick(std::u16string_view column) {
  IgnoreErrors([&] {
    // At the end of the name, while a column's button is there for a name that has it anywhere: intended.
    if (!column.ends_with(u"DocCode")) return;
    const std::u16string book_code = Text(u"BookCode");
    const std::u16string account_set = Text(u"PlanCode");
    if (book_code.empty() || account_set.empty()) return;
    const bool is_current = column == u"BudgetCurrDocCode";
    const auto document = SelectBudgetDocument(books_.Get(book_code), account_set, dates_(is_current));
    if (!document || IsTooLong(column, document->code)) return;
    m_BaselList.Set(is_current ? u"BudgetCurrDocId" : u"BudgetLastDocId", document->id);
    m_BaselList.Set(is_current ? u"BudgetCurrDocCode" : u"BudgetLastDocCode", document->code);
  });
}

void AccountSetGrid::SpecGrid_BeforeColUpdate(std::u16string_view column, const Value& value, bool& cancel) {
  const bool went_through = IgnoreErrors([&] {
    const std::u16string text = value.ToText();
    if (IsTooLong(column, text)) {
      cancel = true;
    } else if (column == u"BookCode") {
      cancel = !books_.Get(text);
    } else if (column == u"PlanCode") {
      const host::Book book = books_.Get(Text(u"BookCode"));
      cancel = !book || !book.Table(host::kAccountSetTable).Seek(text);
    }
  });
  if (!went_through) cancel = true;  // the host has no such book, or cannot tell
}

void AccountSetGrid::btSpecDelete_Click() {
  IgnoreErrors([&] { m_BaselList.DeleteCurrentRow(); });  // without a row nothing happens
}

std::optional<AccountSetGrid::SelectedDocument> AccountSetGrid::SelectBudgetDocument(
    const host::Book& book, std::u16string_view account_set, const DateRange& dates) const {
  ObjectFactory& factory = *GetServices().object_factory;
  const auto selection = host::DocumentSelection::Create(factory);
  selection.Init(book);
  const std::u16string condition = host::ConditionBuilder::Create(factory).In(
      host::kDocumentIdField, BudgetDocumentSubQuery(book, account_set));
  const Value id = selection.Open(host::kBudgetDocument, dates.from, dates.to, condition);
  if (id.ToDouble() <= 0) return {};
  return SelectedDocument{id, selection.Field(host::kCodeField).ToText()};
}

std::u16string BudgetDocumentSubQuery(const host::Book& book, std::u16string_view account_set) {
  ObjectFactory& factory = *GetServices().object_factory;
  const auto conditions = host::ConditionBuilder::Create(factory);
  const auto query = host::Query::Create(factory);
  query.Init(book);
  query.From(host::kPostingView, kPostings);
  query.SetCondition(
      conditions.And(conditions.Equal(FieldOf(kPostings, host::kPostedAccountSetField), account_set),
                     conditions.Equal(FieldOf(kDocuments, host::kDocumentTypeField), host::kBudgetDocument)));
  query.SetDistinct(true);
  const std::u16string posted_document = FieldOf(kPostings, host::kPostedDocumentField);
  query.Select(posted_document);
  query.Join(host::kDocumentTable, kDocuments,
             posted_document + u" = " + FieldOf(kDocuments, host::kDocumentIdField));
  return u"(" + query.Sql() + u")";
}

}  // namespace qva
