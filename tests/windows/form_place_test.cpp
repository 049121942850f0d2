#include "platform/windows/forms/WindowPlace.h"
#include "tests/windows/gui_test.h"

namespace qva::windows {
namespace {

class FormPlace : public testing::Test {
 protected:
  /// A window without a frame, which Windows and window managers leave as it is.
  class Plain {
   public:
    Plain(int left, int top, int width, int height, DWORD style = WS_VISIBLE)
        : handle(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | style, left, top, width, height,
                                 nullptr, nullptr, nullptr, nullptr)) {}
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;
    ~Plain() { DestroyWindow(handle); }
    HWND handle;
  };

  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
    work = WorkArea(nullptr);
  }
  void ExpectAt(LONG left, LONG top, SIZE size) const {
    RECT place;
    GetWindowRect(window.handle, &place);
    EXPECT_EQ(place.left, left);
    EXPECT_EQ(place.top, top);
    EXPECT_EQ(place.right, left + size.cx);
    EXPECT_EQ(place.bottom, top + size.cy);
  }
  void ExpectInTheMiddleOfTheDisplay(SIZE size) const {
    ExpectAt((work.left + work.right - size.cx) / 2, (work.top + work.bottom - size.cy) / 2, size);
  }

  static constexpr SIZE kSize{120, 60};
  Plain window{0, 0, 10, 10, 0};
  RECT work{};
};

TEST_F(FormPlace, IsTheMiddleOfTheOwner) {
  const Plain owner(work.left + 100, work.top + 150, 400, 300);
  PlaceAbove(owner.handle, window.handle, kSize);
  ExpectAt(work.left + 240, work.top + 270, kSize);
}

TEST_F(FormPlace, IsOnTheDisplayWhereTheOwnersMiddleIsNot) {
  const Plain lower_right(work.right - 20, work.bottom - 10, 400, 300);
  PlaceAbove(lower_right.handle, window.handle, kSize);
  ExpectAt(work.right - kSize.cx, work.bottom - kSize.cy, kSize);
  const Plain upper_left(work.left - 380, work.top - 290, 400, 300);
  PlaceAbove(upper_left.handle, window.handle, kSize);
  ExpectAt(work.left, work.top, kSize);
}

TEST_F(FormPlace, IsTheMiddleOfTheDisplayWhereNoOwnerIsSeen) {
  const Plain hidden(work.left, work.top, 200, 100, 0);
  const Plain minimized(work.left, work.top, 200, 100, WS_VISIBLE | WS_MINIMIZE);
  for (HWND owner : {HWND{}, hidden.handle, minimized.handle}) {
    PlaceAbove(owner, window.handle, kSize);
    ExpectInTheMiddleOfTheDisplay(kSize);
  }
}

TEST_F(FormPlace, BeginsAtTheUpperLeftWhereTheDisplayIsTooSmall) {
  const SIZE large{work.right - work.left + 50, work.bottom - work.top + 30};
  PlaceOnDisplayOf(nullptr, window.handle, large);
  ExpectAt(work.left, work.top, large);
}

TEST_F(FormPlace, OfAMessageBoxIsTheMiddleOfItsOwnersDisplay) {
  const Plain owner(work.left + 100, work.top + 150, 400, 300);
  PlaceOnDisplayOf(owner.handle, window.handle, kSize);
  ExpectInTheMiddleOfTheDisplay(kSize);
}

}  // namespace
}  // namespace qva::windows
