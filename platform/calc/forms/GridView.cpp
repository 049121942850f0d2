#include "platform/calc/forms/GridView.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>

#include <algorithm>

#include "platform/calc/forms/FormWindow.h"

namespace qva::calc {

using css::awt::Rectangle;
using css::awt::XScrollBar;

namespace {

constexpr int kBarWidth = 17;  // at 100 %
constexpr char16_t kDelete = 127;

}  // namespace

GridView::Bar::Bar(GridView& grid)
    : window("scrollbar", grid.window().peer(), css::awt::VclWindowPeerAttribute::VSCROLL, *this),
      grid_(grid) {
  window.As<XScrollBar>()->setOrientation(css::awt::ScrollBarOrientation::VERTICAL);
  window.SetProperty("Tabstop", css::uno::Any(false));
}

void GridView::Bar::OnScrolled() {
  grid_.EndEdit(true, false);
  grid_.places_.SetFirst(static_cast<std::size_t>(std::max(0, int{window.As<XScrollBar>()->getValue()})));
  grid_.Redraw();
}

GridView::GridView(FormWindow& form, const ui::ControlDescription& description)
    : Canvas(form, description), editor_(*this), bar_(*this) {
  editor_.on_left = [this] { EndEdit(true, false); };
}

// --- What the program does ---------------------------------------------------------------------------------

void GridView::SetColumns(std::vector<ui::GridColumn> columns) {
  columns_ = std::move(columns);
  editable_ = std::ranges::any_of(columns_, [](const ui::GridColumn& column) { return !column.read_only; });
  places_.SetColumns(columns_);
  current_.column = 0;
  while (current_.column + 1 < columns_.size() && places_.IsHidden(current_.column)) ++current_.column;
  Refresh();
}

void GridView::SetModel(ui::GridModel* model) {
  model_ = model;
  current_.row = 0;
  known_rows_ = 0;
  Refresh();
}

void GridView::Refresh() {
  const std::size_t rows = RowCount();
  const bool was_new_line = known_rows_ > 0 && current_.row == known_rows_ && HasNewLine();
  if (was_new_line) {
    current_.row = rows;
  } else if (current_.row >= rows) {
    current_.row = rows == 0 ? 0 : rows - 1;
  }
  known_rows_ = rows;
  places_.SetLines(rows + (HasNewLine() ? 1 : 0));
  UpdateBar();
  Redraw();
}

std::optional<std::size_t> GridView::CurrentRow() const {
  return current_.row < RowCount() ? std::optional(current_.row) : std::nullopt;
}

void GridView::SetCurrentRow(std::size_t row) {
  if (row >= RowCount()) return;
  current_.row = row;
  places_.Show(row);
  UpdateBar();
  Redraw();
}

void GridView::Move(int lines) {
  if (places_.lines() == 0) return;
  const auto last = static_cast<std::ptrdiff_t>(places_.lines()) - 1;
  const auto row = std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(current_.row) + lines, 0, last);
  MoveTo({static_cast<std::size_t>(row), current_.column});
}

void GridView::Place(const Rectangle& pixels) {
  EndEdit(true, false);
  Canvas::Place(pixels);
  places_.SetArea(pixels.Width, pixels.Height, form().theme().scale, Scaled(kBarWidth));
  places_.Show(current_.row);
  UpdateBar();
}

void GridView::UpdateBar() {
  bar_.window.window()->setVisible(places_.scrolls());
  if (!places_.scrolls()) return;
  bar_.window.Place(places_.BarPlace());
  const auto bar = bar_.window.As<XScrollBar>();
  const auto visible = static_cast<sal_Int32>(places_.visible_lines());
  bar->setValues(static_cast<sal_Int32>(places_.first()), visible, static_cast<sal_Int32>(places_.lines()));
  bar->setLineIncrement(1);
  bar->setBlockIncrement(visible);
}

// --- Moving ------------------------------------------------------------------------------------------------

const ui::GridColumn* GridView::CurrentColumn() const {
  const bool is_there = model_ && current_.column < columns_.size() && current_.row < places_.lines();
  return is_there ? &columns_[current_.column] : nullptr;
}

void GridView::MoveTo(Cell cell) {
  current_ = cell;
  places_.Show(current_.row);
  UpdateBar();
  Redraw();
}

void GridView::MoveColumn(int direction) {
  for (auto column = static_cast<std::ptrdiff_t>(current_.column) + direction;
       column >= 0 && column < static_cast<std::ptrdiff_t>(columns_.size()); column += direction) {
    if (places_.IsHidden(static_cast<std::size_t>(column))) continue;
    MoveTo({current_.row, static_cast<std::size_t>(column)});
    return;
  }
}

bool GridView::MoveToNextCell(bool forward) {
  const Cell old = current_;
  MoveColumn(forward ? 1 : -1);
  if (current_ != old) return true;
  // The empty last line is not gone through: behind its first cell comes the next control.
  if (forward ? current_.row + 1 >= places_.lines() : current_.row == 0) return false;
  MoveTo({forward ? current_.row + 1 : current_.row - 1, current_.column});
  MoveToEdge(!forward);
  return true;
}

void GridView::MoveToEdge(bool last) {
  if (columns_.empty()) return;
  MoveTo({current_.row, last ? columns_.size() - 1 : 0});
  if (places_.IsHidden(current_.column)) MoveColumn(last ? -1 : 1);
}

bool GridView::HasFocus() const {
  return Canvas::HasFocus() || editor_.HasFocus();
}

bool GridView::OnKey(const css::awt::KeyEvent& event) {
  return editor_.is_open() ? OnEditorKey(event) : OnCellKey(event);
}

bool GridView::OnEditorKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  const bool alt = event.Modifiers & css::awt::KeyModifier::MOD2;
  switch (event.KeyCode) {
    case key::ESCAPE:
      EndEdit(false);
      return true;
    case key::RETURN:
      EndEdit(true);
      return true;
    case key::F4:
      EndEdit(true);
      PressButton();
      return true;
    case key::DOWN:
      if (!alt) break;
      EndEdit(true);
      PressButton();
      return true;
    case key::UP:
    case key::PAGEUP:
    case key::PAGEDOWN:
    case key::TAB:
      break;
    default:
      return false;
  }
  // A refused text goes, but the user stays where it was typed.
  return EndEdit(true) ? OnCellKey(event) : true;
}

bool GridView::OnCellKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  const bool alt = event.Modifiers & css::awt::KeyModifier::MOD2;
  const bool control = event.Modifiers & css::awt::KeyModifier::MOD1;
  const int page = static_cast<int>(places_.visible_lines());
  switch (event.KeyCode) {
    case key::UP:
      Move(-1);
      return true;
    case key::DOWN:
      if (alt) {
        PressButton();
      } else {
        Move(1);
      }
      return true;
    case key::PAGEUP:
      Move(-page);
      return true;
    case key::PAGEDOWN:
      Move(page);
      return true;
    case key::LEFT:
      MoveColumn(-1);
      return true;
    case key::RIGHT:
      MoveColumn(1);
      return true;
    case key::HOME:
    case key::END: {
      const bool to_end = event.KeyCode == key::END;
      const int lines = static_cast<int>(places_.lines());
      if (editable_) MoveToEdge(to_end);
      if (control || !editable_) Move(to_end ? lines : -lines);
      return true;
    }
    case key::TAB: {
      const bool forward = !(event.Modifiers & css::awt::KeyModifier::SHIFT);
      if (!editable_ || !MoveToNextCell(forward)) form().FocusNext(*this, forward);
      return true;
    }
    case key::F2:
      if (CurrentColumn() && current_.row < RowCount()) {
        BeginEdit(model_->CellText(current_.row, current_.column), true, false);
      } else {
        BeginEdit(u"", false, false);
      }
      return true;
    case key::F4:
      PressButton();
      return true;
    case key::DELETE:
      if (editable_ && CurrentRow()) model_->DeleteRow(current_.row);
      return true;
    case key::RETURN:
    case key::ESCAPE:
      return false;
  }
  const char16_t character = static_cast<char16_t>(event.KeyChar);
  if (control || alt || character < u' ' || character == kDelete) return false;
  if (const ui::GridColumn* column = CurrentColumn(); column && column->check_box) {
    if (character == u' ') TurnMark();
  } else {
    BeginEdit(std::u16string(1, character), false, true);
  }
  return true;
}

void GridView::Pressed(const MousePress& press) {
  EndEdit(true);
  const auto cell = places_.CellAt(press.x, press.y);
  if (!cell) return;
  const bool was_current = *cell == current_;
  MoveTo(*cell);
  const ui::GridColumn* column = CurrentColumn();
  if (!column) return;
  if (!editable_) {
    if (press.clicks == 2 && on_pick) on_pick();
  } else if (column->cell_button && Contains(places_.ButtonPlace(*cell), press.x, press.y)) {
    // The first click shows the button; a double-click must not press it twice.
    if (was_current && press.clicks == 1) PressButton();
  } else if (column->check_box) {
    TurnMark();
  } else if (was_current) {
    BeginEdit(current_.row < RowCount() ? model_->CellText(current_.row, current_.column) : u"", true, false);
  }
}

// --- Editing -----------------------------------------------------------------------------------------------

void GridView::BeginRow() {
  fresh_row_ = current_.row == RowCount();
  if (!fresh_row_) return;
  model_->AppendRow();
  if (current_.row >= RowCount()) fresh_row_ = false;  // the model takes no rows
}

void GridView::EndRow(bool keep) {
  if (!std::exchange(fresh_row_, false) || keep || current_.row >= RowCount()) return;
  model_->DeleteRow(current_.row);
  // Back on the empty last line, where the user began.
  current_.row = RowCount();
  Refresh();
}

void GridView::BeginEdit(std::u16string_view text, bool marked, bool changed) {
  const ui::GridColumn* column = CurrentColumn();
  if (!column || column->read_only || column->check_box) return;
  BeginRow();
  if (!CurrentRow()) return;
  places_.Show(current_.row);
  typed_ = changed;
  Rectangle place = places_.CellPlace(current_);
  if (column->cell_button) place.Width -= places_.ButtonPlace(current_).Width;
  place.X += 1;
  place.Y += 1;
  place.Width -= 3;
  place.Height -= 3;
  editor_.Open(place, text, marked);
  Redraw();
}

bool GridView::EndEdit(bool store, bool keep_focus) {
  if (!editor_.is_open()) return true;
  const std::u16string text = editor_.Text();
  const bool changed = store && (typed_ || editor_.changed());
  typed_ = false;
  // It must not take the move of the focus for the user's.
  editor_.Close();
  if (keep_focus) TakeFocus();
  const bool kept = changed && CurrentRow() && model_->SetCellText(current_.row, current_.column, text);
  EndRow(kept);
  Redraw();
  return kept || !changed;
}

void GridView::TurnMark() {
  const ui::GridColumn* column = CurrentColumn();
  if (!column || column->read_only) return;
  BeginRow();
  if (!CurrentRow()) return;
  const std::u16string text = model_->CellText(current_.row, current_.column);
  EndRow(model_->SetCellText(current_.row, current_.column, IsTrue(text) ? u"False" : u"True"));
  Redraw();
}

void GridView::PressButton() {
  const ui::GridColumn* column = CurrentColumn();
  if (!column || !column->cell_button) return;
  // It may show another window, which must wait for the end of what happens now.
  form().Later([this] {
    if (!CurrentColumn() || !CurrentColumn()->cell_button) return;
    BeginRow();
    if (!CurrentRow()) return;
    const Cell cell = current_;
    model_->PressCellButton(cell.row, cell.column);
    EndRow(cell.row < RowCount() && !model_->CellText(cell.row, cell.column).empty());
    Redraw();
  });
}

// --- Drawing -----------------------------------------------------------------------------------------------

bool GridView::IsTrue(std::u16string_view text) {
  return !text.empty() && text != u"0" && text != u"False";
}

void GridView::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  painter.Fill(area, theme.field);
  const int padding = Scaled(4);
  painter.Fill({1, 1, area.Width - 2, places_.header_height()}, theme.dialog);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    if (places_.IsHidden(column)) continue;
    Rectangle place = places_.HeaderPlace(column);
    const int right = place.X + place.Width - 1;
    painter.Line(right, place.Y, right, place.Y + place.Height - 1, theme.shadow);
    place.X += padding;
    place.Width -= 2 * padding;
    painter.Caption(place, columns_[column].caption, theme.dialog_text);
  }
  painter.Line(1, places_.header_height(), area.Width - 2, places_.header_height(), theme.shadow);

  const std::size_t last = std::min(places_.lines(), places_.first() + places_.visible_lines());
  for (std::size_t row = places_.first(); row < last; ++row) {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      if (!places_.IsHidden(column)) DrawCell(painter, {row, column}, row >= RowCount());
    }
  }
  painter.Frame(area, focused() ? theme.highlight : theme.shadow);
}

void GridView::DrawCell(Painter& painter, const Cell& cell, bool is_new) {
  const Theme& theme = painter.theme();
  const ui::GridColumn& column = columns_[cell.column];
  const Rectangle place = places_.CellPlace(cell);
  const int right = place.X + place.Width - 1;
  const int bottom = place.Y + place.Height - 1;
  const bool is_current = cell == current_;
  const bool marked = editable_ ? is_current && focused() : cell.row == current_.row;
  if (marked) painter.Fill({place.X, place.Y, place.Width - 1, place.Height - 1}, theme.highlight);
  painter.Line(right, place.Y, right, bottom, theme.dialog);
  painter.Line(place.X, bottom, right, bottom, theme.dialog);

  const sal_Int32 color = marked ? theme.highlight_text : theme.field_text;
  const int padding = Scaled(4);
  Rectangle inner(place.X + padding, place.Y, place.Width - 2 * padding, place.Height - 1);
  if (column.check_box) {
    if (is_new) return;
    const int size = Scaled(12);
    const Rectangle box(place.X + (place.Width - size) / 2, place.Y + (place.Height - size) / 2, size, size);
    painter.Fill(box, theme.field);
    painter.Frame(box, column.read_only ? theme.disabled_text : theme.field_text);
    if (IsTrue(model_->CellText(cell.row, cell.column))) {
      const int x = box.X;
      const int y = box.Y;
      for (const int thick : {0, 1}) {
        painter.Line(x + size / 5, y + size / 2 + thick, x + size * 2 / 5, y + size * 3 / 4 + thick,
                     theme.field_text);
        painter.Line(x + size * 2 / 5, y + size * 3 / 4 + thick, x + size * 4 / 5, y + size / 4 + thick,
                     theme.field_text);
      }
    }
    return;
  }
  if (is_current && column.cell_button) {
    const Rectangle button = places_.ButtonPlace(cell);
    painter.Fill(button, theme.dialog);
    painter.Frame(button, theme.shadow);
    painter.Text(button, u"…", theme.dialog_text, Align::Center);
    inner.Width -= button.Width;
  }
  if (!is_new) painter.Text(inner, model_->CellText(cell.row, cell.column), color);
}

}  // namespace qva::calc
