#include "period/CDatePic.h"

#include "period/frmDatePic.h"
#include "platform/date.h"
#include "tests/library_fixture.h"
#include "tests/period/form_lines.h"

namespace qva {
namespace {

constexpr std::u16string_view kMonth = u"MonthView1";

class DatePicker : public LibraryTest {
 protected:
  /// Shows the picker on `date`, which becomes what the picker made of it.
  bool Show(const MemoryForm::User& user) {
    platform.forms.user = user;
    Arguments arguments{date};
    const Value result = picker->Invoke(Access::Call, u"Show", arguments);
    date = arguments.positional[0].ToDate();
    return result.ToBoolean();
  }

  ObjectPtr picker = Create(u"CDatePic");
  Date date = DateFromParts(2024, 2, 12);
};

TEST_F(DatePicker, ShowsItsDateUnderItsCaption) {
  Show([](MemoryForm& form) {
    EXPECT_EQ(form.description().caption, u"Pasirinkite data");
    EXPECT_EQ(form.Text(kMonth), u"2024-02-12");
    EXPECT_EQ(form.focused(), kMonth);
  });
  EXPECT_EQ(platform.forms.created, 1);
}

TEST_F(DatePicker, IsFilledByItsCalendar) {
  Show([](MemoryForm& form) {
    EXPECT_EQ(form.description().width, 240);
    EXPECT_EQ(form.description().height, 190);
    EXPECT_THAT(FormLines(form.description()),
                testing::ElementsAre("MonthView MonthView1 '' 4,4 232x182 :0"));
  });
}

TEST_F(DatePicker, ConfirmsADayWithADoubleClick) {
  EXPECT_TRUE(Show([](MemoryForm& form) {
    form.DoubleClickDay(kMonth, DateFromParts(2024, 11, 3));
    EXPECT_FALSE(form.Visible());
  }));
  EXPECT_EQ(date, DateFromParts(2024, 11, 3));
}

TEST_F(DatePicker, ConfirmsTheDateShownWithEnter) {
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
  EXPECT_EQ(date, DateFromParts(2024, 2, 12));
}

TEST_F(DatePicker, ConfirmsAClickedDayWithEnter) {
  EXPECT_TRUE(Show([](MemoryForm& form) {
    form.PickDate(kMonth, DateFromParts(2025, 1, 31));
    EXPECT_TRUE(form.Visible());
    form.PressKey(kMonth, 13);
  }));
  EXPECT_EQ(date, DateFromParts(2025, 1, 31));
}

TEST_F(DatePicker, IsLeftWithEscape) {
  EXPECT_FALSE(Show([](MemoryForm& form) {
    form.PickDate(kMonth, DateFromParts(2025, 1, 31));
    form.PressKey(kMonth, 27);
    EXPECT_FALSE(form.Visible());
  }));
  EXPECT_EQ(date, DateFromParts(2024, 2, 12));
}

TEST_F(DatePicker, StaysOpenForAnyOtherKey) {
  EXPECT_FALSE(Show([](MemoryForm& form) {
    for (const int character : {0x61, 0x20, 8, 9, 10, 127}) {
      form.PressKey(kMonth, character);
      EXPECT_TRUE(form.Visible()) << character;
    }
    form.PressKey(kMonth, 27);
  }));
  EXPECT_TRUE(Show([](MemoryForm& form) {
    form.PressKey(kMonth, 'a');
    form.PressKey(kMonth, 13);
  }));
}

TEST_F(DatePicker, IsNotConfirmedWhenItsWindowIsClosed) {
  EXPECT_FALSE(Show([](MemoryForm& form) {
    form.PickDate(kMonth, DateFromParts(2025, 1, 31));
    form.CloseWindow();
  }));
  EXPECT_EQ(date, DateFromParts(2024, 2, 12));
}

TEST_F(DatePicker, ShowsTodayForTheZeroDateAndKeepsIt) {
  date = {};
  EXPECT_FALSE(Show([](MemoryForm& form) { EXPECT_EQ(form.Text(kMonth), u"2024-06-12"); }));
  EXPECT_EQ(date, DateFromParts(2024, 6, 12));  // without the time of day
}

TEST_F(DatePicker, ConfirmsTodayForTheZeroDateWithEnter) {
  date = {};
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
  EXPECT_EQ(date, DateFromParts(2024, 6, 12));
}

TEST_F(DatePicker, DoesNotTakeAnHourForTheZeroDate) {
  date = {0.25};  // not the zero date
  EXPECT_FALSE(Show([](MemoryForm& form) { EXPECT_EQ(form.Text(kMonth), u"1899-12-30"); }));
  EXPECT_EQ(date, Date{0.25});
}

TEST_F(DatePicker, TakesTheTimeOfDayFromAConfirmedDateAlone) {
  const Date afternoon = {DateFromParts(2024, 2, 12).serial + 0.625};
  date = afternoon;
  EXPECT_FALSE(Show([](MemoryForm& form) { form.PressKey(kMonth, 27); }));
  EXPECT_EQ(date, afternoon);
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
  EXPECT_EQ(date, DateFromParts(2024, 2, 12));
}

TEST_F(DatePicker, ClosingTheWindowLeavesAConfirmationAsItIs) {
  EXPECT_TRUE(Show([](MemoryForm& form) {
    form.DoubleClickDay(kMonth, DateFromParts(2024, 11, 3));
    form.CloseWindow();
  }));
  EXPECT_EQ(date, DateFromParts(2024, 11, 3));
}

// A key may be under way while the window hides.
TEST_F(DatePicker, AnyOtherKeyTakesAConfirmationBack) {
  for (const int character : {0x61, 0x20, 27}) {
    EXPECT_FALSE(Show([=](MemoryForm& form) {
      form.DoubleClickDay(kMonth, DateFromParts(2024, 11, 3));
      dynamic_cast<ui::MonthView&>(*form.Find(kMonth)).on_key_press(character);
    })) << character;
    EXPECT_EQ(date, DateFromParts(2024, 2, 12));
  }
}

TEST_F(DatePicker, BeginsEachShowingUnconfirmed) {
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
  EXPECT_FALSE(Show([](MemoryForm& form) { form.CloseWindow(); }));
  EXPECT_EQ(platform.forms.created, 2);  // unloaded after each
}

TEST_F(DatePicker, IsShownOnceAtATime) {
  EXPECT_FALSE(Show([this](MemoryForm&) {
    const ObjectPtr other = Create(u"CDatePic");
    EXPECT_EQ(RaisedBy([&] { Call(other, u"Show", {date}); }), kFormAlreadyDisplayed);
  }));
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
}

TEST_F(DatePicker, RaisesForADateThatNoCalendarShowsAndCanBeShownAgain) {
  date = DateFromParts(1600, 1, 1);
  EXPECT_EQ(RaisedBy([&] { Call(picker, u"Show", {date}); }), kInvalidPropertyValue);
  date = DateFromParts(2024, 2, 12);
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
}

TEST_F(DatePicker, RaisesWhenThereAreNoWindows) {
  platform.faults.forms.Refuse();
  EXPECT_EQ(RaisedBy([&] { Call(picker, u"Show", {date}); }), kOutOfMemory);
  platform.faults.forms.Allow();
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); }));
}

TEST_F(DatePicker, RaisesWhenItsWindowCannotBeShownAndLeavesNothingOfIt) {
  const long live = Object::LiveCount();
  for (const ErrorNumber error : {kOutOfMemory, kInternalError}) {
    platform.faults.forms.RefuseShowing(error);
    Arguments arguments{date};
    EXPECT_EQ(RaisedBy([&] { picker->Invoke(Access::Call, u"Show", arguments); }), error);
    EXPECT_EQ(arguments.positional[0], Value(date));
    EXPECT_EQ(Object::LiveCount(), live);
  }
  platform.faults.forms.Allow();
  EXPECT_TRUE(Show([](MemoryForm& form) { form.PressKey(kMonth, 13); })) << "it is not taken for shown";
}

}  // namespace
}  // namespace qva
