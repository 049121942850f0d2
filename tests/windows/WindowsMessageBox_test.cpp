#include "platform/windows/forms/WindowsMessageBox.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/forms/WindowPlace.h"
#include "tests/files.h"
#include "tests/platform/forms/message_box_contract.h"
#include "tests/temporary_environment.h"
#include "tests/windows/form_test.h"

namespace qva::windows {
namespace {

TEST(WindowsMessageBox, AnswersByTheFilesWhereNobodySits) {
  const TemporaryFolder folder;
  const auto answers = folder / L"atsakymai ąž.txt";
  const auto log = folder / L"langai ąž.txt";
  WriteFile(answers, "cancel\nNeįrašyti\n");
  TemporaryEnvironment environment;
  environment.Set("QVA_VARNHOLT_ANSWERS", answers);
  environment.Set("QVA_VARNHOLT_MESSAGE_LOG", log);
  const WindowsClock clock;
  WindowsMessageBox box(clock);

  EXPECT_EQ(box.Show(u"Tekstas", 1, u""), vbCancel);
  const std::u16string captions[] = {u"Įrašyti", u"Neįrašyti"};
  EXPECT_EQ(box.Ask(u"Ar?", u"Klausimas", captions), 2);
  const std::string content = FileContent(log);
  EXPECT_NE(content.find("answer:  2 Atšaukti"), content.npos);
  EXPECT_NE(content.find("answer:  2 Neįrašyti"), content.npos);
}

/// A user who waits for a box and does something with it.
class User {
 public:
  User(const wchar_t* title, std::function<void(HWND)> action)
      : thread_([=] {
          for (int i = 0; i < 500; ++i) {
            HWND window = FindWindowW(nullptr, title);
            // Filled and shown: the box's own thread may still be at it.
            if (window && IsWindowVisible(window)) return action(window);
            Sleep(10);
          }
          ADD_FAILURE() << "no box came";
        }) {}
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User() { thread_.join(); }

 private:
  std::thread thread_;
};

std::vector<std::wstring> TextsIn(HWND window, const wchar_t* control_class) {
  std::vector<std::wstring> texts;
  for (HWND control = nullptr; (control = FindWindowExW(window, control, control_class, nullptr));) {
    wchar_t text[200];
    texts.emplace_back(text, static_cast<std::size_t>(GetWindowTextW(control, text, std::size(text))));
  }
  return texts;
}

void Press(HWND window, const wchar_t* caption) {
  HWND button = FindWindowExW(window, nullptr, L"BUTTON", caption);
  ASSERT_TRUE(button);
  PostMessageW(button, BM_CLICK, 0, 0);
}

/// The surroundings may say that nobody sits here; the user of these tests does.
struct Attended {
  Attended() {
    for (const char* name : {"QVA_VARNHOLT_ANSWERS", "QVA_VARNHOLT_MESSAGE_LOG"})
      environment.Set(name, std::nullopt);
  }
  TemporaryEnvironment environment;
};

class BoxOnScreenTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
  }
  const Attended attended;
  WindowsClock clock;
  WindowsMessageBox box{clock};
};

/// Presses what stands in a place among a box's buttons: Windows' own boxes have no captions that are known.
class BoxUser {
 public:
  static bool IsThere() { return HasDisplay(); }
  void Press(std::u16string_view title, std::int32_t button) {
    Do(title, [button](HWND window) {
      HWND found = nullptr;
      for (std::int32_t i = 0; i < button; ++i) found = FindWindowExW(window, found, L"BUTTON", nullptr);
      EXPECT_TRUE(found);
      PostMessageW(found, BM_CLICK, 0, 0);
    });
  }
  void Close(std::u16string_view title) {
    Do(title, [](HWND window) { PostMessageW(window, WM_CLOSE, 0, 0); });
  }
  MessageBox& box() { return box_; }

 private:
  void Do(std::u16string_view title, std::function<void(HWND)> action) {
    user_.reset();
    title_ = WideText(title);
    user_.emplace(title_.c_str(), std::move(action));
  }

  const Attended attended_;
  WindowsClock clock_;
  WindowsMessageBox box_{clock_};
  std::wstring title_;
  std::optional<User> user_;
};

}  // namespace
}  // namespace qva::windows

namespace qva {
INSTANTIATE_TYPED_TEST_SUITE_P(WindowsMessageBox, MessageBoxContract, windows::BoxUser);
}  // namespace qva

namespace qva::windows {
namespace {

TEST_F(BoxOnScreenTest, HasTheCaptionsOfTheCallerAndTellsWhichWasPressed) {
  const std::u16string captions[] = {u"Įrašyti", u"A & B", u"Atšaukti"};
  for (const int expected : {1, 2, 3}) {
    const User user(L"Klausimas", [&](HWND window) {
      EXPECT_EQ(TextsIn(window, L"BUTTON"), (std::vector<std::wstring>{L"Įrašyti", L"A && B", L"Atšaukti"}));
      EXPECT_EQ(TextsIn(window, L"STATIC"), (std::vector<std::wstring>{L"Ar įrašyti & baigti?"}));
      const wchar_t* const names[] = {L"Įrašyti", L"A && B", L"Atšaukti"};
      Press(window, names[expected - 1]);
    });
    EXPECT_EQ(box.Ask(u"Ar įrašyti & baigti?", u"Klausimas", captions), expected);
  }
}

TEST_F(BoxOnScreenTest, FitsItsTextAndButtonsIntoItsWindow) {
  const std::u16string captions[] = {u"Gerai", u"Labai ilgas užrašas ant mygtuko", u"Ne"};
  const User user(L"Klausimas", [&](HWND window) {
    RECT inside;
    GetClientRect(window, &inside);
    RECT before{};
    for (HWND control = nullptr; (control = FindWindowExW(window, control, nullptr, nullptr));) {
      RECT place;
      GetWindowRect(control, &place);
      MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
      EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= inside.right &&
                  place.bottom <= inside.bottom);
      EXPECT_TRUE(place.right > place.left && place.bottom > place.top);
      RECT common;
      EXPECT_FALSE(IntersectRect(&common, &place, &before));
      before = place;
    }
    PostMessageW(window, WM_CLOSE, 0, 0);
  });
  const std::u16string text =
      std::u16string(400, u'ž') + u"\r\nantra eilutė " + std::u16string(30, u' ') + u"pabaiga";
  EXPECT_EQ(box.Ask(text, u"Klausimas", captions), 3) << "closing presses the last button";
}

TEST_F(BoxOnScreenTest, ShowsWindowsOwnButtonsAndTheDefaultTitle) {
  {
    const User user(L"QVA_Varnholt", [](HWND window) { PostMessageW(window, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(box.Show(u"Tekstas", 1, u""), vbCancel);
  }
  const User user(L"Klaida", [](HWND window) { PostMessageW(window, WM_COMMAND, IDOK, 0); });
  EXPECT_EQ(box.Show(u"Tekstas", vbCritical, u"Klaida"), vbOK);
}

TEST_F(BoxOnScreenTest, DisablesEveryWindowOfTheThreadUntilItGoes) {
  WindowBelow second;
  WindowBelow disabled;
  EnableWindow(disabled.window, FALSE);
  WindowBelow owner;
  std::vector<bool> was_shown;  // the box, when the second window is enabled again
  second.on_enable = [&](bool enabled) {
    HWND below = FindWindowW(nullptr, L"Klausimas");
    if (enabled) was_shown.push_back(below && IsWindowVisible(below));
  };
  const auto look = [&](HWND window) {
    EXPECT_EQ(GetWindow(window, GW_OWNER), owner.window);
    ExpectInTheMiddle(window, WorkArea(owner.window));
    EXPECT_FALSE(IsWindowEnabled(owner.window));
    EXPECT_FALSE(IsWindowEnabled(second.window));
    EXPECT_TRUE(IsWindowEnabled(window));
  };
  const auto expect_as_before = [&] {
    EXPECT_TRUE(IsWindowEnabled(owner.window));
    EXPECT_TRUE(IsWindowEnabled(second.window));
    EXPECT_FALSE(IsWindowEnabled(disabled.window));
    EXPECT_EQ(GetActiveWindow(), owner.window);
  };
  const std::u16string captions[] = {u"Taip", u"Ne"};
  for (const wchar_t* const caption : {L"Taip", L"Ne"}) {
    const User user(L"Klausimas", [&](HWND window) {
      look(window);
      Press(window, caption);
    });
    box.Ask(u"Ar?", u"Klausimas", captions);
    expect_as_before();
  }
  {
    const User user(L"Klausimas", [&](HWND window) {
      look(window);
      PostMessageW(window, WM_CLOSE, 0, 0);
    });
    box.Ask(u"Ar?", u"Klausimas", captions);
    expect_as_before();
  }
  EXPECT_EQ(was_shown, (std::vector<bool>{true, true, true}));
  const User user(L"Klausimas", [&](HWND window) {
    look(window);
    PostMessageW(window, WM_COMMAND, IDOK, 0);
  });
  box.Show(u"Tekstas", vbCritical, u"Klausimas");
  expect_as_before();
}

TEST_F(BoxOnScreenTest, LeavesNoGraphicsObjectBehind) {
  const std::u16string captions[] = {u"Gerai"};
  const auto show = [&] {
    const User user(L"Klausimas", [&](HWND window) { Press(window, L"Gerai"); });
    EXPECT_EQ(box.Ask(u"Tekstas", u"Klausimas", captions), 1);
  };
  for (int i = 0; i < 3; ++i) show();  // what the system keeps for itself
  const HandleCounts before;
  for (int i = 0; i < 20; ++i) show();
  EXPECT_LT(HandleCounts().graphics_handles, before.graphics_handles + 10);
}

}  // namespace
}  // namespace qva::windows
