#include "platform/windows/forms/ButtonDialog.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/forms/Guarded.h"
#include "platform/windows/DeviceContext.h"
#include "platform/windows/forms/EmptyDialog.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/Modality.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/forms/VisualStyles.h"
#include "platform/windows/forms/WindowPlace.h"
#include "platform/windows/forms/WindowText.h"

namespace qva::windows {
namespace {

constexpr int kFirstButtonId = 100;  // apart from Windows' own numbers such as IDCANCEL

// Measures in pixels at 100 %, as Windows' own message boxes have them.
constexpr int kLeastButtonWidth = 75;
constexpr int kButtonPadding = 10;
constexpr int kGreatestTextWidth = 480;

/// Measures texts on a window in a font.
class TextMeasure {
 public:
  TextMeasure(HWND window, HFONT font) : context_(window), font_(context_.get(), font) {}

  SIZE SizeOf(std::u16string_view text, int greatest_width) const {
    RECT area{0, 0, greatest_width, 0};
    DrawTextW(context_.get(), Wide(text.data()), static_cast<int>(text.size()), &area,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    return {area.right, area.bottom};
  }

 private:
  WindowContext context_;
  Selected font_;
};

struct Dialog {
  std::u16string_view text;
  std::u16string_view title;
  std::span<const std::u16string> captions;
  MessageFont font;
  std::optional<OthersDisabled> others;

  void AddControl(HWND window, const wchar_t* control_class, const std::wstring& caption, DWORD style, int id,
                  const RECT& place) const {
    HWND control =
        CreateWindowExW(0, control_class, caption.c_str(), WS_CHILD | WS_VISIBLE | style, place.left,
                        place.top, place.right - place.left, place.bottom - place.top, window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SetFont(control, font.get());
  }

  /// The text at the top, the buttons in a row below it, all in the middle; the window around them.
  void Fill(HWND window) {
    const UiScale scale = ScaleOf(window);
    font = MessageFont(scale);
    const TextMeasure measure(window, font.get());
    const int margin = scale(kDialogMargin);
    const int gap = scale(kDialogGap);
    const SIZE text_size = measure.SizeOf(text, scale(kGreatestTextWidth));
    const int button_height = measure.SizeOf(u"Ą", scale(kGreatestTextWidth)).cy + gap + gap / 2;

    std::vector<int> widths;
    int row_width = -gap;
    for (const std::u16string& caption : captions) {
      const int needed = measure.SizeOf(caption, scale(kGreatestTextWidth)).cx + 2 * scale(kButtonPadding);
      widths.push_back(std::max(needed, scale(kLeastButtonWidth)));
      row_width += widths.back() + gap;
    }

    const int inner_width = std::max<int>(text_size.cx, row_width);
    RECT place{margin, margin, margin + inner_width, margin + text_size.cy};
    AddControl(window, L"STATIC", WideText(text), SS_NOPREFIX, -1, place);
    place.top = place.bottom + margin;
    place.bottom = place.top + button_height;
    place.left = margin + (inner_width - row_width) / 2;
    for (std::size_t i = 0; i < captions.size(); ++i) {
      place.right = place.left + widths[i];
      const DWORD style = WS_TABSTOP | (i == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
      AddControl(window, L"BUTTON", PlainCaption(captions[i]), style, kFirstButtonId + static_cast<int>(i),
                 place);
      place.left = place.right + gap;
    }

    SetWindowTextW(window, WideText(title).c_str());
    const SIZE size = WithFrame({inner_width + 2 * margin, place.bottom + margin},
                                static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)),
                                static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)), scale);
    PlaceOnDisplayOf(GetWindow(window, GW_OWNER), window, size);
    SetFocus(GetDlgItem(window, kFirstButtonId));
    others.emplace(window);
  }

  INT_PTR Handle(HWND window, UINT message, WPARAM first) {
    switch (message) {
      case WM_INITDIALOG:
        Fill(window);
        return FALSE;  // the focus is set
      case WM_COMMAND: {
        const int count = static_cast<int>(captions.size());
        const int id = LOWORD(first);
        if (id == IDCANCEL) {
          Leave(window, count);
        } else if (id >= kFirstButtonId && id < kFirstButtonId + count && HIWORD(first) == BN_CLICKED) {
          Leave(window, id - kFirstButtonId + 1);
        }
        return TRUE;
      }
      default:
        return FALSE;
    }
  }

  void Leave(HWND window, INT_PTR answer) {
    others.reset();  // before the window goes, so that none of another program comes to the front
    EndDialog(window, answer);
  }
};

INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, second);
  auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(window, DWLP_USER));
  if (!dialog) return FALSE;
  return Guarded([&] { return dialog->Handle(window, message, first); },
                 [&](std::exception_ptr) { dialog->Leave(window, 0); });
}

}  // namespace

std::int32_t ShowButtonDialog(HWND owner, std::u16string_view text, std::u16string_view title,
                              std::span<const std::u16string> captions) {
  const PerDisplayPixels pixels;
  const VisualStyles styles;
  Dialog dialog{text, title, captions, {}, {}};
  EmptyDialog empty{};
  empty.dialog.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFOREGROUND;
  const INT_PTR pressed = DialogBoxIndirectParamW(nullptr, &empty.dialog, owner, &DialogProcedure,
                                                  reinterpret_cast<LPARAM>(&dialog));
  return pressed > 0 ? static_cast<std::int32_t>(pressed) : 0;
}

}  // namespace qva::windows
