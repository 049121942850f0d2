#include "platform/forms/date_entry.h"

#include <gmock/gmock.h>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

using testing::ElementsAre;

/// A control of a form that keeps what it was told to show, the current part in brackets.
class ShownEntry : public DateEntry {
 public:
  std::u16string Name() const override { return u""; }
  bool Enabled() const override { return true; }
  void SetEnabled(bool) override {}
  void SetFocus() override {}

  std::string shown;

 private:
  void Show() override {
    MarkedText text = Text();
    shown = ToUtf8(text.text.insert(text.to, u"]").insert(text.from, u"["));
  }
};

class DateEntryTest : public testing::Test {
 protected:
  DateEntryTest() {
    entry.SetValue(DateFromParts(2024, 5, 17));
    entry.on_change = [this] { changes.push_back(entry.shown); };
  }
  void Type(std::u16string_view digits) {
    for (const char16_t digit : digits) entry.TypeDigit(digit);
  }
  /// Shows a day by a format, with so many parts before the current one.
  void Start(Date day, std::u16string_view format, int part = 0) {
    entry.SetValue(day);
    entry.SetFormat(format);
    for (int i = 0; i < part; ++i) entry.MoveToPart(1);
    changes.clear();
  }
  ShownEntry entry;
  std::vector<std::string> changes;  ///< what was shown when each was told
};

TEST_F(DateEntryTest, BeginsWithTheYearOfItsFirstDay) {
  const DateEntry::MarkedText text = ShownEntry().Text();
  EXPECT_EQ(text.text, u"1900-01-01");
  EXPECT_EQ(text.from, 0u);
  EXPECT_EQ(text.to, 4u);
  EXPECT_EQ(ShownEntry().Value(), DateFromParts(1900, 1, 1));
}

TEST_F(DateEntryTest, TellsOfADayThatTheProgramSetsUnlessItIsTheSame) {
  entry.SetValue({DateFromParts(2024, 5, 18).serial + 0.5});
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 5, 18)) << "without its time";
  entry.SetValue(DateFromParts(2024, 5, 18));
  EXPECT_THAT(changes, ElementsAre("[2024]-05-18")) << "shown before it is told";
  EXPECT_EQ(RaisedBy([&] { entry.SetValue(DateFromParts(1752, 12, 31)); }), kInvalidPropertyValue);
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 5, 18));
}

TEST_F(DateEntryTest, AFormatBeginsWithItsFirstPartAndForgetsWhatWasTyped) {
  Type(u"20");
  entry.SetFormat(u"dd.MM.yyyy");
  EXPECT_EQ(entry.shown, "[17].05.2024");
  entry.MoveToPart(1);
  Type(u"1");
  entry.SetFormat(u"(yyyy)");
  EXPECT_EQ(entry.shown, "([2024])") << "what stands before the first part is none";
  entry.StoreDigits();
  EXPECT_THAT(changes, ElementsAre());
}

TEST_F(DateEntryTest, MovesFromPartToPartOverSeparatorsAndStopsAtBothEnds) {
  entry.MoveToPart(-1);
  EXPECT_EQ(entry.shown, "[2024]-05-17");
  entry.MoveToPart(1);
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  entry.MoveToPart(1);
  entry.MoveToPart(1);
  EXPECT_EQ(entry.shown, "2024-05-[17]");
  entry.MoveToPart(-1);
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  entry.SetFormat(u"<MM>");
  entry.MoveToPart(1);
  EXPECT_EQ(entry.shown, "<[05]>") << "what stands behind the last part is none";
  entry.MoveToPart(-1);
  EXPECT_EQ(entry.shown, "<[05]>");
}

TEST_F(DateEntryTest, PartsThatMeetAreTwo) {
  Start(DateFromParts(2024, 5, 17), u"yyyyMM", 1);
  EXPECT_EQ(entry.shown, "2024[05]");
}

TEST_F(DateEntryTest, ACaretChoosesThePartThatItStandsInOrBehind) {
  for (const auto& [caret, shown] :
       std::initializer_list<std::pair<std::size_t, const char*>>{{10, "2024-05-[17]"},
                                                                  {8, "2024-[05]-17"},
                                                                  {9, "2024-05-[17]"},
                                                                  {6, "2024-[05]-17"},
                                                                  {7, "2024-[05]-17"},
                                                                  {5, "[2024]-05-17"},
                                                                  {99, "2024-05-[17]"},
                                                                  {4, "[2024]-05-17"},
                                                                  {0, "[2024]-05-17"}}) {
    entry.ChoosePartAt(caret);
    EXPECT_EQ(entry.shown, shown) << caret;
  }
}

TEST_F(DateEntryTest, ACaretBeforeTheFirstPartLeavesTheChoiceAsItWas) {
  Start(DateFromParts(2024, 5, 17), u"(yyyy-MM)", 1);
  entry.ChoosePartAt(1);
  EXPECT_EQ(entry.shown, "(2024-[05])");
  entry.ChoosePartAt(2);
  EXPECT_EQ(entry.shown, "([2024]-05)");
}

TEST_F(DateEntryTest, ACaretElsewhereStoresWaitingDigitsInTheirPart) {
  entry.MoveToPart(1);
  Type(u"1");
  EXPECT_EQ(entry.shown, "2024-[1]-17");
  entry.ChoosePartAt(8);
  EXPECT_EQ(entry.shown, "2024-01-[17]");
}

TEST_F(DateEntryTest, StepsChangeTheCurrentPart) {
  entry.Step(1);
  EXPECT_EQ(entry.shown, "[2025]-05-17");
  entry.MoveToPart(1);
  entry.Step(-1);
  EXPECT_EQ(entry.shown, "2025-[04]-17");
  entry.MoveToPart(1);
  entry.Step(1);
  EXPECT_EQ(entry.Value(), DateFromParts(2025, 4, 18));
  EXPECT_THAT(changes, ElementsAre("[2025]-05-17", "2025-[04]-17", "2025-04-[18]"));
}

TEST_F(DateEntryTest, StepsGoOnBeyondMonthAndYearAndShortenADayThatTheMonthLacks) {
  Start(DateFromParts(2024, 12, 31), u"yyyy-MM-dd", 2);
  entry.Step(1);
  EXPECT_EQ(entry.Value(), DateFromParts(2025, 1, 1));
  Start(DateFromParts(2024, 12, 31), u"yyyy-MM-dd", 1);
  entry.Step(1);
  EXPECT_EQ(entry.Value(), DateFromParts(2025, 1, 31));
  entry.Step(1);
  EXPECT_EQ(entry.Value(), DateFromParts(2025, 2, 28));
  Start(DateFromParts(2024, 2, 29), u"yyyy-MM-dd");
  entry.Step(-1);
  EXPECT_EQ(entry.Value(), DateFromParts(2023, 2, 28));
}

TEST_F(DateEntryTest, StepsEndWhereWindowsPickersEnd) {
  for (const int direction : {1, -1}) {
    const Date last = direction > 0 ? DateFromParts(9999, 12, 31) : DateFromParts(1753, 1, 1);
    for (const int part : {0, 1, 2}) {
      Start(last, u"yyyy-MM-dd", part);
      entry.Step(direction);
      EXPECT_EQ(entry.Value(), last) << part;
      EXPECT_THAT(changes, ElementsAre()) << part;
    }
  }
}

TEST_F(DateEntryTest, AStepCountsFromTheDigitsThatWaited) {
  entry.MoveToPart(1);
  Type(u"1");
  entry.Step(1);
  EXPECT_THAT(changes, ElementsAre("2024-[01]-17", "2024-[02]-17"));
}

TEST_F(DateEntryTest, AYearIsChangedByItsFourthDigitWhichLeadsOnToTheNextPart) {
  Type(u"203");
  EXPECT_EQ(entry.shown, "[203]-05-17");
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 5, 17));
  Type(u"1");
  EXPECT_EQ(entry.shown, "2031-[05]-17");
  EXPECT_THAT(changes, ElementsAre("[2031]-05-17")) << "told before it goes on";
  entry.SetFormat(u"MM.yyyy");
  entry.MoveToPart(1);
  Type(u"2032");
  EXPECT_EQ(entry.shown, "05.[2032]") << "there is no next part";
}

TEST_F(DateEntryTest, AYearThatPickersCannotShowChangesNothing) {
  Type(u"1752");
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  entry.MoveToPart(-1);
  Type(u"999");
  entry.StoreDigits();
  EXPECT_EQ(entry.shown, "[2024]-05-17");
  EXPECT_THAT(changes, ElementsAre());
  Type(u"1753");
  EXPECT_EQ(entry.Value(), DateFromParts(1753, 5, 17));
  entry.MoveToPart(-1);
  Type(u"9999");
  EXPECT_EQ(entry.Value(), DateFromParts(9999, 5, 17));
}

TEST_F(DateEntryTest, AYearThatLacksTheDayGetsItsMonthsLastOne) {
  Start(DateFromParts(2024, 2, 29), u"yyyy-MM-dd");
  Type(u"2025");
  EXPECT_EQ(entry.Value(), DateFromParts(2025, 2, 28));
}

TEST_F(DateEntryTest, AMonthThatBeginsWith1WaitsForASecondDigit) {
  entry.MoveToPart(1);
  Type(u"1");
  EXPECT_EQ(entry.shown, "2024-[1]-17");
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 5, 17));
  Type(u"2");
  EXPECT_EQ(entry.shown, "2024-[12]-17") << "it stays the current part";
  Type(u"0");
  EXPECT_EQ(entry.shown, "2024-[0]-17");
  Type(u"7");
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 7, 17));
}

TEST_F(DateEntryTest, AMonthThatBeginsWith2HasNoSecondDigit) {
  entry.MoveToPart(1);
  Type(u"2");
  EXPECT_EQ(entry.shown, "2024-[02]-17");
  Type(u"9");
  EXPECT_EQ(entry.Value(), DateFromParts(2024, 9, 17));
}

TEST_F(DateEntryTest, AMonthThatThereIsNotChangesNothing) {
  entry.MoveToPart(1);
  Type(u"13");
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  Type(u"00");
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  EXPECT_THAT(changes, ElementsAre());
}

TEST_F(DateEntryTest, ADayThatBeginsWith3WaitsForASecondDigit) {
  Start(DateFromParts(2024, 5, 17), u"yyyy-MM-dd", 2);
  Type(u"3");
  EXPECT_EQ(entry.shown, "2024-05-[3]");
  Type(u"1");
  EXPECT_EQ(entry.shown, "2024-05-[31]");
}

TEST_F(DateEntryTest, ADayThatBeginsWith4HasNoSecondDigit) {
  Start(DateFromParts(2024, 5, 17), u"yyyy-MM-dd", 2);
  Type(u"4");
  EXPECT_EQ(entry.shown, "2024-05-[04]");
}

TEST_F(DateEntryTest, ADayThatTheMonthLacksChangesNothing) {
  Start(DateFromParts(2023, 2, 17), u"yyyy-MM-dd", 2);
  Type(u"29");
  EXPECT_EQ(entry.shown, "2023-02-[17]");
  Type(u"00");
  EXPECT_EQ(entry.shown, "2023-02-[17]");
  EXPECT_THAT(changes, ElementsAre());
  Type(u"28");
  EXPECT_EQ(entry.Value(), DateFromParts(2023, 2, 28));
}

TEST_F(DateEntryTest, DigitsThatWaitAreTakenWhenTheUserGoesOn) {
  entry.MoveToPart(1);
  Type(u"1");
  entry.MoveToPart(1);
  EXPECT_EQ(entry.shown, "2024-01-[17]");
  Type(u"3");
  entry.StoreDigits();
  EXPECT_EQ(entry.shown, "2024-01-[03]");
  EXPECT_THAT(changes, ElementsAre("2024-[01]-17", "2024-01-[03]"));
  entry.shown = "marked by the user";
  entry.StoreDigits();
  EXPECT_EQ(entry.shown, "marked by the user") << "none wait";
}

TEST_F(DateEntryTest, DigitsOfWhatIsShownAlreadyTellNothing) {
  Type(u"2024");
  EXPECT_EQ(entry.shown, "2024-[05]-17");
  EXPECT_THAT(changes, ElementsAre());
}

TEST_F(DateEntryTest, AFormatWithoutPartsTakesNothing) {
  for (const char16_t* const format : {u"", u"--"}) {
    Start(DateFromParts(2024, 5, 17), format);
    Type(u"12");
    entry.Step(1);
    entry.MoveToPart(1);
    entry.MoveToPart(-1);
    entry.ChoosePartAt(1);
    EXPECT_EQ(entry.Text().text, format);
    EXPECT_EQ(entry.Value(), DateFromParts(2024, 5, 17));
    Type(u"1");
    EXPECT_EQ(entry.Text().text, format) << "nor is it shown";
  }
}

}  // namespace
}  // namespace qva
