#include "platform/calc/forms/GridView.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>

#include <algorithm>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/GridKeys.h"

namespace qva::calc {

using css::awt::Rectangle;
using css::awt::XScrollBar;

namespace {

constexpr int kBarWidth = 17;  // at 100 %
constexpr char16_t kDelete = 127;

}  // namespace

GridView::GridView(FormWindow& form, const ui::ControlDescription& description)
    : Canvas(form, description),
      bar_(*this, window().peer(), "scrollbar", css::awt::VclWindowPeerAttribute::VSCROLL),
      button_(*this, window().peer(), "pushbutton") {
  bar_.window.As<XScrollBar>()->setOrientation(css::awt::ScrollBarOrientation::VERTICAL);
  bar_.window.SetProperty("Tabstop", Any(false));
  bar_.on_scrolled = [this] {
    EndEdit(true);
    places_.SetFirst(static_cast<std::size_t>(std::max(0, int{bar_.window.As<XScrollBar>()->getValue()})));
    ShowLines();
  };
  button_.window.SetCaption(u"…");
  const Any name(ToUno(u"Atverti sąrašą (F4)"));
  button_.window.SetProperty("AccessibleName", name);
  button_.window.SetProperty("HelpText", name);
  button_.window.SetProperty("Tabstop", Any(false));
  button_.window.SetProperty("FocusOnClick", Any(false));
  button_.on_action = [this] {
    EndEdit(true);
    PressButton();
  };
}

// --- What the program does ---------------------------------------------------------------------------------

void GridView::SetColumns(std::vector<ui::GridColumn> columns) {
  state_.SetColumns(std::move(columns));
  places_.SetColumns(state_.columns());
  MakeCells();
  Refresh();
}

void GridView::SetModel(ui::GridModel* model) {
  state_.SetModel(model);
  Refresh();
}

void GridView::Refresh() {
  is_editing_ = false;
  state_.Refresh();
  places_.SetLines(state_.lines());
  ShowLines();
}

void GridView::SetCurrentRow(std::size_t row) {
  if (row < state_.RowCount()) MoveTo({row, state_.current().column});
}

void GridView::Place(const Rectangle& pixels) {
  EndEdit(true);
  Canvas::Place(pixels);
  places_.SetArea(pixels.Width, pixels.Height, form().theme().scale, Scaled(kBarWidth));
  const bool had_focus = HasFocus();
  if (places_.visible_lines() > cell_lines_) MakeCells();
  Show();
  if (had_focus) TakeFocus();
}

void GridView::MakeCells() {
  ForgetCells();
  columns_.clear();
  cell_lines_ = places_.visible_lines();
  for (const ShownColumn& column : state_.columns()) {
    columns_.emplace_back(*this, window().peer(), column.description, cell_lines_);
  }
}

// --- What is shown -----------------------------------------------------------------------------------------

CellWindow* GridView::CurrentCell() {
  return state_.CurrentColumn() ? &columns_[state_.current().column].CellOf(state_.current().line) : nullptr;
}

void GridView::Show() {
  places_.SetLines(state_.lines());
  places_.Show(state_.current().line);
  ShowLines();
}

void GridView::ShowLines() {
  const int padding = Scaled(4);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    Rectangle caption = places_.HeaderPlace(column);
    caption.X += padding;
    caption.Width -= padding + 1;
    caption.Height -= 1;
    columns_[column].caption().Place(caption);
    for (std::size_t line = places_.first(); line < places_.first() + cell_lines_; ++line) {
      ShowCell({line, column}, columns_[column].CellOf(line));
    }
  }
  FollowCurrentCell();

  button_.window.window()->setVisible(state_.HasButton());
  if (state_.HasButton()) button_.window.Place(places_.ButtonPlace(state_.current()));
  bar_.window.window()->setVisible(places_.scrolls());
  if (places_.scrolls()) {
    bar_.window.Place(places_.BarPlace());
    const auto bar = bar_.window.As<XScrollBar>();
    const auto visible = static_cast<sal_Int32>(places_.visible_lines());
    bar->setValues(static_cast<sal_Int32>(places_.first()), visible, static_cast<sal_Int32>(places_.lines()));
    bar->setLineIncrement(1);
    bar->setBlockIncrement(visible);
  }
  Redraw();
}

bool GridView::IsMarkedOut(GridCell cell) const {
  if (!state_.can_edit()) return cell.line == state_.current().line;
  return cell == state_.current() && has_focused_cell() && !is_editing_;
}

void GridView::ShowCell(GridCell cell, CellWindow& window) {
  window.cell = cell;
  const bool is_current = cell == state_.current();
  const bool is_mark = state_.columns()[cell.column].description.check_box;
  // An empty line has no mark but one that can be set.
  const bool is_shown = cell.line < places_.first() + places_.visible_lines() &&
                        cell.line < places_.lines() &&
                        (!is_mark || is_current || cell.line < state_.RowCount());
  if (is_shown) {
    const Theme& theme = form().theme();
    Rectangle place = places_.CellPlace(cell);
    if (is_mark) {
      const int size = Scaled(16);
      place = {place.X + (place.Width - size) / 2, place.Y + (place.Height - size) / 2, size, size};
    } else {
      if (is_current && state_.HasButton()) place.Width -= places_.ButtonPlace(cell).Width;
      place.X += Scaled(3);
      place.Width -= Scaled(3) + 1;
      place.Height -= 1;
    }
    window.window().Place(place);
    window.SetName(state_.columns()[cell.column].description.caption + u", " + state_.PlaceOf(cell.line));
    if (!is_current || !is_editing_) window.SetText(state_.TextOf(cell));
    if (IsMarkedOut(cell)) {
      window.SetColors(theme.highlight, theme.highlight_text);
    } else {
      window.SetColors(theme.field, theme.field_text);
    }
  }
  window.window().window()->setVisible(is_shown);
}

// --- Moving ------------------------------------------------------------------------------------------------

void GridView::MoveTo(GridCell cell) {
  state_.MoveTo(cell);
  Show();
}

void GridView::FocusMoved(CellWindow* cell) {
  if (!cell) {
    EndEdit(true);
  } else if (cell->cell != state_.current()) {
    came_by_click_ = true;
    state_.MoveTo(cell->cell);
  }
  Show();
}

bool GridView::OnKey(const css::awt::KeyEvent& event) {
  came_by_click_ = false;
  return is_editing_ ? OnEditorKey(event) : OnCellKey(event);
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
  const bool shift = event.Modifiers & css::awt::KeyModifier::SHIFT;
  if (alt && event.KeyCode == key::DOWN) {
    PressButton();
    return true;
  }
  if (const std::optional<GridKey> grid_key = GridKeyOf(event.KeyCode)) {
    const bool is_tab = grid_key == GridKey::Tab;
    const bool goes_far =
        control || (!state_.can_edit() && (grid_key == GridKey::Home || grid_key == GridKey::End));
    const auto target = is_tab && !state_.can_edit()
                            ? std::nullopt
                            : KeyTarget(*grid_key, goes_far, shift, state_.current(),
                                        {places_.lines(), state_.columns().size(), places_.visible_lines()});
    if (target) {
      MoveTo(*target);
    } else if (is_tab) {
      form().FocusNext(*this, !shift);
    }
    return true;
  }
  switch (event.KeyCode) {
    case key::F2:
      if (BeginEdit()) CurrentCell()->SelectAll();
      return true;
    case key::F4:
      PressButton();
      return true;
    case key::DELETE:
      state_.DeleteCurrentRow();
      Show();
      return true;
    case key::RETURN:
    case key::ESCAPE:
      return false;
  }
  const char16_t character = static_cast<char16_t>(event.KeyChar);
  if (control || alt || character < u' ' || character == kDelete) return false;
  if (const ShownColumn* column = state_.CurrentColumn(); column && column->description.check_box) {
    if (character == u' ') state_.TurnMark();
    Show();
    return true;
  }
  if (!BeginEdit()) return true;
  // The field puts the letter in the old text's place.
  CurrentCell()->SelectAll();
  is_changed_ = true;
  return false;
}

void GridView::Pressed(const MousePress& press) {
  EndEdit(true);
  const auto cell = places_.CellAt(press.x, press.y);
  if (!cell) return;
  Press(*cell, press.clicks);
  state_.TurnMark();
  Show();
}

void GridView::Press(GridCell cell, int clicks) {
  const bool was_current = cell == state_.current() && !std::exchange(came_by_click_, false);
  if (is_editing_ && was_current) return;
  MoveTo(cell);
  if (description().read_only) {
    if (clicks == 2 && on_pick) on_pick();
  } else if (was_current && BeginEdit()) {
    CurrentCell()->SelectAll();
  }
}

// --- Editing -----------------------------------------------------------------------------------------------

bool GridView::BeginEdit() {
  if (!state_.TakesText()) return false;
  is_editing_ = state_.BeginRow();
  is_changed_ = false;
  Show();
  return is_editing_;
}

bool GridView::EndEdit(bool store) {
  if (!std::exchange(is_editing_, false)) return true;
  const bool is_changed = store && is_changed_;
  const bool is_stored = is_changed && state_.Store(CurrentCell()->Text());
  state_.GiveUp();
  Show();
  return is_stored || !is_changed;
}

// Also by the clipboard, an input method or assistive technology, in a cell that is none's yet.
void GridView::CellChanged(CellWindow& cell) {
  if (state_.columns()[cell.cell.column].description.check_box) {
    MoveTo(cell.cell);
    state_.TurnMark();
    Show();
    return;
  }
  if (!is_editing_ || cell.cell != state_.current()) {
    const std::u16string text = cell.Text();
    EndEdit(true);
    MoveTo(cell.cell);
    if (!BeginEdit()) return;
    cell.SetText(text);
    cell.MoveCaretToEnd();
  }
  is_changed_ = true;
}

void GridView::PressButton() {
  if (!state_.HasButton()) return;
  // It may show another window, which must wait for the end of what happens now.
  form().Later([this] {
    state_.PressButton();
    Show();
  });
}

// --- Drawing -----------------------------------------------------------------------------------------------

void GridView::Draw(Painter& painter) {
  const Theme& theme = painter.theme();
  const Rectangle area = Area();
  painter.Fill(area, theme.field);
  painter.Fill({1, 1, area.Width - 2, places_.header_height()}, theme.dialog);
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    const Rectangle place = places_.HeaderPlace(column);
    const int right = place.X + place.Width - 1;
    painter.Line(right, place.Y, right, place.Y + place.Height - 1, theme.shadow);
  }
  painter.Line(1, places_.header_height(), area.Width - 2, places_.header_height(), theme.shadow);

  const std::size_t last = std::min(places_.lines(), places_.first() + places_.visible_lines());
  for (std::size_t line = places_.first(); line < last; ++line) {
    for (std::size_t column = 0; column < columns_.size(); ++column) {
      const Rectangle place = places_.CellPlace({line, column});
      const int right = place.X + place.Width - 1;
      const int bottom = place.Y + place.Height - 1;
      if (IsMarkedOut({line, column})) painter.Fill(place, theme.highlight);
      painter.Line(right, place.Y, right, bottom, theme.dialog);
      painter.Line(place.X, bottom, right, bottom, theme.dialog);
    }
  }
  painter.Frame(area, HasFocus() ? theme.highlight : theme.shadow);
}

}  // namespace qva::calc
