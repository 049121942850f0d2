#include "platform/windows/forms/GridEditor.h"

#include <commctrl.h>

#include "platform/forms/Guarded.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/LateFunctions.h"
#include "platform/windows/forms/WindowText.h"

namespace qva::windows {

bool GridEditor::Create(HWND grid, Owner& owner) {
  owner_ = &owner;
  window_ = CreateWindowExW(0, WC_EDITW, L"", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 0, 0, grid, nullptr, nullptr,
                            nullptr);
  return window_ && late::SetWindowSubclass(window_, &Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

void GridEditor::Open(const RECT& area, int padding, std::u16string_view text) {
  // The size comes first: the text is scrolled to fit it.
  SetWindowPos(window_, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top, 0);
  SendMessageW(window_, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(padding, padding));
  SetWindowTextW(window_, WideText(text).c_str());
  SendMessageW(window_, EM_SETMODIFY, FALSE, 0);
  SendMessageW(window_, EM_SETSEL, 0, -1);
  ShowWindow(window_, SW_SHOWNA);
  is_open_ = true;
  ::SetFocus(window_);
}

void GridEditor::Close() {
  is_open_ = false;  // first: losing the focus is no leaving now
  if (GetFocus() == window_) ::SetFocus(GetParent(window_));
  ShowWindow(window_, SW_HIDE);
}

std::u16string GridEditor::Text() const {
  return TextOfWindow(window_);
}

bool GridEditor::is_modified() const {
  return SendMessageW(window_, EM_GETMODIFY, 0, 0) != 0;
}

LRESULT CALLBACK GridEditor::Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                       DWORD_PTR data) {
  auto& editor = *reinterpret_cast<GridEditor*>(data);
  const bool is_done = Guarded([&] { return editor.Handle(message, first); },
                               [&](std::exception_ptr failure) { editor.owner_->Fail(std::move(failure)); });
  if (is_done) return 0;
  const LRESULT result = late::DefSubclassProc(window, message, first, second);
  if (message == WM_NCDESTROY) late::RemoveWindowSubclass(window, &Procedure, id);
  // Enter, Escape and Tab are the cell's, not the form's.
  return message == WM_GETDLGCODE ? result | DLGC_WANTALLKEYS : result;
}

bool GridEditor::Handle(UINT message, WPARAM first) {
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return is_open_ && owner_->EditorKey(static_cast<UINT>(first), message == WM_SYSKEYDOWN);
    case WM_CHAR:
      // They were taken as keys; the field would only beep.
      return first == VK_RETURN || first == VK_ESCAPE || first == VK_TAB;
    case WM_SETFOCUS:
      // A form that comes back to the front returns the focus to where it was, by now perhaps hidden.
      if (is_open_) return false;
      ::SetFocus(GetParent(window_));
      return true;
    case WM_KILLFOCUS:
      if (is_open_) owner_->EditorLeft();
      return false;
    default:
      return false;
  }
}

}  // namespace qva::windows
