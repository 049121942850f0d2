#include "period/BaselList.h"

#include <algorithm>
#include <array>

#include "period/CodesAndNames.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kNoRows = u"1=0";

struct Caption {
  std::u16string_view field;
  std::u16string_view text;
  int width;  ///< in pixels at 100 % scale
};

// Fields that are not here have no caption: users do not know them.
constexpr auto kCaptions =
    std::to_array<Caption>({{u"BookCode", u"Knyga", 74},
                            {u"PlanCode", u"Sąskaitų planas", 100},
                            {u"PlanIsBudget", u"Biudžeto", 60},
                            {u"BudgetCurrDocCode", u"Einamojo laikotarpio biudžetas", 156},
                            {u"BudgetLastDocCode", u"Praeito laikotarpio biudžetas", 156}});

const Caption* FindCaption(std::u16string_view field) {
  const auto found = std::ranges::find(kCaptions, field, &Caption::field);
  return found == kCaptions.end() ? nullptr : &*found;
}

}  // namespace

void BaselList::Lookup::Init(host::Book book, std::u16string_view table) {
  book_ = std::move(book);
  table_ = table;
}

void BaselList::Lookup::Reload() {
  std::vector<std::vector<std::u16string>> rows;
  for (auto& [code, name] : CodesAndNames(book_.Table(table_))) {
    rows.push_back({std::move(code), std::move(name)});
  }
  rows_ = std::move(rows);
}

void BaselList::Init(ui::Grid& grid, const host::Table& carrier) {
  if (!carrier) throw AutomationError(kObjectNotSet);
  grid_ = &grid;
  if (on_add_fields) on_add_fields();
  std::vector<ui::GridColumn> shown;
  for (const Field& field : fields_) {
    const Caption* caption = FindCaption(field.name);
    Column column;
    column.name = field.name;
    if (caption) column.caption = caption->text;
    if (on_add_column) on_add_column(column);
    if (column.hidden) continue;
    shown.push_back({.name = column.name,
                     .caption = column.caption,
                     .width = caption ? caption->width : 100,
                     .read_only = column.read_only,
                     .cell_button = column.cell_button,
                     .check_box = column.name == u"PlanIsBudget"});
    columns_.push_back({std::move(column), {}});
  }
  grid.SetColumns(std::move(shown));
  grid.SetModel(this);
}

void BaselList::Fill() {
  if (condition_ != kNoRows) throw AutomationError(kUnsupportedAction);
  if (after_fill_list) after_fill_list();
  ShowRows();
}

void BaselList::AppendField(std::u16string_view name, Value starting_value) {
  fields_.push_back({std::u16string(name), std::move(starting_value)});
}

bool BaselList::HasField(std::u16string_view name) const {
  return FindField(name) != fields_.end();
}

void BaselList::MoveTo(std::size_t row) {
  if (row >= rows_.size()) throw AutomationError(kSubscriptOutOfRange);
  current_ = row;
}

void BaselList::AddRow() {
  std::vector<Value> row;
  for (const Field& field : fields_) row.push_back(field.starting_value);
  rows_.push_back(std::move(row));
  current_ = rows_.size() - 1;
}

void BaselList::DeleteCurrentRow() {
  // The user moves in the grid without telling the list.
  if (grid_) current_ = grid_->CurrentRow();
  RemoveRow(Row());
}

void BaselList::RemoveRow(std::size_t row) {
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  current_.reset();
  if (!rows_.empty()) current_ = std::min(row, rows_.size() - 1);
  ShowRows();
}

void BaselList::Clear(std::u16string_view field) {
  Set(field, fields_[FieldNumber(field)].starting_value);
}

std::u16string BaselList::CellText(std::size_t row, std::size_t column) const {
  const Value& value = rows_.at(row)[FieldNumber(columns_.at(column).column.name)];
  return value.Is(Value::Type::Null) ? std::u16string() : value.ToText();
}

bool BaselList::SetCellText(std::size_t row, std::size_t column, std::u16string_view text) {
  const Column& target = columns_.at(column).column;
  if (!options_.edit || target.read_only) return false;
  MoveTo(row);
  const Value value = text;
  bool cancel = false;
  if (before_column_update) before_column_update(target.name, value, cancel);
  if (cancel) return false;
  Set(target.name, value);
  if (after_change_col_value) after_change_col_value(target.name);
  ShowRows();
  return true;
}

void BaselList::AppendRow() {
  if (!options_.add_rows) return;
  AddRow();
  ShowRows();
}

void BaselList::DeleteRow(std::size_t row) {
  if (options_.delete_rows) RemoveRow(row);
}

void BaselList::PressCellButton(std::size_t row, std::size_t column) {
  current_ = row;
  if (!columns_.at(column).column.lookup_table.empty()) {
    OpenLookup(row, column);
  } else if (button_click) {
    button_click(columns_[column].column.name);
    ShowRows();
  }
}

void BaselList::OpenLookup(std::size_t row, std::size_t column) {
  if (!options_.lookups) return;
  ShownColumn& shown = columns_[column];
  shown.lookup.rows_.reset();
  if (on_show_look_up) on_show_look_up(shown.column.name, shown.lookup);
  if (!shown.lookup.rows_) return;
  const ChoiceList list{shown.column.caption, {kCodeCaption, kNameCaption}, *shown.lookup.rows_};
  const auto chosen = GetServices().list_chooser->Choose(list, CellText(row, column));
  if (!chosen) return;
  const std::u16string& code = list.rows[*chosen].front();
  // Confirming what is there is no change; typing it again is one.
  if (code != CellText(row, column)) SetCellText(row, column, code);
}

void BaselList::ShowRows() {
  if (!grid_) return;
  grid_->Refresh();
  if (current_) grid_->SetCurrentRow(*current_);
}

std::size_t BaselList::FieldNumber(std::u16string_view name) const {
  const auto found = FindField(name);
  if (found == fields_.end()) throw AutomationError(kSubscriptOutOfRange);
  return static_cast<std::size_t>(found - fields_.begin());
}

std::vector<BaselList::Field>::const_iterator BaselList::FindField(std::u16string_view name) const {
  return std::ranges::find_if(fields_,
                              [&](const Field& field) { return EqualIgnoringCase(field.name, name); });
}

std::size_t BaselList::Row() const {
  if (!current_) throw AutomationError(kSubscriptOutOfRange);
  return *current_;
}

}  // namespace qva
