#include "platform/forms/grid_state.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace qva {

bool IsMarked(std::u16string_view text) {
  try {
    return !text.empty() && Value(text).ToBoolean();
  } catch (const AutomationError&) {
    return false;
  }
}

void GridState::SetColumns(std::vector<ui::GridColumn> columns) {
  columns_.clear();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].width > 0) columns_.push_back({std::move(columns[i]), i});
  }
  can_edit_ =
      std::ranges::any_of(columns_, [](const ShownColumn& column) { return !column.description.read_only; });
  current_.column = 0;
  Refresh();
}

void GridState::SetModel(ui::GridModel* model) {
  model_ = model;
  current_.line = 0;
  shown_rows_ = 0;
  Refresh();
}

void GridState::Refresh() {
  // The row behind it may be another one by now.
  new_row_.reset();
  const std::size_t rows = RowCount();
  const bool stays_on_empty_line = can_edit_ && current_.line == shown_rows_ && rows == shown_rows_;
  if (!stays_on_empty_line) current_.line = std::min(current_.line, rows > 0 ? rows - 1 : 0);
  shown_rows_ = rows;
}

std::optional<std::size_t> GridState::CurrentRow() const {
  if (current_.line >= RowCount()) return std::nullopt;
  return current_.line;
}

std::size_t GridState::lines() const {
  return shown_rows_ + (model_ && can_edit_ ? 1 : 0);
}

const ShownColumn* GridState::CurrentColumn() const {
  const bool is_there = model_ && current_.column < columns_.size() && current_.line < lines();
  return is_there ? &columns_[current_.column] : nullptr;
}

std::u16string GridState::PlaceOf(std::size_t line) const {
  return NumberText(static_cast<long long>(line) + 1) + u" / " + NumberText(static_cast<long long>(lines()));
}

std::u16string GridState::TextOf(GridCell cell) const {
  return cell.line < RowCount() ? model_->CellText(cell.line, columns_[cell.column].model_column)
                                : std::u16string();
}

bool GridState::TakesText() const {
  const ShownColumn* column = CurrentColumn();
  return column && !column->description.read_only && !column->description.check_box;
}

bool GridState::HasButton() const {
  const ShownColumn* column = CurrentColumn();
  return column && column->description.cell_button;
}

bool GridState::BeginRow() {
  if (!model_) return false;
  const GridCell cell = current_;
  if (cell.line < RowCount()) return true;
  model_->AppendRow();
  Refresh();
  if (cell.line >= RowCount()) return false;
  new_row_ = cell.line;
  current_ = cell;
  return true;
}

bool GridState::Store(std::u16string_view text) {
  const ShownColumn* column = CurrentColumn();
  const auto new_row = std::exchange(new_row_, std::nullopt);
  const bool is_stored =
      column && CurrentRow() && model_->SetCellText(current_.line, column->model_column, text);
  if (new_row && !is_stored) DropRow(*new_row);
  return is_stored;
}

void GridState::GiveUp() {
  if (const auto new_row = std::exchange(new_row_, std::nullopt)) DropRow(*new_row);
}

void GridState::TurnMark() {
  const ShownColumn* column = CurrentColumn();
  if (!column || !column->description.check_box || column->description.read_only || !BeginRow()) return;
  Store(IsMarked(CurrentText()) ? u"False" : u"True");
}

void GridState::PressButton() {
  if (!HasButton() || !BeginRow()) return;
  const std::size_t row = current_.line;
  const auto new_row = std::exchange(new_row_, std::nullopt);
  const auto texts = [&] {
    std::vector<std::u16string> result;
    for (const ShownColumn& column : columns_) result.push_back(model_->CellText(row, column.model_column));
    return result;
  };
  const std::vector<std::u16string> before = texts();
  model_->PressCellButton(row, columns_[current_.column].model_column);
  if (new_row && model_ && row < RowCount() && texts() == before) DropRow(row);
}

void GridState::DeleteCurrentRow() {
  const auto row = CurrentRow();
  if (!row || !can_edit_) return;
  model_->DeleteRow(*row);
  Refresh();
}

void GridState::DropRow(std::size_t row) {
  if (row + 1 != RowCount()) return;  // the model has changed it already
  model_->DeleteRow(row);
  Refresh();
  current_.line = RowCount();
}

}  // namespace qva
