// The controls of native forms: what they show, and when they raise their events.
#include "platform/windows/DeviceContext.h"
#include "tests/windows/form_test.h"

#include <commctrl.h>

#include "tests/raised_error.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;

class FormControls : public FormTest {
 protected:
  /// A handler that counts.
  std::function<void()> Counting() {
    return [this] { ++events; };
  }
  int events = 0;
};

TEST_F(FormControls, ShowCaptionsAsGiven) {
  EXPECT_EQ(Get<ui::Label>(u"Label1").Caption(), u"Metai  &  kiti : ");
  EXPECT_TRUE(GetWindowLongPtrW(Window(u"Label1"), GWL_STYLE) & SS_NOPREFIX);
  EXPECT_EQ(TextOfWindow(Window(u"optA")), u"A && B") << "a single ampersand would be a line";
  EXPECT_EQ(TextOfWindow(Window(u"optB")), u"I  pusmečio");
  EXPECT_EQ(TextOfWindow(Window(u"Frame1")), u" Rūšis ");
  EXPECT_EQ(TextOfWindow(Window(u"btDelete")), u"DelRec");
  EXPECT_EQ(TextOfWindow(Window(u"Text1")), u"Pastaba");
  EXPECT_EQ(TextOfWindow(form->window()), u"Bandymas");
  Get<ui::Label>(u"Label1").SetCaption(u"Kita & nauja");
  EXPECT_EQ(TextOfWindow(Window(u"Label1")), u"Kita & nauja");
}

TEST_F(FormControls, TextBoxTellsOnlyOfAnotherText) {
  auto& box = Get<ui::TextBox>(u"txtYear");
  box.on_change = Counting();
  box.SetText(u"2024");
  EXPECT_EQ(events, 1);
  box.SetText(u"2024");
  EXPECT_EQ(events, 1);
  box.SetText(u"");
  EXPECT_EQ(events, 2);
}

TEST_F(FormControls, TextBoxTellsOfEachCharacterTyped) {
  auto& box = Get<ui::TextBox>(u"txtYear");
  std::vector<std::u16string> texts;
  box.on_change = [&] { texts.push_back(box.Text()); };
  box.SetMaxLength(2);
  box.SetFocus();
  Show({[] { TypeText(u"19x"); }, [] { PressKey(VK_BACK); }, [] { TypeText(u"\b\b"); }});
  EXPECT_THAT(texts, ElementsAre(u"1", u"19", u"1", u""));
}

TEST_F(FormControls, TextBoxCutsWhatIsTooLong) {
  auto& box = Get<ui::TextBox>(u"txtYear");
  box.SetText(u"123456");
  box.SetMaxLength(4);
  EXPECT_EQ(box.Text(), u"123456") << "what stands there stays";
  box.SetText(u"abcdef");
  EXPECT_EQ(box.Text(), u"abcd");
  box.SetMaxLength(0);
  box.SetText(u"abcdef");
  EXPECT_EQ(box.Text(), u"abcdef");
}

TEST_F(FormControls, TextBoxThatIsReadOnlyTakesNothing) {
  Make(FormWithANote(u"txtYear"));
  auto& box = Get<ui::TextBox>(u"txtYear");
  box.SetFocus();
  Show({[] { TypeText(u"7"); }});
  EXPECT_EQ(box.Text(), u"");
}

TEST_F(FormControls, TextBoxThatIsReadOnlyLooksLikeTextOnItsPage) {
  const auto edge = [this] {
    RECT outer, inner;
    GetWindowRect(Window(u"Text1"), &outer);
    GetClientRect(Window(u"Text1"), &inner);
    return outer.right - outer.left - inner.right;
  };
  const auto background_of = [this](std::u16string_view name) {
    const WindowContext context(Window(name));
    SendMessageW(form->window(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context.get()),
                 reinterpret_cast<LPARAM>(Window(name)));
    return GetBkColor(context.get());
  };
  EXPECT_GT(edge(), 0);
  EXPECT_NE(background_of(u"Text1"), background_of(u"Label1"));
  Make(FormWithANote(u"Text1"));
  EXPECT_EQ(edge(), 0);
  EXPECT_EQ(background_of(u"Text1"), background_of(u"Label1"));
}

TEST_F(FormControls, LabelShowsEachLineOfItsCaption) {
  ui::FormDescription description = FormWithAllKinds();
  ui::ControlDescription& label =
      *std::ranges::find(description.controls, u"Label1", &ui::ControlDescription::name);
  label.caption = u"Metai\nMetai";
  label.bounds.height = 40;
  Make(description);
  const auto ink = [this](LONG from, LONG to) {
    const WindowContext context(Window(u"Label1"));
    RECT area;
    GetClientRect(Window(u"Label1"), &area);
    const COLORREF ground = GetPixel(context.get(), area.right - 1, area.bottom - 1);
    int count = 0;
    for (LONG y = from; y < to; ++y) {
      for (LONG x = 0; x < area.right; ++x) count += GetPixel(context.get(), x, y) != ground;
    }
    return count;
  };
  Show({[&] { UpdateWindow(Window(u"Label1")); },
        [&] {
          const WindowContext context(Window(u"Label1"));
          const int line = TextHeight(
              Window(u"Label1"), reinterpret_cast<HFONT>(SendMessageW(Window(u"Label1"), WM_GETFONT, 0, 0)));
          EXPECT_GT(ink(0, line), 20);
          EXPECT_EQ(ink(line, 2 * line), ink(0, line));
        }});
}

TEST_F(FormControls, OptionClearsTheOthersAndTellsOnce) {
  auto& a = Get<ui::OptionButton>(u"optA");
  auto& b = Get<ui::OptionButton>(u"optB");
  a.on_click = Counting();
  a.Select();
  a.Select();
  EXPECT_EQ(events, 1);
  b.Select();
  EXPECT_FALSE(a.Selected());
  EXPECT_TRUE(b.Selected());
  Show({[&] { SendMessageW(Window(u"optA"), BM_CLICK, 0, 0); },
        [&] { SendMessageW(Window(u"optA"), BM_CLICK, 0, 0); }});
  EXPECT_TRUE(a.Selected());
  EXPECT_FALSE(b.Selected());
  EXPECT_EQ(events, 2) << "clicking the selected one tells nothing";
}

TEST_F(FormControls, ComboBoxShowsCodeAndTextAndAnswersTheCode) {
  auto& combo = Get<ui::ComboBox>(u"cbPlan");
  combo.SetValue(u"BIUDZ");
  combo.SetItems({{u"PAGR", u"Pagrindinis"}, {u"BIUDZ", u"Biudžetas & kt."}});
  EXPECT_EQ(combo.Value(), u"BIUDZ") << "the code stays when the list comes";
  EXPECT_EQ(TextOfWindow(Window(u"cbPlan")), u"BIUDZ – Biudžetas & kt.");
  combo.SetFocus();
  Show({[&] { EXPECT_EQ(Focus(), u"cbPlan"); }, [] { PressKey(VK_UP); },
        [&] { EXPECT_EQ(combo.Value(), u"PAGR"); }});
}

TEST_F(FormControls, ComboBoxTakesACodeThatIsNoItems) {
  auto& combo = Get<ui::ComboBox>(u"cbPlan");
  combo.SetItems({{u"PAGR", u"Pagrindinis"}});
  combo.SetValue(u"KITAS");
  EXPECT_EQ(combo.Value(), u"KITAS");
  EXPECT_EQ(TextOfWindow(Window(u"cbPlan")), u"KITAS");
  combo.SetValue(u"");
  EXPECT_EQ(combo.Value(), u"");
}

TEST_F(FormControls, ComboBoxCompletesATypedCodeWhenItIsLeft) {
  auto& combo = Get<ui::ComboBox>(u"cbPlan");
  combo.SetItems({{u"PAGR", u"Pagrindinis"}});
  combo.SetFocus();
  Show({[] { TypeText(u"PAGR"); }, [&] { EXPECT_EQ(combo.Value(), u"PAGR"); }, [] { PressKey(VK_TAB); },
        [&] { EXPECT_EQ(TextOfWindow(Window(u"cbPlan")), u"PAGR – Pagrindinis"); }});
  EXPECT_EQ(combo.Value(), u"PAGR");
}

TEST_F(FormControls, ComboBoxClosesItsListByEnterAndEscapeWithoutTheForm) {
  auto& combo = Get<ui::ComboBox>(u"cbPlan");
  combo.SetItems({{u"PAGR", u"Pagrindinis"}, {u"BIUDZ", u"Biudžetas"}});
  combo.SetFocus();
  const auto is_open = [&] { return SendMessageW(Window(u"cbPlan"), CB_GETDROPPEDSTATE, 0, 0) != 0; };
  for (const WORD key : {VK_RETURN, VK_ESCAPE}) {
    Show({[&] { SendMessageW(Window(u"cbPlan"), CB_SHOWDROPDOWN, TRUE, 0); }, [&] { EXPECT_TRUE(is_open()); },
          [key] { PressKey(key); }, [&] { EXPECT_FALSE(is_open()); }});
  }
}

TEST_F(FormControls, DatePickerTellsOnlyOfAnotherDay) {
  auto& picker = Get<ui::DatePicker>(u"edDate");
  picker.on_change = Counting();
  picker.SetValue(DateFromParts(2024, 2, 29));
  EXPECT_EQ(events, 1);
  picker.SetValue({DateFromParts(2024, 2, 29).serial + 0.5});
  EXPECT_EQ(events, 1) << "the time of the day does not count";
  EXPECT_EQ(picker.Value(), DateFromParts(2024, 2, 29));
  SYSTEMTIME shown{};
  SendMessageW(Window(u"edDate"), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&shown));
  EXPECT_EQ(shown.wYear * 10000 + shown.wMonth * 100 + shown.wDay, 20240229);
}

TEST_F(FormControls, DatePickerTellsOnceWhatTheUserChanges) {
  auto& picker = Get<ui::DatePicker>(u"edDate");
  picker.SetFormat(u"yyyy.MM");
  picker.SetValue(DateFromParts(2024, 6, 1));
  picker.on_change = Counting();
  picker.SetFocus();
  const LPARAM year = MAKELPARAM(8, 8);
  Show({[&] { PostMessageW(Window(u"edDate"), WM_LBUTTONDOWN, MK_LBUTTON, year); },
        [&] { PostMessageW(Window(u"edDate"), WM_LBUTTONUP, 0, year); }, [] { PressKey(VK_UP); }});
  EXPECT_EQ(events, 1);
  EXPECT_EQ(picker.Value(), DateFromParts(2025, 6, 1));
  EXPECT_EQ(TextOfWindow(Window(u"edDate")), u"2025.06");
}

TEST_F(FormControls, DatePickerWithTheFocusHasACalendarInItsOwnFontAtEveryScale) {
  form->Find(u"edDate")->SetFocus();
  const auto font = [&](UINT question) { return SendMessageW(Window(u"edDate"), question, 0, 0); };
  Show({[&] { EXPECT_EQ(font(DTM_GETMCFONT), font(WM_GETFONT)); }, [&] { ChangeScale(144); },
        [&] {
          EXPECT_EQ(font(DTM_GETMCFONT), font(WM_GETFONT)) << "the font before is gone";
          form->Find(u"txtYear")->SetFocus();
        },
        [&] { ChangeScale(120); },
        [&] { EXPECT_EQ(font(DTM_GETMCFONT), font(WM_GETFONT)) << "a calendar that was down may stay"; }});
}

TEST_F(FormControls, DatesThatNoPickerShowsAreRefused) {
  auto& picker = Get<ui::DatePicker>(u"edDate");
  const auto refusal = [](auto& control, Date date) { return RaisedBy([&] { control.SetValue(date); }); };
  const Date before = picker.Value();
  EXPECT_EQ(refusal(picker, DateFromParts(1752, 12, 31)), kInvalidPropertyValue);
  EXPECT_EQ(refusal(picker, {5e6}), kInvalidPropertyValue);
  EXPECT_EQ(picker.Value(), before);
  EXPECT_EQ(refusal(picker, DateFromParts(1753, 1, 1)), 0);
  EXPECT_EQ(picker.Value(), DateFromParts(1753, 1, 1));
  EXPECT_EQ(refusal(picker, DateFromParts(9999, 12, 31)), 0);
  Make(FormWithMonth());
  EXPECT_EQ(refusal(Get<ui::MonthView>(u"MonthView1"), DateFromParts(1752, 12, 31)), kInvalidPropertyValue);
}

class MonthOnForm : public FormControls {
 protected:
  void SetUp() override {
    FormControls::SetUp();
    if (IsSkipped()) return;
    MakeHere(FormWithMonth());
    month = &Get<ui::MonthView>(u"MonthView1");
    month->SetValue(DateFromParts(2024, 6, 12));
    month->SetFocus();
  }
  /// Where a day of the shown month is.
  LPARAM PlaceOf(int day) {
    const SIZE size = *dynamic_cast<NativeControl&>(*month).NaturalSize();
    for (int y = 0; y < size.cy; y += 3) {
      for (int x = 0; x < size.cx; x += 3) {
        MCHITTESTINFO hit{};
        hit.cbSize = MCHITTESTINFO_V1_SIZE;
        hit.pt = {x, y};
        SendMessageW(Window(u"MonthView1"), MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
        if (hit.uHit == MCHT_CALENDARDATE && hit.st.wDay == day) return MAKELPARAM(x + 1, y + 1);
      }
    }
    ADD_FAILURE() << "no day " << day;
    return 0;
  }
  /// Clicks that follow one another at once, however slow the machine is.
  std::function<void()> Clicking(int day, int times = 1) {
    return [this, day, times] {
      const LPARAM place = PlaceOf(day);
      for (int i = 0; i < times; ++i) {
        PostMessageW(Window(u"MonthView1"), WM_LBUTTONDOWN, MK_LBUTTON, place);
        PostMessageW(Window(u"MonthView1"), WM_LBUTTONUP, 0, place);
      }
    };
  }
  ui::MonthView* month = nullptr;
};

TEST_F(MonthOnForm, HasItsNaturalSizeWithinTheForm) {
  RECT least{};
  SendMessageW(Window(u"MonthView1"), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least));
  const RECT place = Place(u"MonthView1");
  RECT inner;
  GetClientRect(form->window(), &inner);
  EXPECT_GE(place.right - place.left, least.right);
  EXPECT_EQ(place.bottom - place.top, least.bottom);
  EXPECT_EQ(inner.right - place.right, place.left) << "the same margin on both sides";
}

TEST_F(MonthOnForm, TellsOfADoubleClickWhenItsDayIsTheValue) {
  std::vector<Date> picked;
  month->on_day_double_click = [&] { picked.push_back(month->Value()); };
  Show({Clicking(20, 2)});
  EXPECT_THAT(picked, ElementsAre(DateFromParts(2024, 6, 20)));
}

TEST_F(MonthOnForm, SingleClicksOnlyChooseTheDay) {
  month->on_day_double_click = Counting();
  Show({Clicking(20), Clicking(21), Clicking(20),
        [&] { EXPECT_EQ(month->Value(), DateFromParts(2024, 6, 20)); }});
  const UINT usual = GetDoubleClickTime();
  SetDoubleClickTime(1);
  Show({Clicking(5), [] { Sleep(50); }, Clicking(5)});
  SetDoubleClickTime(usual);
  EXPECT_EQ(events, 0);
  EXPECT_EQ(month->Value(), DateFromParts(2024, 6, 5));
}

TEST_F(MonthOnForm, ArrowAndPageKeysMoveTheDay) {
  month->SetValue(DateFromParts(2024, 1, 31));
  const auto press = [](WORD key) { return [key] { PressKey(key); }; };
  const auto expect = [this](int year, int month_number, int day) {
    return [=, this] { EXPECT_EQ(month->Value(), DateFromParts(year, month_number, day)); };
  };
  Show({press(VK_NEXT), expect(2024, 2, 29), press(VK_RIGHT), expect(2024, 3, 1), press(VK_DOWN),
        expect(2024, 3, 8), press(VK_LEFT), expect(2024, 3, 7), press(VK_UP), expect(2024, 2, 29),
        press(VK_HOME), expect(2024, 2, 1), press(VK_END), expect(2024, 2, 29), press(VK_PRIOR),
        expect(2024, 1, 29)});
}

TEST_F(MonthOnForm, KeysEndWithTheCalendar) {
  month->SetValue(DateFromParts(9999, 12, 31));
  Show({[] { PressKey(VK_RIGHT); }, [&] { EXPECT_EQ(month->Value(), DateFromParts(9999, 12, 31)); }});
}

TEST_F(MonthOnForm, TellsOfKeysWithTheirCharacters) {
  std::vector<int> keys;
  month->on_key_press = [&](int character) { keys.push_back(character); };
  Show({[] { PressKey(VK_RETURN); }, [] { PressKey(VK_ESCAPE); }, [] { TypeText(u"a"); }});
  EXPECT_THAT(keys, ElementsAre(VK_RETURN, VK_ESCAPE, 'a'));
}

}  // namespace
}  // namespace qva::windows
