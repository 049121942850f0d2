#include "platform/calc/forms/GridView.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>

#include <algorithm>

#include "platform/calc/forms/FormWindow.h"
#include "platform/forms/grid_keys.h"

namespace qva::calc {

using css::awt::Rectangle;
using css::awt::XScrollBar;

namespace {

constexpr int kBarWidth = 17;  // at 100 %
constexpr char16_t kDelete = 127;

constexpr std::pair<sal_Int16, GridKey> kGridKeys[] = {
    {css::awt::Key::LEFT, GridKey::Left},     {css::awt::Key::RIGHT, GridKey::Right},
    {css::awt::Key::UP, GridKey::Up},         {css::awt::Key::DOWN, GridKey::Down},
    {css::awt::Key::PAGEUP, GridKey::PageUp}, {css::awt::Key::PAGEDOWN, GridKey::PageDown},
    {css::awt::Key::HOME, GridKey::Home},     {css::awt::Key::END, GridKey::End},
    {css::awt::Key::TAB, GridKey::Tab}};

std::optional<GridKey> GridKeyOf(sal_Int16 code) {
  for (const auto& [known, grid_key] : kGridKeys) {
    if (known == code) return grid_key;
  }
  return std::nullopt;
}

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
  state_.SetColumns(std::move(columns));
  places_.SetColumns(state_.columns());
  Refresh();
}

void GridView::SetModel(ui::GridModel* model) {
  state_.SetModel(model);
  Refresh();
}

void GridView::Refresh() {
  editor_.Close();
  state_.Refresh();
  places_.SetLines(state_.lines());
  UpdateBar();
  Redraw();
}

void GridView::SetCurrentRow(std::size_t row) {
  if (row < state_.RowCount()) MoveTo({row, state_.current().column});
}

void GridView::Place(const Rectangle& pixels) {
  EndEdit(true, false);
  Canvas::Place(pixels);
  places_.SetArea(pixels.Width, pixels.Height, form().theme().scale, Scaled(kBarWidth));
  places_.Show(state_.current().line);
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

void GridView::MoveTo(GridCell cell) {
  state_.MoveTo(cell);
  places_.Show(cell.line);
  UpdateBar();
  Redraw();
}

void GridView::Show() {
  places_.SetLines(state_.lines());
  MoveTo(state_.current());
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
      BeginEdit(state_.CurrentText(), state_.CurrentRow().has_value(), false);
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
  } else {
    BeginEdit(std::u16string(1, character), false, true);
  }
  return true;
}

void GridView::Pressed(const MousePress& press) {
  EndEdit(true);
  const auto cell = places_.CellAt(press.x, press.y);
  if (!cell) return;
  const bool was_current = *cell == state_.current();
  MoveTo(*cell);
  const ShownColumn* column = state_.CurrentColumn();
  if (!column) return;
  if (!state_.can_edit()) {
    if (press.clicks == 2 && on_pick) on_pick();
  } else if (state_.HasButton() && Contains(places_.ButtonPlace(*cell), press.x, press.y)) {
    // The first click shows the button; a double-click must not press it twice.
    if (was_current && press.clicks == 1) PressButton();
  } else if (column->description.check_box) {
    state_.TurnMark();
    Show();
  } else if (was_current) {
    BeginEdit(state_.CurrentText(), true, false);
  }
}

// --- Editing -----------------------------------------------------------------------------------------------

void GridView::BeginEdit(std::u16string_view text, bool marked, bool changed) {
  if (!state_.TakesText()) return;
  const bool has_row = state_.BeginRow();
  Show();
  if (!has_row) return;
  typed_ = changed;
  const GridCell cell = state_.current();
  Rectangle place = places_.CellPlace(cell);
  if (state_.HasButton()) place.Width -= places_.ButtonPlace(cell).Width;
  place.X += 1;
  place.Y += 1;
  place.Width -= 3;
  place.Height -= 3;
  editor_.Open(place, text, marked);
}

bool GridView::EndEdit(bool store, bool keep_focus) {
  if (!editor_.is_open()) return true;
  const std::u16string text = editor_.Text();
  const bool changed = store && (typed_ || editor_.changed());
  typed_ = false;
  // It must not take the move of the focus for the user's.
  editor_.Close();
  if (keep_focus) TakeFocus();
  const bool is_stored = changed && state_.Store(text);
  state_.GiveUp();
  Show();
  return is_stored || !changed;
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
  const int padding = Scaled(4);
  painter.Fill({1, 1, area.Width - 2, places_.header_height()}, theme.dialog);
  for (std::size_t column = 0; column < state_.columns().size(); ++column) {
    Rectangle place = places_.HeaderPlace(column);
    const int right = place.X + place.Width - 1;
    painter.Line(right, place.Y, right, place.Y + place.Height - 1, theme.shadow);
    place.X += padding;
    place.Width -= 2 * padding;
    painter.Caption(place, state_.columns()[column].description.caption, theme.dialog_text);
  }
  painter.Line(1, places_.header_height(), area.Width - 2, places_.header_height(), theme.shadow);

  const std::size_t last = std::min(places_.lines(), places_.first() + places_.visible_lines());
  for (std::size_t row = places_.first(); row < last; ++row) {
    for (std::size_t column = 0; column < state_.columns().size(); ++column) {
      DrawCell(painter, {row, column}, row >= state_.RowCount());
    }
  }
  painter.Frame(area, focused() ? theme.highlight : theme.shadow);
}

void GridView::DrawCell(Painter& painter, const GridCell& cell, bool is_new) {
  const Theme& theme = painter.theme();
  const ShownColumn& column = state_.columns()[cell.column];
  const Rectangle place = places_.CellPlace(cell);
  const int right = place.X + place.Width - 1;
  const int bottom = place.Y + place.Height - 1;
  const bool is_current = cell == state_.current();
  const bool marked = state_.can_edit() ? is_current && focused() : cell.line == state_.current().line;
  if (marked) painter.Fill({place.X, place.Y, place.Width - 1, place.Height - 1}, theme.highlight);
  painter.Line(right, place.Y, right, bottom, theme.dialog);
  painter.Line(place.X, bottom, right, bottom, theme.dialog);

  const sal_Int32 color = marked ? theme.highlight_text : theme.field_text;
  const int padding = Scaled(4);
  Rectangle inner(place.X + padding, place.Y, place.Width - 2 * padding, place.Height - 1);
  if (column.description.check_box) {
    if (is_new) return;
    const int size = Scaled(12);
    const Rectangle box(place.X + (place.Width - size) / 2, place.Y + (place.Height - size) / 2, size, size);
    painter.Fill(box, theme.field);
    painter.Frame(box, column.description.read_only ? theme.disabled_text : theme.field_text);
    if (IsMarked(state_.TextOf(cell))) {
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
  if (is_current && column.description.cell_button) {
    const Rectangle button = places_.ButtonPlace(cell);
    painter.Fill(button, theme.dialog);
    painter.Frame(button, theme.shadow);
    painter.Text(button, u"…", theme.dialog_text, Align::Center);
    inner.Width -= button.Width;
  }
  if (!is_new) painter.Text(inner, state_.TextOf(cell), color);
}

}  // namespace qva::calc
