#include "platform/calc/forms/CalcWindows.h"

#include <array>

#include "platform/calc/EventLoop.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/MessageWindow.h"
#include "platform/filesystem/native_file.h"
#include "platform/forms/form_list_chooser.h"
#include "platform/variables.h"

namespace qva::calc {
namespace {

bool IsSet(const char* variable) {
  return !EnvironmentVariable(variable).empty();
}

bool FormsAreAttended() {
  return !IsSet(variables::kFormAnswers) && IsOnScreen();
}

bool BoxesAreAttended() {
  return !IsSet(variables::kAnswers) && !IsSet(variables::kMessageLog) && IsOnScreen();
}

}  // namespace

CalcWindows::CalcWindows(Services& services)
    : unattended_forms_(*services.forms),
      unattended_lists_(*services.list_chooser),
      unattended_boxes_(*services.message_box) {
  services.forms = this;
  services.list_chooser = this;
  services.message_box = this;
}

std::unique_ptr<ui::Form> CalcWindows::Create(const ui::FormDescription& description) {
  if (!FormsAreAttended()) return unattended_forms_.Create(description);
  return std::make_unique<FormWindow>(description);
}

std::optional<std::size_t> CalcWindows::Choose(const ChoiceList& list, std::u16string_view selected) {
  if (!FormsAreAttended()) return unattended_lists_.Choose(list, selected);
  return FormListChooser(*this).Choose(list, selected);
}

std::int32_t CalcWindows::Show(std::u16string_view text, std::int32_t style, std::u16string_view title) {
  if (BoxesAreAttended()) {
    try {
      const std::array captions = {std::u16string(kOk)};
      return ShowMessage(text, title.empty() ? kLibraryName : title, captions, (style & vbCritical) != 0);
    } catch (...) {
      // The log tells what the user did not see.
    }
  }
  return unattended_boxes_.Show(text, style, title);
}

std::int32_t CalcWindows::Ask(std::u16string_view text, std::u16string_view title,
                              std::span<const std::u16string> captions) {
  if (BoxesAreAttended() && !captions.empty()) {
    try {
      return ShowMessage(text, title.empty() ? kLibraryName : title, captions, false);
    } catch (...) {
    }
  }
  return unattended_boxes_.Ask(text, title, captions);
}

}  // namespace qva::calc
