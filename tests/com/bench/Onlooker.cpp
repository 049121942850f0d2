#include "tests/com/bench/Onlooker.h"

#include <iterator>
#include <string_view>
#include <utility>

#include "platform/automation.h"
#include "platform/number.h"
#include "platform/text.h"
#include "platform/windows/WideText.h"
#include "tests/raised_error.h"

namespace qva::bench {
namespace {

constexpr UINT kPeriod = 10;  // milliseconds

/// The window's class and text.
std::u16string Described(HWND window) {
  wchar_t text[300] = L"";
  GetClassNameW(window, text, static_cast<int>(std::size(text)));
  std::u16string result = windows::TextOf(text);
  text[0] = L'\0';
  SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
  return result + u" " + windows::TextOf(text);
}

std::u16string Line(std::u16string_view name, const RECT& place) {
  return std::u16string(name) + u" x=" + NumberText(place.left) + u" y=" + NumberText(place.top) +
         u" width=" + NumberText(place.right - place.left) + u" height=" +
         NumberText(place.bottom - place.top) + u"\n";
}

RECT FrameOf(HWND window) {
  RECT frame{};
  GetWindowRect(window, &frame);
  return frame;
}

std::u16string Places(HWND window) {
  RECT inside{};
  GetClientRect(window, &inside);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
  return Line(u"frame", FrameOf(window)) + Line(u"inside", inside);
}

BOOL CALLBACK DescribeChild(HWND window, LPARAM result) {
  if (IsWindowVisible(window)) *reinterpret_cast<std::u16string*>(result) += Described(window) + u"\n";
  return TRUE;
}

}  // namespace

Onlooker& TheOnlooker() {
  static Onlooker& onlooker = *new Onlooker;
  return onlooker;
}

void Onlooker::Watch(std::u16string file, std::u16string scene) {
  file_ = std::move(file);
  scene_ = u"scene " + scene + u"\n";
  told_.clear();
  if (!file_.empty()) Tell(scene_);
  SetClock();
}

void Onlooker::CloseWindows(bool on) {
  closes_ = on;
  SetClock();
}

void Onlooker::EditMeanwhile(ObjectPtr object) {
  edited_meanwhile_ = std::move(object);
  error_meanwhile_ = -1;
  SetClock();
}

void Onlooker::EditNow() {
  const ObjectPtr object = std::exchange(edited_meanwhile_, nullptr);
  error_meanwhile_ = RaisedBy([&] { Call(object, u"Edit"); });
}

void Onlooker::SetClock() {
  if (clock_) KillTimer(nullptr, clock_);
  clock_ =
      closes_ || edited_meanwhile_ || !file_.empty() ? SetTimer(nullptr, 0, kPeriod, &Onlooker::Look) : 0;
}

void CALLBACK Onlooker::Look(HWND, UINT, UINT_PTR, DWORD) {
  Onlooker& onlooker = TheOnlooker();
  HWND window = GetActiveWindow();
  const bool is_there = window && IsWindowVisible(window);
  HWND focus = GetFocus();
  if (is_there && onlooker.edited_meanwhile_) onlooker.EditNow();
  if (onlooker.closes_ && is_there && focus) PostMessageW(focus, WM_KEYDOWN, VK_ESCAPE, 1);
  GUITHREADINFO thread{};
  thread.cbSize = sizeof thread;
  const bool is_moving =
      GetGUIThreadInfo(GetCurrentThreadId(), &thread) && (thread.flags & GUI_INMOVESIZE) != 0;
  if (onlooker.file_.empty() || is_moving) return;
  std::u16string seen = onlooker.scene_;
  if (is_there) {
    wchar_t title[300] = L"";
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    seen += u"window " + windows::TextOf(title) + u"\n" + Places(window);
    if (focus) seen += u"focus " + Described(focus) + u"\n" + Line(u"field", FrameOf(focus));
    EnumChildWindows(window, &DescribeChild, reinterpret_cast<LPARAM>(&seen));
  }
  if (seen != onlooker.told_) onlooker.Tell(seen);
}

void Onlooker::Tell(const std::u16string& seen) {
  HANDLE file =
      CreateFileW(windows::WideText(file_).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const std::string text = ToUtf8(seen);
  DWORD written = 0;
  WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  CloseHandle(file);
  told_ = seen;
}

}  // namespace qva::bench
