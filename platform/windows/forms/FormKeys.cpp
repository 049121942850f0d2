// How a form is shown, and what its keys do.
#include "platform/windows/forms/FormWindow.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/forms/form_description.h"
#include "platform/windows/forms/Keyboard.h"

namespace qva::windows {

void FormWindow::ShowModal() {
  if (visible_) throw AutomationError(kFormAlreadyDisplayed);
  if (!window()) throw AutomationError(kOutOfMemory);
  const PerDisplayPixels pixels;
  struct HideAtEnd {
    FormWindow& form;
    ~HideAtEnd() { form.Hide(); }
  } const hide{*this};

  failure_ = nullptr;
  if (!HasField()) FocusFirstField();  // a window that is not to be seen must not be given the focus itself
  visible_ = true;
  others_.emplace(window());
  SetWindowPos(window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  SetForegroundWindow(window());
  if (focus_ && !Focused()) SetFocus(focus_->window());
  RunLoop();
  Hide();
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void FormWindow::RunLoop() {
  while (visible_) {
    MSG message;
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got <= 0) {
      if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));  // it is for the loop outside
      return;
    }
    if (CallMsgFilterW(&message, MSGF_DIALOGBOX) || TakeKey(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void FormWindow::Hide() {
  if (!visible_) return;
  visible_ = false;
  others_.reset();
  HWND owner = GetWindow(window(), GW_OWNER);
  const bool was_active = GetActiveWindow() == window();
  ShowWindow(window(), SW_HIDE);
  if (was_active && owner) SetActiveWindow(owner);
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // the loop may be waiting
}

void FormWindow::Close() {
  if (description_.cancel_button.empty()) {
    Hide();
  } else {
    PressButton(description_.cancel_button);
  }
}

// --- Focus -------------------------------------------------------------------------------------------------

NativeControl* FormWindow::Focused() const {
  HWND window = GetFocus();
  while (window && GetAncestor(window, GA_PARENT) != this->window()) window = GetAncestor(window, GA_PARENT);
  return window ? ControlOf(window) : nullptr;
}

void FormWindow::Focus(NativeControl& control) {
  if (control.page()) ShowPage(*control.page());
  focus_ = &control;
  if (visible_) SetFocus(control.window());
}

bool FormWindow::HasField() const {
  return focus_ && focus_->Enabled() && focus_->IsShown();
}

void FormWindow::FocusFirstField() {
  const auto field = std::ranges::find_if(
      controls_, [this](const auto& control) { return control.get() != tabs_ && control->IsTabStop(); });
  if (field == controls_.end()) return MoveFocus(1);
  (*field)->SetFocus();
}

void FormWindow::MoveFocus(int step) {
  const NativeControl* from = Focused();
  const int count = static_cast<int>(controls_.size());
  int place = step > 0 ? -1 : count;
  for (int i = 0; from && i < count; ++i) {
    if (controls_[static_cast<std::size_t>(i)].get() == from) place = i;
  }
  for (int i = 0; i < count; ++i) {
    place = (place + step + count) % count;
    NativeControl& control = *controls_[static_cast<std::size_t>(place)];
    if (!control.IsTabStop() || (from && AreOneGroup(from->description(), control.description()))) continue;
    return control.SetFocus();
  }
}

void FormWindow::ShowPage(int page) {
  if (page == page_ || !tabs_) return;
  NativeControl* focused = Focused();
  page_ = page;
  if (focus_ && !focus_->IsShown()) focus_ = tabs_;
  if (focused && !focused->IsShown()) SetFocus(tabs_->window());
  SendMessageW(tabs_->window(), TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
  for (const auto& control : controls_) {
    if (control->page()) ShowWindow(control->window(), control->IsShown() ? SW_SHOWNA : SW_HIDE);
  }
}

void FormWindow::MarkDefault(const NativeControl* button) {
  for (const auto& control : controls_) {
    if (control->description().kind != ui::ControlKind::Button) continue;
    const bool is_default =
        button ? control.get() == button : control->description().name == description_.default_button;
    SendMessageW(control->window(), BM_SETSTYLE, is_default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
  }
}

// --- Keys --------------------------------------------------------------------------------------------------

/// True when the key has done its work.
bool FormWindow::TakeKey(const MSG& message) {
  if (message.message != WM_KEYDOWN || (message.hwnd != window() && !IsChild(window(), message.hwnd))) {
    return false;
  }
  const LRESULT wanted =
      SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
  if (wanted & DLGC_WANTALLKEYS) return false;
  NativeControl* focused = Focused();
  if (focused && PassKey(message, *focused)) return true;
  const int step = IsDown(VK_SHIFT) ? -1 : 1;
  switch (message.wParam) {
    case VK_TAB:
      if (IsDown(VK_CONTROL)) return TurnPage(step);
      if (wanted & DLGC_WANTTAB) return false;
      MoveFocus(step);
      return true;
    case VK_PRIOR:
      return IsDown(VK_CONTROL) && TurnPage(-1);
    case VK_NEXT:
      return IsDown(VK_CONTROL) && TurnPage(1);
    case VK_LEFT:
    case VK_UP:
      return focused && ChooseInGroup(*focused, -1);
    case VK_RIGHT:
    case VK_DOWN:
      return focused && ChooseInGroup(*focused, 1);
    case VK_RETURN:
      return PressButton(focused && focused->description().kind == ui::ControlKind::Button
                             ? focused->description().name
                             : description_.default_button);
    case VK_ESCAPE:
      Close();
      return true;
    default:
      return false;
  }
}

bool FormWindow::PassKey(const MSG& message, const NativeControl& from) {
  const WPARAM key = message.wParam;
  const bool moves =
      !IsDown(VK_CONTROL) && (key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT);
  const auto* to = moves ? dynamic_cast<const NativeControl*>(Find(from.description().keys_for)) : nullptr;
  if (to) SendMessageW(to->window(), message.message, key, message.lParam);
  return to != nullptr;
}

bool FormWindow::TurnPage(int step) {
  const int count = static_cast<int>(description_.pages.size());
  if (!tabs_ || count == 0) return false;
  ShowPage((page_ + step + count) % count);
  return true;
}

bool FormWindow::ChooseInGroup(NativeControl& from, int step) {
  const ui::ControlDescription& one = from.description();
  if (one.kind != ui::ControlKind::OptionButton && one.kind != ui::ControlKind::Button) return false;
  std::vector<NativeControl*> group;
  for (const auto& control : controls_) {
    const ui::ControlDescription& other = control->description();
    if (other.kind == one.kind && other.parent == one.parent && control->IsShown() &&
        (control->Enabled() || control.get() == &from)) {
      group.push_back(control.get());
    }
  }
  const auto place = static_cast<std::size_t>(std::ranges::find(group, &from) - group.begin());
  NativeControl& next = *group[(place + group.size() + static_cast<std::size_t>(step)) % group.size()];
  next.SetFocus();
  if (auto* option = dynamic_cast<ui::OptionButton*>(&next)) option->Select();
  return true;
}

bool FormWindow::PressButton(std::u16string_view name) {
  const auto* button = dynamic_cast<const ui::Button*>(Find(name));
  if (!button || !button->Enabled()) return false;
  if (button->on_click) button->on_click();
  return true;
}

}  // namespace qva::windows
