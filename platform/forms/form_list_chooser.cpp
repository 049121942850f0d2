#include "platform/forms/form_list_chooser.h"

#include <algorithm>

#include "platform/forms/list_filter.h"
#include "platform/message_box.h"

namespace qva {
namespace {

class FilteredRows : public ui::GridModel {
 public:
  explicit FilteredRows(const ListFilter& filter) : filter_(filter) {}
  std::size_t RowCount() const override { return filter_.rows().size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override {
    return std::u16string(filter_.TextAt(row, column));
  }

 private:
  const ListFilter& filter_;
};

ui::FormDescription Layout(const ChoiceList& list) {
  using enum ui::ControlKind;
  ui::FormDescription form;
  form.name = u"ListChooser";
  form.caption = list.title;
  form.width = 280;
  form.height = 220;
  form.first_width = 480;
  form.first_height = 400;
  form.resizable = true;
  form.default_button = u"Ok";
  form.cancel_button = u"Cancel";
  form.controls = {{Label, u"FilterLabel", u"Ieškoti:", {12, 15, 64, 17}, u"", 0},
                   {TextBox, u"Filter", u"", {80, 12, 188, 23}, u"", 0, false, u"List"},
                   {Grid, u"List", u"", {12, 43, 256, 125}, u"", 0, true},
                   {Button, u"Ok", u"OK", {84, 180, 88, 28}, u"", 0},
                   {Button, u"Cancel", std::u16string(kCancel), {180, 180, 88, 28}, u"", 0}};
  return form;
}

/// Columns as wide as their texts, roughly: measuring thousands would take too long.
std::vector<ui::GridColumn> Columns(const ChoiceList& list) {
  constexpr std::size_t kLetter = 8, kPadding = 16, kLeast = 80, kGreatest = 240;
  std::vector<ui::GridColumn> columns;
  for (std::size_t i = 0; i < list.captions.size(); ++i) {
    std::size_t longest = list.captions[i].size();
    for (const auto& row : list.rows) {
      if (i < row.size()) longest = std::max(longest, row[i].size());
    }
    const std::size_t width = std::clamp(longest * kLetter + kPadding, kLeast, kGreatest);
    columns.push_back({.name = list.captions[i],
                       .caption = list.captions[i],
                       .width = static_cast<int>(width),
                       .read_only = true});
  }
  return columns;
}

std::optional<std::size_t> Show(ui::FormFactory& forms, const ChoiceList& list,
                                std::u16string_view selected) {
  ListFilter filter(list);
  FilteredRows rows(filter);
  const ui::FormDescription layout = Layout(list);
  const auto form = forms.Create(layout);
  auto& grid = ui::Get<ui::Grid>(*form, u"List");
  auto& field = ui::Get<ui::TextBox>(*form, u"Filter");
  auto& ok = ui::Get<ui::Button>(*form, u"Ok");
  std::size_t marked = filter.RowOf(selected);
  std::optional<std::size_t> chosen;

  const auto mark = [&] {
    grid.SetCurrentRow(filter.LineOf(marked));
    ok.SetEnabled(rows.RowCount() > 0);
  };
  const auto pick = [&] {
    if (const auto line = grid.CurrentRow()) {
      chosen = filter.rows().at(*line);
      form->Hide();
    }
  };
  field.on_change = [&] {
    // The row stays the current one while it fits, and becomes it again when nothing else did meanwhile.
    if (const auto line = grid.CurrentRow()) marked = filter.rows().at(*line);
    filter.Filter(field.Text());
    grid.Refresh();
    mark();
  };
  grid.on_pick = pick;
  ok.on_click = pick;
  ui::Get<ui::Button>(*form, u"Cancel").on_click = [&] { form->Hide(); };

  grid.SetColumns(Columns(list));
  grid.SetModel(&rows);
  mark();
  form->StartResizer(layout.width, layout.height, [](std::u16string_view name) {
    return name == u"Filter" ? std::optional(ui::ResizeMode::StretchWithWidth) : std::nullopt;
  });
  field.SetFocus();
  form->ShowModal();
  return chosen;
}

}  // namespace

std::optional<std::size_t> FormListChooser::Choose(const ChoiceList& list, std::u16string_view selected) {
  try {
    return Show(forms_, list, selected);
  } catch (...) {
    return std::nullopt;  // what cannot be shown cannot be answered
  }
}

}  // namespace qva
