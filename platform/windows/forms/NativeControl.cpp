#include "platform/windows/forms/NativeControl.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/forms/form_description.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/LateFunctions.h"

namespace qva::windows {

NativeControl::NativeControl(FormWindow& form, const ui::ControlDescription& description)
    : form_(form), description_(description), page_(PageOf(form.description(), description)) {
}

void NativeControl::SetEnabled(bool enabled) {
  // The keys would go nowhere.
  if (!enabled && form_.Focused() == this) form_.MoveFocus(1);
  EnableWindow(window_, enabled);
}

void NativeControl::SetFocus() {
  form_.Focus(*this);
}

bool NativeControl::IsShown() const {
  return !page_ || *page_ == form_.page();
}

bool NativeControl::IsTabStop() const {
  return Enabled() && IsShown();
}

void NativeControl::OnCommand(WORD) {
}

void NativeControl::OnNotify(const NMHDR&) {
}

LRESULT NativeControl::Answer(NMHDR& notice) {
  OnNotify(notice);
  return 0;
}

void NativeControl::Dress(HFONT font, UiScale) {
  SetFont(window_, font);
}

std::optional<SIZE> NativeControl::NaturalSize() const {
  return std::nullopt;
}

void NativeControl::Place(const RECT& place) {
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT NativeControl::FieldIn(RECT place) const {
  const int border = GetSystemMetrics(SM_CYEDGE) + 1;
  const int height = TextHeight(window_, reinterpret_cast<HFONT>(Send(WM_GETFONT))) + 2 * border;
  place.top += std::max<LONG>(0, place.bottom - place.top - height) / 2;
  place.bottom = std::min<LONG>(place.bottom, place.top + height);
  return place;
}

int NativeControl::Id() const {
  constexpr int kFirst = 100;  // apart from Windows' own numbers such as IDCANCEL
  return kFirst + static_cast<int>(&description_ - form_.description().controls.data());
}

void NativeControl::Create(const wchar_t* window_class, const std::wstring& text, DWORD style,
                           DWORD extended_style) {
  window_ =
      CreateWindowExW(extended_style, window_class, text.c_str(), WS_CHILD | style, 0, 0, 0, 0,
                      form_.window(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(Id())), nullptr, nullptr);
  if (!window_) throw AutomationError(kOutOfMemory);
}

void NativeControl::Observe() {
  if (!late::SetWindowSubclass(window_, &Procedure, 0, reinterpret_cast<DWORD_PTR>(this))) {
    throw AutomationError(kOutOfMemory);
  }
}

LRESULT NativeControl::Handle(UINT message, WPARAM first, LPARAM second) {
  return late::DefSubclassProc(window_, message, first, second);
}

LRESULT CALLBACK NativeControl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                          DWORD_PTR control) {
  if (message == WM_NCDESTROY) {
    late::RemoveWindowSubclass(window, &Procedure, id);
    return late::DefSubclassProc(window, message, first, second);
  }
  auto& self = *reinterpret_cast<NativeControl*>(control);
  return self.form_.Guard([&] { return self.Handle(message, first, second); });
}

}  // namespace qva::windows
