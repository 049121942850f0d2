// What tests of native forms share: a window in Excel's place, a form with every kind of control, and a user.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "platform/date.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/WindowText.h"
#include "tests/windows/gui_test.h"

namespace qva::windows {

/// Does something with a form step by step, each when the form has nothing left to do, and closes it in the
/// end. The steps run on the form's own thread, inside its loop.
class FormUser {
 public:
  FormUser(ui::Form& form, std::vector<std::function<void()>> steps) : form_(form), steps_(std::move(steps)) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, 1, &Tick);
  }
  FormUser(const FormUser&) = delete;
  FormUser& operator=(const FormUser&) = delete;
  ~FormUser() {
    KillTimer(nullptr, timer_);
    current_ = nullptr;
    EXPECT_EQ(next_, steps_.size()) << "the form closed before its time";
  }

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (!current_ || !current_->form_.Visible()) return;
    if (current_->next_ == current_->steps_.size()) return current_->form_.Hide();
    current_->steps_[current_->next_++]();
  }

  static inline FormUser* current_ = nullptr;
  ui::Form& form_;
  std::vector<std::function<void()>> steps_;
  std::size_t next_ = 0;
  UINT_PTR timer_ = 0;
};

inline HWND WindowOf(ui::Form& form, std::u16string_view name) {
  return dynamic_cast<NativeControl&>(*form.Find(name)).window();
}

/// Presses a key where the focus is.
inline void PressKey(WORD key) {
  PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
  PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

/// Holds a key down, or lets it go, for the keys that are pressed then.
inline void HoldKey(int key, bool down) {
  BYTE state[256];
  GetKeyboardState(state);
  state[key] = down ? 0x80 : 0;
  SetKeyboardState(state);
}

inline void TypeText(std::u16string_view text) {
  for (const char16_t character : text) PostMessageW(GetFocus(), WM_CHAR, character, 1);
}

/// What happens to the window that a form stands above, in order.
class WindowBelow {
 public:
  WindowBelow() {
    window = CreateWindowExW(0, L"STATIC", L"Excel", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 900, 600,
                             nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    before_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
    SetForegroundWindow(window);
    SetActiveWindow(window);
  }
  WindowBelow(const WindowBelow&) = delete;
  WindowBelow& operator=(const WindowBelow&) = delete;
  ~WindowBelow() { DestroyWindow(window); }

  HWND window;
  std::function<void(bool)> on_enable;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto& self = *reinterpret_cast<WindowBelow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_ENABLE && self.on_enable) self.on_enable(first != FALSE);
    return CallWindowProcW(self.before_, window, message, first, second);
  }

  WNDPROC before_;
};

/// Two pages with a control of each kind, as the period dialog has them.
inline ui::FormDescription FormWithAllKinds() {
  using enum ui::ControlKind;
  ui::FormDescription form;
  form.name = u"frmTest";
  form.caption = u"Bandymas";
  form.width = 500;
  form.height = 300;
  form.resizable = true;
  form.pages = {u"#1 Pirmas", u"#2 Antras"};
  form.default_button = u"btOk";
  form.cancel_button = u"btCancel";
  form.controls = {
      {TabControl, u"STab", u"", {8, 8, 484, 240}, u"", 0},
      {Label, u"Label1", u"Metai  &  kiti : ", {16, 40, 100, 17}, u"STab", 0},
      {ComboBox, u"cbPlan", u"", {120, 36, 150, 23}, u"STab", 0},
      {TextBox, u"txtYear", u"", {120, 66, 60, 23}, u"STab", 0},
      {TextBox, u"txtMonth", u"", {120, 96, 60, 23}, u"STab", 0},
      {Frame, u"Frame1", u" Rūšis ", {300, 36, 150, 100}, u"STab", 0},
      {OptionButton, u"optA", u"A & B", {16, 20, 120, 20}, u"Frame1", 0},
      {OptionButton, u"optB", u"I  pusmečio", {16, 44, 120, 20}, u"Frame1", 0},
      {OptionButton, u"optC", u"Kita", {16, 68, 120, 20}, u"Frame1", 0},
      {DatePicker, u"edDate", u"", {120, 126, 110, 23}, u"STab", 0},
      {TextBox, u"Text1", u"Pastaba", {16, 200, 450, 23}, u"STab", 0},
      {Grid, u"SpecGrid", u"", {16, 36, 450, 150}, u"STab", 1},
      {Button, u"btDelete", u"DelRec", {16, 196, 90, 27}, u"STab", 1},
      {Button, u"btOk", u"OK", {308, 260, 88, 28}, u"", 0},
      {Button, u"btCancel", u"Cancel", {404, 260, 88, 28}, u"", 0},
  };
  return form;
}

inline ui::FormDescription FormWithMonth() {
  ui::FormDescription form;
  form.name = u"frmMonth";
  form.caption = u"Mėnuo";
  form.width = 240;
  form.height = 190;
  form.controls = {{ui::ControlKind::MonthView, u"MonthView1", u"", {4, 4, 232, 182}, u"", 0}};
  return form;
}

/// The same with a text box that can only be read.
inline ui::FormDescription FormWithANote(std::u16string_view name) {
  ui::FormDescription form = FormWithAllKinds();
  std::ranges::find(form.controls, name, &ui::ControlDescription::name)->read_only = true;
  return form;
}

class FormTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
    below.emplace();
    Make(FormWithAllKinds());
  }
  void TearDown() override { form.reset(); }

  /// At the scale of the test's display.
  void MakeHere(const ui::FormDescription& description) {
    form.reset();
    form = std::make_unique<FormWindow>(description);
  }
  /// At 100 %, whatever the test's display is like. The window's frame is still that display's.
  void Make(const ui::FormDescription& description) {
    MakeHere(description);
    if (form->scale().dpi != 96) ChangeScale(96);
  }
  /// Gives the form's inside a size, in pixels of the display.
  void Resize(int width, int height) {
    RECT outer, inner;
    GetWindowRect(form->window(), &outer);
    GetClientRect(form->window(), &inner);
    SetWindowPos(form->window(), nullptr, 0, 0, outer.right - outer.left - inner.right + width,
                 outer.bottom - outer.top - inner.bottom + height, SWP_NOMOVE | SWP_NOZORDER);
  }
  /// As if the form came to a display of another scale.
  void ChangeScale(int dpi) {
    RECT place;
    GetWindowRect(form->window(), &place);
    SendMessageW(form->window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    Resize(MulDiv(form->description().width, dpi, 96), MulDiv(form->description().height, dpi, 96));
  }
  template <class T>
  T& Get(std::u16string_view name) {
    return ui::Get<T>(*form, name);
  }
  HWND Window(std::u16string_view name) { return WindowOf(*form, name); }
  /// Shows the form to a user who does these steps.
  void Show(std::vector<std::function<void()>> steps) {
    const FormUser user(*form, std::move(steps));
    form->ShowModal();
  }
  std::u16string Focus() { return form->Focused() ? form->Focused()->Name() : u""; }
  /// Where a control stands in the form.
  RECT Place(std::u16string_view name) {
    RECT place;
    GetWindowRect(Window(name), &place);
    MapWindowPoints(nullptr, form->window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

  std::optional<WindowBelow> below;
  std::unique_ptr<FormWindow> form;
};

}  // namespace qva::windows
