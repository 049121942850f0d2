#include "platform/calc/forms/ListChooserWindow.h"

#include <com/sun/star/awt/Key.hpp>

#include <algorithm>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/GridView.h"
#include "platform/forms/list_filter.h"
#include "platform/message_box.h"

namespace qva::calc {
namespace {

class FilteredRows : public ui::GridModel {
 public:
  explicit FilteredRows(const ListFilter& filter) : filter_(filter) {}
  std::size_t RowCount() const override { return filter_.rows().size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override {
    return std::u16string(filter_.TextAt(row, column));
  }
  bool SetCellText(std::size_t, std::size_t, std::u16string_view) override { return false; }
  void AppendRow() override {}
  void DeleteRow(std::size_t) override {}
  void PressCellButton(std::size_t, std::size_t) override {}

 private:
  const ListFilter& filter_;
};

ui::FormDescription Layout(const ChoiceList& list) {
  using enum ui::ControlKind;
  ui::FormDescription form;
  form.name = u"ListChooser";
  form.caption = list.title;
  form.width = 460;
  form.height = 340;
  form.resizable = true;
  form.default_button = u"Ok";
  form.cancel_button = u"Cancel";
  form.controls = {{Label, u"FilterLabel", std::u16string(kFilterCaption), {8, 11, 64, 17}, u"", 0},
                   {TextBox, u"Filter", u"", {74, 8, 378, 23}, u"", 0},
                   {Grid, u"List", u"", {8, 38, 444, 258}, u"", 0},
                   {Button, u"Ok", std::u16string(kPickCaption), {268, 304, 88, 28}, u"", 0},
                   {Button, u"Cancel", std::u16string(kCancel), {364, 304, 88, 28}, u"", 0}};
  return form;
}

/// Columns as wide as their texts, roughly; the grid gives all of them their share.
std::vector<ui::GridColumn> Columns(const ChoiceList& list) {
  std::vector<ui::GridColumn> columns;
  for (std::size_t i = 0; i < list.captions.size(); ++i) {
    std::size_t longest = list.captions[i].size();
    for (const auto& row : list.rows) {
      if (i < row.size()) longest = std::max(longest, row[i].size());
    }
    columns.push_back({.name = list.captions[i],
                       .caption = list.captions[i],
                       .width = static_cast<int>(std::clamp<std::size_t>(longest, 8, 40)),
                       .read_only = true});
  }
  return columns;
}

/// The window, whose field passes the keys that move on to the list.
class ListWindow : public FormWindow {
 public:
  using FormWindow::FormWindow;

 private:
  bool HandleKey(const css::awt::KeyEvent& event) override {
    namespace key = css::awt::Key;
    auto& filter = dynamic_cast<FormControl&>(*Find(u"Filter"));
    const bool moves = event.KeyCode == key::UP || event.KeyCode == key::DOWN ||
                       event.KeyCode == key::PAGEUP || event.KeyCode == key::PAGEDOWN;
    if (moves && filter.HasFocus()) return dynamic_cast<FormControl&>(*Find(u"List")).OnKey(event);
    return FormWindow::HandleKey(event);
  }
};

}  // namespace

std::optional<std::size_t> ChooseFromList(const ChoiceList& list, std::u16string_view selected) {
  ListFilter shown(list);
  FilteredRows rows(shown);
  ListWindow form(Layout(list));
  auto& grid = ui::Get<GridView>(form, u"List");
  auto& filter = ui::Get<ui::TextBox>(form, u"Filter");
  auto& ok = ui::Get<ui::Button>(form, u"Ok");
  // The label is not its name (NativeControls.cpp).
  dynamic_cast<FormControl&>(filter).window().SetProperty("AccessibleName", Any(ToUno(kFilterCaption)));
  std::optional<std::size_t> chosen;

  grid.SetColumns(Columns(list));
  grid.SetModel(&rows);
  std::size_t marked = shown.RowOf(selected);
  grid.SetCurrentRow(marked);
  ok.SetEnabled(rows.RowCount() > 0);
  filter.on_change = [&] {
    // The row stays the current one while it fits, and becomes it again when nothing else did meanwhile.
    if (const auto row = grid.CurrentRow()) marked = shown.rows().at(*row);
    shown.Filter(filter.Text());
    grid.Refresh();
    grid.SetCurrentRow(shown.LineOf(marked));
    ok.SetEnabled(rows.RowCount() > 0);
  };
  const auto pick = [&] {
    if (const auto row = grid.CurrentRow()) {
      chosen = shown.rows().at(*row);
      form.Hide();
    }
  };
  ok.on_click = pick;
  grid.on_pick = pick;
  ui::Get<ui::Button>(form, u"Cancel").on_click = [&] { form.Hide(); };
  form.StartResizer(
      form.Width(), form.Height(), [](std::u16string_view name) -> std::optional<ui::ResizeMode> {
        return name == u"Filter" ? std::optional(ui::ResizeMode::StretchWithWidth) : std::nullopt;
      });
  filter.SetFocus();
  form.ShowModal();
  return chosen;
}

}  // namespace qva::calc
