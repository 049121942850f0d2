#include "period/CRepPeriod.h"

#include <algorithm>
#include <string>
#include <vector>

#include "global/Globals.h"
#include "global/Progress.h"
#include "period/BudgetFields.h"
#include "platform/date.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::int32_t kBlue = 5;          ///< of Excel's palette
constexpr std::int32_t kTypeObject = 100;  ///< the settings collection's own code of an object

// What the status bar says meanwhile, where it takes long.
constexpr std::u16string_view kBinding = u"Ieškoma ataskaitos laikotarpio langelių";
constexpr std::u16string_view kReadingBudgets = u"Skaitomi biudžetai";
constexpr std::u16string_view kWriting = u"Įrašomas ataskaitos laikotarpis";

struct Setting {
  std::u16string_view name;
  std::int32_t type;  ///< the settings collection's own code
};
constexpr std::array<Setting, 15> kSettings = {{{u"Plan", 7},
                                                {u"Year", 3},
                                                {u"Quarter", 3},
                                                {u"Month", 3},
                                                {u"RepPeriodType", 3},
                                                {u"LastPerBeg", 9},
                                                {u"LastPerEnd", 9},
                                                {u"CurrPerBeg", 9},
                                                {u"CurrPerEnd", 9},
                                                {u"CurrBudgetDocId", 3},
                                                {u"CurrBudgetDocCode", 15},
                                                {u"LastBudgetDocId", 3},
                                                {u"LastBudgetDocCode", 15},
                                                {u"IsBudgetPlan", 14},
                                                {u"BudgetCount", 2}}};

constexpr auto kBudgetColumns = static_cast<std::int32_t>(kBudgetFields.size());

Value BudgetFieldNames() {
  std::vector<Value> names;
  names.reserve(kBudgetFields.size());
  for (const BudgetField& field : kBudgetFields) names.emplace_back(field.name);
  return Array::Of(std::move(names));
}

/// What a budget field takes for the value of a cell: an empty cell is no value, or the type's zero where the
/// field needs one.
Value BudgetValue(const BudgetField& field, const Value& cell) {
  if (!cell.Is(Value::Type::Empty)) return cell;
  if (field.attributes == ado::adFldIsNullable) return Null{};
  return field.type == ado::adVarChar ? Value(u"") : Value(std::int32_t{0});
}

bool IsNumber(const Value& value) {
  switch (value.type()) {
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
    case Value::Type::Double:
    case Value::Type::Currency:
      return true;
    default:
      return false;
  }
}

bool IsBlank(const Value& value) {
  return value.Is(Value::Type::Empty) || (value.Is(Value::Type::Text) && value.ToText().empty());
}

/// Puts a code into a cell. What reads like a number of at most 15 digits, the most that a cell keeps,
/// becomes one, as it always has. Any other code that the cell took for a number, a date or a formula is put
/// in again as a text, by an apostrophe that is no part of it; not at once, since cells of texts may keep the
/// apostrophe. What the cell refuses, as it does a wrong formula, is put in again, too. The format that the
/// cell got with a date goes again: it would make a date of the next code that is a number.
void PutCode(const excel::Range& cell, const Value& value) {
  if (!value.Is(Value::Type::Text)) return cell.SetValue(value);
  const std::u16string text = value.ToText();
  const bool is_number =
      text.size() <= 15 && std::ranges::all_of(text, IsDigit) && !(text.size() > 1 && text.front() == u'0');
  if (is_number) return cell.SetValue(value);
  const Value format = cell.NumberFormat();
  try {
    cell.SetValue(value);
  } catch (const AutomationError&) {
    if (std::u16string_view(u"=+-@").find(text.front()) == std::u16string_view::npos) throw;
  }
  if (cell.Value() == value) return;
  cell.SetValue(u"'" + text);
  // A protected sheet lets no format be changed.
  if (format.Is(Value::Type::Text)) IgnoreErrors([&] { cell.SetNumberFormat(format.ToText()); });
}

/// An identifier above zero; what is no number is no identifier.
bool IsIdentifier(const Value& value) {
  bool result = false;
  if (!IsBlank(value)) IgnoreErrors([&] { result = value.ToDouble() > 0; });
  return result;
}

}  // namespace

struct CRepPeriod::NamedCell {
  std::u16string_view name;
  std::u16string_view setting;  ///< the item that the cell exchanges with; empty for the table's head
};

const std::array<CRepPeriod::NamedCell, CRepPeriod::kCellCount> CRepPeriod::kNamedCells = {
    {{u"AccPlan", u"Plan"},
     {u"RepYear", u"Year"},
     {u"RepQuarter", u"Quarter"},
     {u"RepMon", u"Month"},
     {u"RepType", u"RepPeriodType"},
     {u"RepLastPerBeg", u"LastPerBeg"},
     {u"RepLastPerEnd", u"LastPerEnd"},
     {kFirstDayCell, u"CurrPerBeg"},
     {kLastDayCell, u"CurrPerEnd"},
     {u"CurrBudgetDocId", u"CurrBudgetDocId"},
     {u"CurrBudgetDocCode", u"CurrBudgetDocCode"},
     {u"LastBudgetDocId", u"LastBudgetDocId"},
     {u"LastBudgetDocCode", u"LastBudgetDocCode"},
     {u"IsBudgetPlan", u"IsBudgetPlan"},
     {u"BudgetCount", u"BudgetCount"},
     {u"BookCode", {}}}};

ClassBuilder CRepPeriod::Describe() {
  return ClassBuilder(u"CRepPeriod", "The report period that a workbook keeps in its named cells")
      .Method<&CRepPeriod::Init>(u"Init", {{u"pWorkSheet"}}, "Binds the named cells of the period")
      .Method<&CRepPeriod::Edit>(u"Edit", {}, "Lets the user choose the period; true when confirmed");
}

CRepPeriod::CRepPeriod() : oParams_(host::SettingsCollection::Create(*GetServices().object_factory)) {
  for (const Setting& setting : kSettings) oParams_.Add(setting.name, setting.type);
  BuildBudgets();
  oParams_.Add(u"BudgetRS", kTypeObject, budgets_.object());
}

// --- Binding -----------------------------------------------------------------------------------------------

void CRepPeriod::Init(excel::Worksheet pWorkSheet) {
  RefuseWhileEditing();
  if (!pWorkSheet) throw AutomationError(kObjectErrorBase + 1, u"Wrong parameter", u"");
  sheet_ = std::move(pWorkSheet);
  book_ = sheet_.Parent();

  // One walk serves all cells: a name that one of them creates is never what another one looks for.
  struct Found {
    std::u16string name;  // in lower case
    excel::DefinedName object;
  };
  std::vector<Found> found;
  Progress progress;
  const excel::Names names = book_.Names();
  const std::int32_t count = names.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    progress.Say(kBinding);
    excel::DefinedName name = names.Item(i);
    std::u16string lower_name = ToLower(name.Name());
    found.push_back({std::move(lower_name), std::move(name)});
  }

  for (std::size_t i = 0; i < kCellCount; ++i) {
    progress.Say(kBinding);
    cells_[i] = {};
    const std::u16string wanted = ToLower(kNamedCells[i].name);
    for (const Found& candidate : found) {
      if (candidate.name != wanted) continue;
      // A deleted cell leaves "#REF!". A sheet whose own name holds these letters loses its names here, too.
      if (candidate.object.RefersTo().find(u"REF") == std::u16string::npos) {
        cells_[i] = candidate.object.RefersToRange();
        break;
      }
      candidate.object.Delete();
    }
    if (!cells_[i]) cells_[i] = CreateName(kNamedCells[i].name);
  }
}

excel::Range CRepPeriod::CreateName(std::u16string_view name) const {
  const excel::Range used = sheet_.UsedRange();
  const excel::Range cell = used.Offset(0, used.Columns().Count()).Cells(1);
  // The sheet's name stands without quotation marks, so a sheet that needs them cannot be given names:
  // intended.
  const excel::DefinedName created = book_.Names().Add(name, u"=" + sheet_.Name() + u"!" + cell.Address());
  try {
    excel::Range range = created.RefersToRange();
    // The colour also makes the cell part of the used range, so that the next name gets a cell of its own.
    range.Font().SetColorIndex(kBlue);
    return range;
  } catch (...) {
    // Or another Init would find this name, and give the next one the same cell.
    IgnoreFailures([&] { created.Delete(); });
    throw;
  }
}

// --- Editing -----------------------------------------------------------------------------------------------

bool CRepPeriod::Edit() {
  RefuseWhileEditing();
  is_editing_ = true;
  struct EndEditing {
    bool& is_editing;
    ~EndEditing() { is_editing = false; }
  } const end{is_editing_};
  try {
    if (!dialog_) dialog_ = std::make_unique<frmReportPeriod>();
    Load();
    if (!dialog_->Run(oParams_, TheGlobals().oBook)) return false;
    Save();
    return true;
  } catch (...) {  // want of memory included: macros call this without an error handler
    return false;
  }
}

void CRepPeriod::RefuseWhileEditing() const {
  if (is_editing_) throw AutomationError(kFormAlreadyDisplayed);
}

void CRepPeriod::BuildBudgets() {
  budgets_ = ado::Recordset::Create(*GetServices().object_factory);
  const ado::Fields fields = budgets_.Fields();
  for (const BudgetField& field : kBudgetFields) {
    fields.Append(field.name, field.type, field.size, field.attributes);
  }
  budgets_.Open();
}

void CRepPeriod::Load() {
  for (const Cell cell : {kAccPlan, kRepYear, kRepQuarter, kRepMon, kCurrBudgetDocId, kCurrBudgetDocCode,
                          kLastBudgetDocId, kLastBudgetDocCode, kIsBudgetPlan}) {
    SetItem(kNamedCells[cell].setting, cells_[cell].Value());
  }

  const Value type = cells_[kRepType].Value();
  const bool is_kind = IsNumber(type) && type.ToDouble() >= 1 && type.ToDouble() <= 6;
  SetItem(u"RepPeriodType", is_kind ? type : Value(std::int32_t{1}));

  // The defaults are whole calendar years. Without a year it is this one, which stays unsaid in the item.
  const auto year = [this] {
    const Value item = Item(u"Year");
    return IsBlank(item) ? PartsOf(GetServices().clock->Now()).year : item.ToInt32();
  };
  const auto load_date = [&](Cell cell, int years, int day) {
    const Value value = cells_[cell].Value();
    SetItem(kNamedCells[cell].setting,
            value.Is(Value::Type::Empty) ? DateFromParts(year() + years, 1, day) : value.ToDate());
  };
  load_date(kRepLastPerBeg, -1, 1);
  load_date(kRepLastPerEnd, 0, 0);
  load_date(kRepCurrPerBeg, 0, 1);
  load_date(kRepCurrPerEnd, 1, 0);

  LoadBudgets();
  oParams_.Item(u"BudgetRS").SetObject(budgets_.object());
}

void CRepPeriod::LoadBudgets() {
  const std::int32_t count = cells_[kBudgetCount].Value().ToInt32();
  BuildBudgets();
  const Value names = BudgetFieldNames();
  if (count > 0) {
    const Value block = cells_[kBookCode].Offset(1, 0).Resize(count, kBudgetColumns).Value();
    const std::vector<Value>& table = block.ToArray().elements;
    // A foreign object in the place of a sheet may give a block of any size.
    if (table.size() != static_cast<std::size_t>(count) * kBudgetFields.size()) {
      throw AutomationError(kTypeMismatch);
    }
    Progress progress;
    for (std::size_t row = 0; row < table.size(); row += kBudgetFields.size()) {
      progress.Say(kReadingBudgets, static_cast<std::int64_t>(row / kBudgetFields.size()), count);
      std::vector<Value> values;
      for (std::size_t i = 0; i < kBudgetFields.size(); ++i) {
        values.push_back(BudgetValue(kBudgetFields[i], table[row + i]));
      }
      budgets_.AddNew(names, Array::Of(std::move(values)));
    }
  } else if (count == 0 &&
             (IsIdentifier(Item(u"CurrBudgetDocId")) || IsIdentifier(Item(u"LastBudgetDocId")))) {
    std::vector<Value> values = {TheGlobals().oBook.BookCode()};
    for (const std::u16string_view item : {u"Plan", u"IsBudgetPlan", u"CurrBudgetDocId", u"CurrBudgetDocCode",
                                           u"LastBudgetDocId", u"LastBudgetDocCode"}) {
      values.push_back(BudgetValue(kBudgetFields[values.size()], Item(item)));
    }
    budgets_.AddNew(names, Array::Of(std::move(values)));
  }
  if (budgets_.RecordCount() > 0) budgets_.MoveFirst();
}

void CRepPeriod::Save() const {
  Progress progress;
  PutCode(cells_[kAccPlan], Item(kNamedCells[kAccPlan].setting));
  for (const Cell cell : {kRepYear, kRepQuarter, kRepMon, kRepType, kRepLastPerBeg, kRepLastPerEnd,
                          kRepCurrPerBeg, kRepCurrPerEnd, kBudgetCount}) {
    progress.Say(kWriting);
    cells_[cell].SetValue(Item(kNamedCells[cell].setting));
  }

  // From the first save on, a workbook has its budgets in the table alone.
  cells_[kCurrBudgetDocId].SetValue(std::int32_t{0});
  cells_[kCurrBudgetDocCode].SetValue(u"");
  cells_[kLastBudgetDocId].SetValue(std::int32_t{0});
  cells_[kLastBudgetDocCode].SetValue(u"");
  cells_[kIsBudgetPlan].SetValue(std::int32_t{0});

  progress.Say(kWriting);
  const excel::Range first = cells_[kBookCode].Offset(1, 0);
  if (!IsBlank(first.Value())) {
    // A table of one row, with nothing below it, ends at the sheet's bottom: everything down there is
    // cleared. The sheet is the cells' own, which need not be the one that was given.
    first.Worksheet().Range(first, first.End(xlDown).Offset(0, kBudgetColumns - 1)).ClearContents();
  }
  // The dialog may have put another recordset in the place of the loaded one.
  const ado::Recordset budgets(Item(u"BudgetRS").ToObject());
  progress.Say(kWriting);
  first.CopyFromRecordset(budgets.Clone());
  cells_[kBudgetCount].SetValue(budgets.RecordCount());
}

}  // namespace qva
