#include "platform/windows/forms/WindowsMessageBox.h"

#include "platform/variables.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/ButtonDialog.h"
#include "platform/windows/forms/Modality.h"

namespace qva::windows {
namespace {

std::u16string_view TitleOr(std::u16string_view title) {
  return title.empty() ? kLibraryName : title;
}

}  // namespace

WindowsMessageBox::WindowsMessageBox(const Clock& clock)
    : unattended_(EnvironmentVariable(variables::kAnswers), EnvironmentVariable(variables::kMessageLog),
                  clock),
      is_attended_(EnvironmentVariable(variables::kAnswers).empty() &&
                   EnvironmentVariable(variables::kMessageLog).empty() && HasVisibleDesktop()) {
}

std::int32_t WindowsMessageBox::Show(std::u16string_view text, std::int32_t style,
                                     std::u16string_view title) {
  if (is_attended_) {
    HWND owner = OwnerWindow();
    const OthersDisabled others(owner);  // the box sees to its owner alone
    const int pressed = MessageBoxW(owner, WideText(text).c_str(), WideText(TitleOr(title)).c_str(),
                                    static_cast<UINT>(style));
    if (pressed != 0) return pressed;
  }
  return unattended_.Show(text, style, title);
}

std::int32_t WindowsMessageBox::Ask(std::u16string_view text, std::u16string_view title,
                                    std::span<const std::u16string> captions) {
  if (is_attended_ && !captions.empty()) {
    const std::int32_t pressed = ShowButtonDialog(OwnerWindow(), text, TitleOr(title), captions);
    if (pressed != 0) return pressed;
  }
  return unattended_.Ask(text, title, captions);
}

}  // namespace qva::windows
