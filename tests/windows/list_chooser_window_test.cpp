// Lists on native forms, over Windows' own list view.
#include "platform/forms/form_list_chooser.h"

#include <gmock/gmock.h>

#include "platform/windows/WindowsApi.h"

#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/object.h"
#include "platform/text.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/FormWindow.h"
#include "tests/platform/forms/list_chooser_contract.h"
#include "tests/windows/gui_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;
using Texts = std::vector<std::u16string>;

/// What the user sees and does, from a thread of its own.
class Seen {
 public:
  explicit Seen(HWND shown) : window(shown), list(Child(WC_LISTVIEWW)), field(Child(L"Edit")) {}

  HWND Child(const wchar_t* window_class, const wchar_t* caption = nullptr) const {
    return FindWindowExW(window, nullptr, window_class, caption);
  }
  HWND Ok() const { return Child(L"Button", L"OK"); }
  int Count() const { return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)); }
  int Selection() const {
    return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  }
  std::u16string Text(int line, int column) const {
    wchar_t text[100] = L"";
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 100;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&item));
    return TextOf(item.pszText);
  }
  Texts Codes() const {
    Texts codes;
    for (int line = 0; line < Count(); ++line) codes.push_back(Text(line, 0));
    return codes;
  }
  /// Types and waits until so many rows are left.
  void Type(std::u16string_view text, int rows) const {
    StrikeText(text);
    EXPECT_TRUE(Becomes([&] { return Count() == rows; })) << Count() << " rows";
  }
  /// Presses a key and waits until a line is the selected one.
  void Move(WORD key, int line) const {
    StrikeKey(key);
    EXPECT_TRUE(Becomes([&] { return Selection() == line; })) << "line " << Selection();
  }

  HWND window;
  HWND list;
  HWND field;
};

/// A user who waits for the list and does something with it; in the end the window is closed.
class User {
 public:
  explicit User(std::function<void(const Seen&)> action)
      : thread_([=] {
          HWND window = nullptr;
          const bool is_there = Becomes([&] {
            window = FindWindowW(WC_DIALOG, L"Sąrašas");
            return window && IsWindowVisible(window) && GetForegroundWindow() == window;
          });
          if (!is_there) {
            ADD_FAILURE() << "no list came";
            return;
          }
          action(Seen(window));
        }) {}
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User() { thread_.join(); }

 private:
  std::thread thread_;
};

void Close(const Seen& seen) {
  PostMessageW(seen.window, WM_CLOSE, 0, 0);
}

class ListUser {
 public:
  static bool IsThere() { return HasDisplay(); }
  void Pick(std::u16string_view code) {
    Do([code = std::u16string(code)](const Seen& seen) {
      seen.Type(code, 1);
      StrikeKey(VK_RETURN);
    });
  }
  void Leave() {
    Do([](const Seen&) { StrikeKey(VK_ESCAPE); });
  }
  ListChooser& chooser() { return chooser_; }

 private:
  void Do(std::function<void(const Seen&)> action) {
    user_.reset();
    user_.emplace(std::move(action));
  }

  NativeForms forms_;
  FormListChooser chooser_{forms_};
  std::optional<User> user_;
};

}  // namespace
}  // namespace qva::windows

namespace qva {
INSTANTIATE_TYPED_TEST_SUITE_P(ListChooserWindow, ListChooserContract, windows::ListUser);
}  // namespace qva

namespace qva::windows {
namespace {

class ListChooserWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
  }

  std::optional<std::size_t> Choose(std::u16string_view selected, std::function<void(const Seen&)> action) {
    const User user(std::move(action));
    return chooser.Choose(list, selected);
  }

  NativeForms forms;
  FormListChooser chooser{forms};
  ChoiceList list{
      u"Sąrašas",
      {u"Kodas", u"Pavadinimas"},
      {{u"BALT", u"Baltų žąsys"}, {u"MEDVILNE", u"Medvilnė ir Ko"}, {u"ZUIKIS", u"Žalias zuikis"}}};
};

TEST(ListChooserWindow, GivesNothingWhereNoWindowCanBeMade) {
  if (HasDisplay()) GTEST_SKIP() << "there is a display";
  NativeForms forms;
  EXPECT_EQ(FormListChooser(forms).Choose({u"Sąrašas", {u"Kodas"}, {{u"BALT"}}}, u"BALT"), std::nullopt);
}

TEST_F(ListChooserWindowTest, ShowsTheRowsUnderTheirCaptionsWithTheMarkedOneSelected) {
  EXPECT_EQ(Choose(u"MEDVILNE",
                   [](const Seen& seen) {
                     EXPECT_THAT(seen.Codes(), ElementsAre(u"BALT", u"MEDVILNE", u"ZUIKIS"));
                     EXPECT_EQ(seen.Text(1, 1), u"Medvilnė ir Ko");
                     EXPECT_EQ(seen.Selection(), 1);
                     wchar_t caption[50];
                     LVCOLUMNW column{};
                     column.mask = LVCF_TEXT;
                     column.pszText = caption;
                     column.cchTextMax = 50;
                     SendMessageW(seen.list, LVM_GETCOLUMNW, 1, reinterpret_cast<LPARAM>(&column));
                     EXPECT_STREQ(caption, L"Pavadinimas");
                     Close(seen);
                   }),
            std::nullopt);
}

TEST_F(ListChooserWindowTest, EnterPicksTheMarkedRow) {
  EXPECT_EQ(Choose(u"MEDVILNE", [](const Seen&) { StrikeKey(VK_RETURN); }), 1u);
  EXPECT_EQ(Choose(u"nėra", [](const Seen&) { StrikeKey(VK_RETURN); }), 0u) << "the first one is selected";
}

TEST_F(ListChooserWindowTest, BringsTheMarkedRowIntoSight) {
  list.rows.clear();
  for (int i = 0; i < 5000; ++i) list.rows.push_back({NumberText(i), u"Eilutė"});
  EXPECT_EQ(Choose(u"4321",
                   [](const Seen& seen) {
                     EXPECT_EQ(seen.Selection(), 4321);
                     const auto top = static_cast<int>(SendMessageW(seen.list, LVM_GETTOPINDEX, 0, 0));
                     const auto page = static_cast<int>(SendMessageW(seen.list, LVM_GETCOUNTPERPAGE, 0, 0));
                     EXPECT_GT(page, 3);
                     EXPECT_TRUE(top <= 4321 && 4321 < top + page);
                     StrikeKey(VK_RETURN);
                   }),
            4321u);
}

TEST_F(ListChooserWindowTest, TypingLeavesTheRowsThatFitAndPicksByTheNumberInTheWholeList) {
  EXPECT_EQ(Choose(u"BALT",
                   [](const Seen& seen) {
                     seen.Type(u"ŽALI", 1);
                     EXPECT_THAT(seen.Codes(), ElementsAre(u"ZUIKIS"));
                     EXPECT_EQ(seen.Text(0, 1), u"Žalias zuikis");
                     EXPECT_EQ(seen.Selection(), 0);
                     StrikeKey(VK_RETURN);
                   }),
            2u);
}

TEST_F(ListChooserWindowTest, TheSelectedRowStaysSoWhileItFits) {
  EXPECT_EQ(Choose(u"ZUIKIS",
                   [](const Seen& seen) {
                     seen.Type(u"z", 2);
                     EXPECT_EQ(seen.Selection(), 1);
                     seen.Type(u"ąs", 1);
                     EXPECT_EQ(seen.Selection(), 0);
                     StrikeKey(VK_BACK);
                     EXPECT_TRUE(Becomes([&] { return seen.Count() == 2; }));
                     EXPECT_EQ(seen.Text(seen.Selection(), 0), u"BALT");
                     StrikeKey(VK_RETURN);
                   }),
            0u);
}

TEST_F(ListChooserWindowTest, NothingIsPickedWhereNothingFits) {
  EXPECT_EQ(Choose(u"BALT",
                   [](const Seen& seen) {
                     seen.Type(u"qq", 0);
                     EXPECT_FALSE(IsWindowEnabled(seen.Ok()));
                     StrikeKey(VK_RETURN);
                     seen.Move(VK_DOWN, -1);
                     EXPECT_TRUE(IsWindowVisible(seen.window));
                     StrikeKey(VK_BACK);
                     StrikeKey(VK_BACK);
                     EXPECT_TRUE(Becomes([&] { return seen.Count() == 3; }));
                     EXPECT_TRUE(IsWindowEnabled(seen.Ok()));
                     EXPECT_EQ(seen.Selection(), 0) << "the marked one again";
                     StrikeKey(VK_ESCAPE);
                   }),
            std::nullopt);
}

TEST_F(ListChooserWindowTest, ArrowsInTheFieldMoveInTheList) {
  EXPECT_EQ(Choose(u"BALT",
                   [](const Seen& seen) {
                     seen.Move(VK_DOWN, 1);
                     seen.Move(VK_DOWN, 2);
                     seen.Move(VK_UP, 1);
                     seen.Move(VK_NEXT, 2);
                     seen.Move(VK_PRIOR, 0);
                     seen.Move(VK_DOWN, 1);
                     StrikeKey(VK_RETURN);
                   }),
            1u);
}

TEST_F(ListChooserWindowTest, ADoubleClickPicks) {
  EXPECT_EQ(Choose(u"BALT",
                   [](const Seen& seen) {
                     RECT area{LVIR_LABEL, 0, 0, 0};
                     SendMessageW(seen.list, LVM_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&area));
                     const LPARAM place = MAKELPARAM(area.left + 5, (area.top + area.bottom) / 2);
                     for (const UINT down : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
                       PostMessageW(seen.list, down, MK_LBUTTON, place);
                       PostMessageW(seen.list, WM_LBUTTONUP, 0, place);
                     }
                   }),
            2u);
}

TEST_F(ListChooserWindowTest, AClickBelowTheRowsLeavesTheCurrentOne) {
  EXPECT_EQ(Choose(u"MEDVILNE",
                   [](const Seen& seen) {
                     for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
                       SendMessageW(seen.list, message, 0, MAKELPARAM(20, 200));
                     EXPECT_TRUE(IsWindowEnabled(seen.Ok()));
                     PostMessageW(seen.Ok(), BM_CLICK, 0, 0);
                   }),
            1u);
}

TEST_F(ListChooserWindowTest, ALetterTypedAmongTheRowsLeavesTheCurrentOne) {
  EXPECT_EQ(Choose(u"MEDVILNE",
                   [](const Seen& seen) {
                     SendMessageW(seen.list, WM_CHAR, L'z', 1);
                     PostMessageW(seen.Ok(), BM_CLICK, 0, 0);
                   }),
            1u);
}

TEST_F(ListChooserWindowTest, ALongTextIsCutWhereItsReaderHasNoRoom) {
  list.rows[0][1] = std::u16string(1000, u'x');
  Choose(u"", [](const Seen& seen) {
    EXPECT_EQ(seen.Text(0, 1), std::u16string(99, u'x'));
    Close(seen);
  });
}

TEST_F(ListChooserWindowTest, TheButtonsPickAndLeave) {
  EXPECT_EQ(Choose(u"MEDVILNE", [](const Seen& seen) { PostMessageW(seen.Ok(), BM_CLICK, 0, 0); }), 1u);
  EXPECT_EQ(Choose(u"MEDVILNE",
                   [](const Seen& seen) {
                     HWND cancel = seen.Child(L"Button", L"Atšaukti");
                     EXPECT_TRUE(cancel);
                     PostMessageW(cancel, BM_CLICK, 0, 0);
                   }),
            std::nullopt);
}

TEST_F(ListChooserWindowTest, EscapeLeaves) {
  EXPECT_EQ(Choose(u"MEDVILNE", [](const Seen&) { StrikeKey(VK_ESCAPE); }), std::nullopt);
}

TEST_F(ListChooserWindowTest, ShowsAnEmptyList) {
  list.rows.clear();
  EXPECT_EQ(Choose(u"MEDVILNE",
                   [](const Seen& seen) {
                     EXPECT_EQ(seen.Count(), 0);
                     EXPECT_FALSE(IsWindowEnabled(seen.Ok()));
                     StrikeKey(VK_RETURN);
                     StrikeKey(VK_DOWN);
                     StrikeKey(VK_ESCAPE);
                   }),
            std::nullopt);
}

TEST_F(ListChooserWindowTest, ShowsRowsThatAreShorterThanTheirColumnsAndListsWithoutColumns) {
  list.rows = {{}, {u"A"}};
  EXPECT_EQ(Choose(u"A",
                   [](const Seen& seen) {
                     EXPECT_EQ(seen.Text(0, 0), u"");
                     EXPECT_EQ(seen.Text(1, 1), u"");
                     StrikeKey(VK_RETURN);
                   }),
            1u);
  list.captions.clear();
  list.rows.clear();
  EXPECT_EQ(Choose(u"", Close), std::nullopt);
}

TEST_F(ListChooserWindowTest, FitsItsControlsAtEverySize) {
  Choose(u"", [](const Seen& seen) {
    const auto height = [&] {
      RECT area;
      GetWindowRect(seen.list, &area);
      return area.bottom - area.top;
    };
    const auto expect_inside = [&] {
      RECT inside;
      GetClientRect(seen.window, &inside);
      RECT before{};
      for (HWND control = nullptr; (control = FindWindowExW(seen.window, control, nullptr, nullptr));) {
        RECT place;
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, seen.window, reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= inside.right &&
                    place.bottom <= inside.bottom);
        EXPECT_TRUE(place.right > place.left && place.bottom > place.top);
        RECT common;
        EXPECT_FALSE(IntersectRect(&common, &place, &before));
        before = place;
      }
    };
    expect_inside();
    const LONG small = height();
    RECT whole;
    GetWindowRect(seen.window, &whole);
    SetWindowPos(seen.window, nullptr, 0, 0, whole.right - whole.left + 50, whole.bottom - whole.top + 50,
                 SWP_NOZORDER);
    EXPECT_EQ(height(), small + 50);
    expect_inside();
    SetWindowPos(seen.window, nullptr, 0, 0, 10, 10, SWP_NOZORDER);
    expect_inside();
    Close(seen);
  });
}

TEST_F(ListChooserWindowTest, GrowsWithTheScaleOfTheDisplay) {
  Choose(u"", [](const Seen& seen) {
    const PerDisplayPixels pixels;  // whoever calls this need not have the window's own
    const auto width_of = [](HWND window) {
      RECT area;
      GetWindowRect(window, &area);
      return area.right - area.left;
    };
    const auto column = [&] { return SendMessageW(seen.list, LVM_GETCOLUMNWIDTH, 0, 0); };
    const int dpi = 2 * ScaleOf(seen.window).dpi;
    const LONG button = width_of(seen.Ok());
    const LRESULT code = column();
    RECT place{0, 0, 900, 700};
    SendMessageW(seen.window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(width_of(seen.Ok()), 2 * button);
    EXPECT_EQ(column(), 2 * code);
    EXPECT_EQ(width_of(seen.window), 900);
    Close(seen);
  });
}

TEST_F(ListChooserWindowTest, TheOwnerIsDisabledMeanwhileAndInFrontAfterwards) {
  HWND owner = CreateWindowExW(0, L"STATIC", L"Savininkas", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 600,
                               nullptr, nullptr, nullptr, nullptr);
  HWND other = CreateWindowExW(0, L"STATIC", L"Kita knyga", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 300, 0, 300,
                               200, nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(owner);
  Choose(u"", [=](const Seen& seen) {
    EXPECT_EQ(GetWindow(seen.window, GW_OWNER), owner);
    RECT place;
    GetWindowRect(owner, &place);
    ExpectInTheMiddle(seen.window, place);
    EXPECT_FALSE(IsWindowEnabled(owner));
    EXPECT_FALSE(IsWindowEnabled(other));
    Close(seen);
  });
  EXPECT_TRUE(IsWindowEnabled(owner));
  EXPECT_TRUE(IsWindowEnabled(other));
  EXPECT_EQ(GetActiveWindow(), owner);
  DestroyWindow(other);
  DestroyWindow(owner);
}

TEST_F(ListChooserWindowTest, LeavesNothingBehindHoweverOftenItIsShown) {
  const long objects = Object::LiveCount();
  const auto show = [&] { EXPECT_EQ(Choose(u"MEDVILNE", [](const Seen&) { StrikeKey(VK_RETURN); }), 1u); };
  for (int i = 0; i < 5; ++i) show();  // what the system keeps for itself
  const HandleCounts before;
  for (int i = 0; i < 200; ++i) show();
  ExpectNothingKept(before, {});
  EXPECT_EQ(Object::LiveCount(), objects);
}

}  // namespace
}  // namespace qva::windows
