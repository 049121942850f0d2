#include "platform/windows/forms/ButtonControls.h"

#include <commctrl.h>

#include "platform/forms/form_description.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/WindowText.h"

namespace qva::windows {

NativeLabel::NativeLabel(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  // Of a text in the middle Windows shows one line alone.
  const bool is_one_line = description.caption.find(u'\n') == std::u16string::npos;
  Create(L"STATIC", WideText(description.caption),
         SS_NOPREFIX | (is_one_line ? SS_LEFT | SS_CENTERIMAGE : SS_LEFTNOWORDWRAP));
}

std::u16string NativeLabel::Caption() const {
  return TextOfWindow(window());
}

void NativeLabel::SetCaption(std::u16string_view caption) {
  SetWindowTextW(window(), WideText(caption).c_str());
}

NativeFrame::NativeFrame(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(L"BUTTON", PlainCaption(description.caption), BS_GROUPBOX | WS_CLIPSIBLINGS);
  Observe();
}

LRESULT NativeFrame::Handle(UINT message, WPARAM first, LPARAM second) {
  if (message != WM_ERASEBKGND) return NativeControl::Handle(message, first, second);
  // Windows draws the line alone, and what lies behind a control is nobody's.
  RECT area;
  GetClientRect(window(), &area);
  const LRESULT brush =
      SendMessageW(form().window(), WM_CTLCOLORSTATIC, first, reinterpret_cast<LPARAM>(window()));
  FillRect(reinterpret_cast<HDC>(first), &area, reinterpret_cast<HBRUSH>(brush));
  return 1;
}

NativeButton::NativeButton(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(L"BUTTON", PlainCaption(description.caption), BS_PUSHBUTTON | BS_NOTIFY | WS_TABSTOP);
}

void NativeButton::OnCommand(WORD code) {
  if (code == BN_CLICKED) Raise(on_click);
  if (code == BN_SETFOCUS) form().MarkDefault(this);
  if (code == BN_KILLFOCUS) form().MarkDefault(nullptr);
}

NativeOptionButton::NativeOptionButton(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(L"BUTTON", PlainCaption(description.caption), BS_RADIOBUTTON);
}

void NativeOptionButton::Select() {
  if (Selected()) return;
  for (const auto& control : form().controls()) {
    if (!AreOneGroup(control->description(), description())) continue;
    SendMessageW(control->window(), BM_SETCHECK, control.get() == this ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  Raise(on_click);
}

void NativeOptionButton::OnCommand(WORD code) {
  if (code == BN_CLICKED) Select();
}

bool NativeOptionButton::IsTabStop() const {
  const NativeControl* stop = nullptr;
  for (const auto& control : form().controls()) {
    const auto* option = dynamic_cast<const NativeOptionButton*>(control.get());
    if (!option || !AreOneGroup(option->description(), description()) || !option->Enabled()) continue;
    if (!stop || option->Selected()) stop = option;
  }
  return stop == this && IsShown();
}

NativeTabControl::NativeTabControl(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(WC_TABCONTROLW, {}, WS_CLIPSIBLINGS | WS_TABSTOP);
  for (const std::u16string& page : form.description().pages) {
    std::wstring caption = PlainCaption(page);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    Send(TCM_INSERTITEMW, static_cast<WPARAM>(Send(TCM_GETITEMCOUNT)), reinterpret_cast<LPARAM>(&item));
  }
}

int NativeTabControl::Page() const {
  return form().page();
}

void NativeTabControl::SetPage(int page) {
  form().ShowPage(page);
}

void NativeTabControl::OnNotify(const NMHDR& notice) {
  if (notice.code == TCN_SELCHANGE) form().ShowPage(static_cast<int>(Send(TCM_GETCURSEL)));
}

}  // namespace qva::windows
