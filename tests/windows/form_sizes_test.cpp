// The sizes of native forms, at every scale, and where their controls stand.
#include "tests/windows/form_test.h"

#include <commctrl.h>

#include "period/frmReportPeriod.h"
#include "platform/windows/forms/Font.h"

namespace qva::windows {
namespace {

class FormSizes : public FormTest {};

TEST_F(FormSizes, FollowsItsSizeFromWhenTheResizerStarts) {
  EXPECT_EQ(form->Width(), 500);
  EXPECT_EQ(form->Height(), 300);
  const auto places = [&](std::u16string_view name) {
    const RECT place = Place(name);
    return std::vector<LONG>{place.left, place.top, place.right, place.bottom};
  };
  std::vector<std::pair<std::u16string, std::vector<LONG>>> moves = {
      {u"STab", {0, 0, 100, 60}},    {u"txtYear", {0, 0, 0, 0}},   {u"Frame1", {100, 0, 100, 0}},
      {u"optA", {100, 0, 100, 0}},   {u"Text1", {0, 0, 100, 0}},   {u"SpecGrid", {0, 0, 100, 60}},
      {u"btDelete", {0, 60, 0, 60}}, {u"btOk", {100, 60, 100, 60}}};
  Resize(520, 320);
  EXPECT_EQ(places(u"STab"), (std::vector<LONG>{8, 8, 492, 248})) << "it is not started yet";
  Resize(500, 300);
  std::vector<std::vector<LONG>> before;
  for (const auto& move : moves) before.push_back(places(move.first));

  form->StartResizer(form->Width(), form->Height(), [](std::u16string_view name) {
    return name == u"Frame1"  ? std::optional(ui::ResizeMode::MoveWithWidth)
           : name == u"Text1" ? std::optional(ui::ResizeMode::StretchWithWidth)
                              : std::nullopt;
  });
  Resize(600, 360);
  EXPECT_EQ(form->Width(), 600);
  for (std::size_t i = 0; i < moves.size(); ++i) {
    std::vector<LONG> expected = before[i];
    for (std::size_t edge = 0; edge < 4; ++edge) expected[edge] += moves[i].second[edge];
    EXPECT_EQ(places(moves[i].first), expected) << ToUtf8(moves[i].first);
  }
}

TEST_F(FormSizes, ControlsOfAPeriodDialogThatGrowsDoNotCoverEachOther) {
  Make(ReportPeriodLayout());
  form->StartResizer(form->Width(), form->Height(), [](std::u16string_view name) {
    return name == u"Frame2"  ? std::optional(ui::ResizeMode::MoveWithWidth)
           : name == u"Text1" ? std::optional(ui::ResizeMode::StretchWithWidth)
                              : std::nullopt;
  });
  Resize(840, 600);
  const auto& controls = form->description().controls;
  for (const ui::ControlDescription& one : controls) {
    for (const ui::ControlDescription& other : controls) {
      if (&one == &other || one.parent != other.parent || one.page != other.page) continue;
      const RECT place = Place(one.name), other_place = Place(other.name);
      RECT common;
      EXPECT_FALSE(IntersectRect(&common, &place, &other_place))
          << ToUtf8(one.name) << " and " << ToUtf8(other.name);
    }
  }
  EXPECT_EQ(Place(u"btSpecDelete").top - Place(u"SpecGrid").bottom, 10) << "as it was before";
}

TEST_F(FormSizes, IsNoSmallerThanDescribed) {
  MakeHere(FormWithAllKinds());
  EXPECT_EQ(form->Width(), 500);
  Resize(100, 100);
  EXPECT_EQ(form->Width(), 500);
  EXPECT_EQ(form->Height(), 300);
}

TEST_F(FormSizes, FollowsTheScaleOfItsDisplay) {
  LOGFONTW font{};
  const auto font_height = [&] {
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(Window(u"txtYear"), WM_GETFONT, 0, 0)), sizeof font,
               &font);
    return font.lfHeight;
  };
  const LONG before = font_height();
  ChangeScale(144);
  RECT inner;
  GetClientRect(form->window(), &inner);
  EXPECT_NEAR(inner.right, 750, 5) << "the frame is still that of the real display";
  EXPECT_NEAR(form->Width(), 500, 3) << "told at 100 %";
  const RECT place = Place(u"btOk");
  EXPECT_EQ(place.left, 462);
  EXPECT_EQ(place.bottom - place.top, 42);
  EXPECT_EQ(font_height(), MulDiv(before, 144, 96));
}

TEST_F(FormSizes, ThatCannotBeResizedHasItsOwnSizeOnEveryDisplay) {
  ui::FormDescription description = FormWithAllKinds();
  description.resizable = false;
  Make(description);
  const RECT suggested{70, 80, 70 + 333, 80 + 222};
  SendMessageW(form->window(), WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&suggested));
  RECT outer, inner;
  GetWindowRect(form->window(), &outer);
  GetClientRect(form->window(), &inner);
  EXPECT_EQ(outer.left, suggested.left);
  EXPECT_EQ(outer.top, suggested.top);
  EXPECT_NEAR(inner.right, 750, 8) << "the frame is still that of the real display";
  EXPECT_NEAR(inner.bottom, 450, 16);
}

// Windows writes at the upper edge of a field.
TEST_F(FormSizes, FieldsAreAsHighAsTheirTextInTheMiddleOfTheirPlaces) {
  for (const int dpi : {96, 144, 192}) {
    ChangeScale(dpi);
    for (const auto& [name, top] : {std::pair(u"txtYear", 66), std::pair(u"edDate", 126)}) {
      const RECT place = Place(name);
      HWND window = Window(name);
      const int text = TextHeight(window, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
      EXPECT_NEAR(place.bottom - place.top, text, 8) << dpi;
      const int parent_top = Place(u"STab").top;
      EXPECT_NEAR((place.top + place.bottom) / 2, parent_top + MulDiv(2 * top + 23, dpi, 2 * 96), 1) << dpi;
    }
  }
}

/// The thread's way with scales, by the numbers of DPI_AWARENESS_CONTEXT; the headers for the oldest Windows
/// that is supported do not know it.
HANDLE SetScales(HANDLE context) {
  using Function = HANDLE WINAPI(HANDLE);
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetThreadDpiAwarenessContext")))(context);
}
int Awareness(HANDLE context) {
  using Function = int WINAPI(HANDLE);
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetAwarenessFromDpiAwarenessContext")))(context);
}

/// As a host that does not tell displays apart calls the library.
class WithoutScales {
 public:
  WithoutScales() : before_(SetScales(kUnaware)) {}
  WithoutScales(const WithoutScales&) = delete;
  WithoutScales& operator=(const WithoutScales&) = delete;
  ~WithoutScales() { SetScales(before_); }

  static int ThreadAwareness() {
    HANDLE context = SetScales(kUnaware);
    SetScales(context);
    return Awareness(context);
  }

 private:
  static inline const HANDLE kUnaware = reinterpret_cast<HANDLE>(-1);
  HANDLE before_;
};

TEST_F(FormSizes, MeasuresItsOwnPixelsForAHostWithoutScales) {
  MakeHere(FormWithAllKinds());
  if (form->scale().dpi == 96) GTEST_SKIP() << "at 100 % all pixels are the same";
  const RECT place = Place(u"btOk");
  HWND grid = Window(u"SpecGrid");
  {
    const WithoutScales host;
    EXPECT_EQ(form->Width(), 500);
    EXPECT_EQ(form->Height(), 300);
    form->StartResizer(form->Width(), form->Height(), {});
    Get<ui::Grid>(u"SpecGrid").SetColumns({{.name = u"Code", .caption = u"Kodas", .width = 90}});
  }
  const RECT now = Place(u"btOk");
  EXPECT_TRUE(EqualRect(&place, &now)) << "nothing has been resized yet";
  RECT inside, header;
  GetClientRect(grid, &inside);
  GetClientRect(FindWindowExW(grid, nullptr, WC_HEADERW, nullptr), &header);
  EXPECT_EQ(header.right, inside.right);
}

TEST_F(FormSizes, RunsItsHandlersWithItsOwnPixelsForAHostWithoutScales) {
  constexpr int kUnaware = 0, kPerMonitor = 2;
  int awareness = -1;
  Get<ui::Button>(u"btOk").on_click = [&] { awareness = WithoutScales::ThreadAwareness(); };
  const WithoutScales host;
  Show({[] { PressKey(VK_RETURN); }});
  EXPECT_EQ(awareness, kPerMonitor);
  EXPECT_EQ(WithoutScales::ThreadAwareness(), kUnaware) << "the host's own is as it was";
}

TEST_F(FormSizes, ShowsEveryCaptionOfThePeriodDialogWhole) {
  Make(ReportPeriodLayout());
  for (const int dpi : {96, 120, 144, 192}) {
    ChangeScale(dpi);
    for (const ui::ControlDescription& control : form->description().controls) {
      if (control.caption.empty()) continue;
      HWND window = Window(control.name);
      HDC context = GetDC(window);
      HGDIOBJ before = SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
      SIZE size;
      GetTextExtentPoint32W(context, Wide(control.caption.data()), static_cast<int>(control.caption.size()),
                            &size);
      SelectObject(context, before);
      ReleaseDC(window, context);
      RECT inner;
      GetClientRect(window, &inner);
      // What stands beside the caption: an option's mark, a button's or a frame's edge.
      const int beside = control.kind == ui::ControlKind::Label ? 0 : MulDiv(20, dpi, 96);
      EXPECT_LE(size.cx + beside, inner.right) << ToUtf8(control.name) << " at " << dpi;
      EXPECT_LE(size.cy, inner.bottom) << ToUtf8(control.name) << " at " << dpi;
    }
  }
}

}  // namespace
}  // namespace qva::windows
