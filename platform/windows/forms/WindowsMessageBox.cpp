#include "platform/windows/forms/WindowsMessageBox.h"

#include "platform/forms/button_form.h"
#include "platform/variables.h"
#include "platform/windows/DeviceContext.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/Modality.h"
#include "platform/windows/forms/WindowPlace.h"

namespace qva::windows {
namespace {

std::u16string_view TitleOr(std::u16string_view title) {
  return title.empty() ? kLibraryName : title;
}

/// The form, with measures as Windows' own message boxes have them.
ui::FormDescription Describe(std::u16string_view text, std::u16string_view title,
                             std::span<const std::u16string> captions) {
  const FormWindow probe({});
  const int dpi = probe.scale().dpi;
  const MessageFont font(probe.scale());
  const WindowContext context(probe.window());
  const Selected selected(context.get(), font.get());
  // Never less than it takes: what is missing would be cut from the text.
  const auto at_100_percent = [dpi](int pixels) {
    return (pixels * USER_DEFAULT_SCREEN_DPI + dpi - 1) / dpi;
  };
  ButtonFormLook look;
  look.width_of = [&](std::u16string_view line) {
    RECT area{};
    DrawTextW(context.get(), Wide(line.data()), static_cast<int>(line.size()), &area,
              DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX | DT_EXPANDTABS);
    return at_100_percent(static_cast<int>(area.right));
  };
  look.line_height = at_100_percent(TextHeight(probe.window(), font.get()));
  look.margin = 12;
  look.greatest_text = 480;
  look.least_button = 75;
  look.button_padding = 10;
  look.button_height = look.line_height + 12;
  return ButtonForm(text, title, captions, look);
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
    try {
      const PerDisplayPixels pixels;
      FormWindow form(Describe(text, TitleOr(title), captions));
      // Where Windows' own boxes stand.
      RECT place{};
      GetWindowRect(form.window(), &place);
      PlaceOnDisplayOf(GetWindow(form.window(), GW_OWNER), form.window(),
                       {place.right - place.left, place.bottom - place.top});
      if (const std::int32_t pressed = PressedButton(form)) return pressed;
    } catch (...) {
      // The log tells what the user did not see.
    }
  }
  return unattended_.Ask(text, title, captions);
}

}  // namespace qva::windows
