// Answers files of forms and message boxes: whatever stands in them, a form ends hidden and a box answered,
// and what is wrong is told once, with its line.
#include "platform/forms/unattended_forms.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "platform/forms/unattended_message_box.h"
#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/fuzz/fuzz.h"
#include "tests/heard_failures.h"
#include "tests/platform/forms/text_rows.h"

namespace qva {
namespace {

/// A file without a name that holds an input.
class AnswersFile {
 public:
  void Write(std::string_view content) const {
    Require(ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, content.data(), content.size(), 0) ==
                                                  static_cast<ssize_t>(content.size()),
            "the input can be written");
  }
  NativePath Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  const int descriptor_ = memfd_create("answers", 0);
};

/// Two columns, of which the second one has a list behind its button.
struct Rows : TextRows {
  using TextRows::TextRows;
  void DeleteRow(std::size_t row) override {
    Require(row < rows.size(), "a row that is deleted is there");
    TextRows::DeleteRow(row);
  }
};

ui::FormDescription Description() {
  using enum ui::ControlKind;
  constexpr std::pair<ui::ControlKind, const char16_t*> kControls[] = {
      {Label, u"label"},     {TextBox, u"text"},    {ComboBox, u"combo"},
      {DatePicker, u"date"}, {MonthView, u"month"}, {OptionButton, u"opt"},
      {Grid, u"grid"},       {Button, u"ok"},       {Button, u"no"}};
  ui::FormDescription description{.name = u"frm", .default_button = u"ok", .cancel_button = u"no"};
  for (const auto& [kind, name] : kControls) description.controls.push_back({.kind = kind, .name = name});
  return description;
}

/// The line that an error's description tells, 0 for none.
long LineOf(const std::u16string& description) {
  const std::string text = ToUtf8(description);
  return text.starts_with("line ") ? std::strtol(text.c_str() + 5, nullptr, 10) : 0;
}

void ShowForm(UnattendedForms& forms, std::ptrdiff_t lines) {
  const std::unique_ptr<ui::Form> form = forms.Create(Description());
  Rows rows(2);
  auto& grid = ui::Get<ui::Grid>(*form, u"grid");
  rows.changed = [&] { grid.Refresh(); };
  rows.pressed = [&](const std::u16string& text) {
    const auto chosen = forms.Choose({u"Knygos", {u"Kodas"}, {{u"A"}, {u"B"}}}, text);
    Require(!chosen || *chosen < 2, "a chosen row is in the list");
  };
  grid.SetColumns({{.name = u"A", .caption = u""}, {.name = u"B", .caption = u"", .cell_button = true}});
  grid.SetModel(&rows);
  ui::Get<ui::Button>(*form, u"ok").on_click = [&] {
    if (ui::Get<ui::TextBox>(*form, u"text").Text().empty()) form->Hide();
  };
  ui::Get<ui::Button>(*form, u"no").on_click = [&] { form->Hide(); };

  const HeardFailures heard;
  const auto raised = ErrorOf([&] { form->ShowModal(); });
  const std::int32_t error = raised ? raised->number() : 0;
  const std::u16string description = raised ? raised->description() : u"";
  Require(error == 0 || error == kInvalidProcedureCall, "errors are 5");
  Require(!form->Visible(), "the form is hidden in the end");
  Require(heard.failed.size() + heard.wrongly_answered.size() == (error == 0 ? 0 : 1),
          "errors are told once");
  Require(LineOf(description) <= lines, "an error's line is in the file");
  const bool is_told = LineOf(description) > 0 || description.starts_with(u"The answers end") ||
                       description.starts_with(u"There ");
  Require(error == 0 || is_told, "an error tells its line");
}

void ShowBoxes(UnattendedMessageBox& boxes) {
  constexpr std::int32_t kButtons[][3] = {{1}, {1, 2}, {3, 4, 5}, {6, 7, 2}, {6, 7}, {4, 2}, {1}};
  for (std::int32_t set = 0; set < 7; ++set) {
    const std::int32_t pressed = boxes.Show(u"Klausimas?", set + vbCritical, u"");
    Require(pressed > 0 && std::ranges::count(kButtons[set], pressed) == 1, "a box's own button is pressed");
  }
  const std::u16string captions[] = {u"Taip", u"Ne", u"Atšaukti"};
  for (std::size_t count = 0; count <= 3; ++count) {
    const std::int32_t pressed = boxes.Ask(u"Klausimas?", u"", std::span(captions).first(count));
    Require(pressed >= 1 && pressed <= std::max<std::int32_t>(1, static_cast<std::int32_t>(count)),
            "a caption's own button is pressed");
  }
}

}  // namespace
}  // namespace qva

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  static const AnswersFile file;
  const std::string_view content = AsText(data, size);
  file.Write(content);
  const MemoryClock clock;
  const MemoryLocale locale;
  UnattendedForms forms(file.Path(), "/dev/null", clock, locale);
  for (int showing = 0; showing < 3; ++showing) ShowForm(forms, 1 + std::ranges::count(content, '\n'));
  UnattendedMessageBox boxes(file.Path(), "/dev/null", clock);
  ShowBoxes(boxes);
  return 0;
}
