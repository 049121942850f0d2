#include "global/Helpers.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

class Helpers : public LibraryTest {};

Value List(std::vector<Value> elements, std::int32_t lower = 0) {
  return Array::Of(std::move(elements), lower);
}

TEST_F(Helpers, FormatMessageReplacesAPlaceholderByItsElement) {
  EXPECT_EQ(FormatMessage(u"Knyga %0 neatverta", List({u"abc"})), u"Knyga abc neatverta");
}

TEST_F(Helpers, FormatMessageReplacesHigherIndexesFirst) {
  std::vector<Value> elements(10, u"-");
  elements[0] = u"a";
  elements[9] = u"b";
  EXPECT_EQ(FormatMessage(u"%1 of %10", List(elements, 1)), u"a of b");
}

TEST_F(Helpers, FormatMessageReplacesEveryOccurrence) {
  EXPECT_EQ(FormatMessage(u"%0%0 ir %0", List({u"x"})), u"xx ir x");
}

TEST_F(Helpers, FormatMessageLooksAtWhatAHigherIndexPutIn) {
  EXPECT_EQ(FormatMessage(u"%1", List({u"a", u"<%0>"})), u"<a>");
}

TEST_F(Helpers, FormatMessageLeavesPlaceholdersWithoutElement) {
  EXPECT_EQ(FormatMessage(u"%0 %2 %", List({u"a", u"b"})), u"a %2 %");
}

TEST_F(Helpers, FormatMessageTakesNegativeBounds) {
  EXPECT_EQ(FormatMessage(u"%-1 %0", List({u"a", u"b"}, -1)), u"a b");
}

TEST_F(Helpers, FormatMessageConvertsElementsToText) {
  EXPECT_EQ(FormatMessage(u"%0 %1 %2", List({std::int16_t{12}, 2.5, true})), u"12 2,5 True");
}

TEST_F(Helpers, FormatMessageReturnsAnEmptyTextWhateverTheParameters) {
  EXPECT_EQ(FormatMessage(u"", u"no array"), u"");
}

TEST_F(Helpers, FormatMessageWithoutAnArrayRaisesTheBoundsError) {
  EXPECT_EQ(RaisedBy([] { FormatMessage(u"%0", u"abc"); }), kSubscriptOutOfRange);
  EXPECT_EQ(RaisedBy([] { FormatMessage(u"%0", Array::Block(1, 1, {u"abc"})); }), kSubscriptOutOfRange);
}

TEST_F(Helpers, FormatMessageOfAnEmptyArrayChangesNothing) {
  EXPECT_EQ(FormatMessage(u"%0", List({})), u"%0");
}

TEST_F(Helpers, HostMessagePutsItsParameterIntoTheHostsText) {
  StartUp();
  host.texts[842] = u"Nepavyko atverti „%0“";
  EXPECT_EQ(HostMessage(842, u"ABC"), u"Nepavyko atverti „ABC“");
}

TEST_F(Helpers, DateSeparatorIsThatOfTheRegionalSettings) {
  EXPECT_EQ(GetDateSeparator(true), u"-");
  platform.locale.short_date_pattern = u"dd.MM.yyyy";
  EXPECT_EQ(GetDateSeparator(true), u".");
  EXPECT_EQ(GetDateSeparator(false), u".");
  platform.locale.short_date_pattern = u"M/d/yyyy";
  EXPECT_EQ(GetDateSeparator(true), u"/");
}

TEST_F(Helpers, DateSeparatorOfTwoCharactersIsReturnedWhole) {
  platform.locale.short_date_pattern = u"yyyy. MM. dd.";
  EXPECT_EQ(GetDateSeparator(true), u". ");
  EXPECT_EQ(GetDateSeparator(false), u". ");
}

TEST_F(Helpers, DateSeparatorsMayDiffer) {
  platform.locale.short_date_pattern = u"yyyy.MM-dd";
  EXPECT_EQ(GetDateSeparator(true), u".");
  EXPECT_EQ(GetDateSeparator(false), u"-");
}

TEST_F(Helpers, DateSeparatorsAreTakenInThePatternsOrder) {
  platform.locale.short_date_pattern = u"dd.MM-yyyy";
  EXPECT_EQ(GetDateSeparator(true), u".");
  EXPECT_EQ(GetDateSeparator(false), u"-");
}

TEST_F(Helpers, TextBetweenIsACharacterOrTheFirstAndTheLastOne) {
  EXPECT_EQ(GetTextBetween(u"2010.11.12", u"10", u"11"), u".");
  EXPECT_EQ(GetTextBetween(u"2010. 11. 12", u"11", u"12"), u". ");
  EXPECT_EQ(GetTextBetween(u"2010abc11", u"10", u"11"), u"ac");
}

TEST_F(Helpers, TextBetweenWithNothingBetweenTakesTheCharactersAround) {
  EXPECT_EQ(GetTextBetween(u"20101112", u"10", u"11"), u"10");
}

TEST_F(Helpers, TextBetweenWithoutTheEndMarkOrWithItInFrontOfAllIsAnInvalidCall) {
  for (const char16_t* text : {u"2010", u"1110"}) {
    EXPECT_EQ(RaisedBy([&] { GetTextBetween(text, u"10", u"11"); }), kInvalidProcedureCall);
  }
}

TEST_F(Helpers, TextBetweenWithoutTheBeginMarkCountsItsLengthFromTheFirstCharacter) {
  EXPECT_EQ(GetTextBetween(u"ab-11", u"x", u"11"), u"a-");
}

TEST_F(Helpers, TextBetweenWithTheEndMarkAheadHasWhatStandsBehindTheOneAndBeforeTheOther) {
  EXPECT_EQ(GetTextBetween(u"a11.10b", u"10", u"11"), u"ba");
  EXPECT_EQ(GetTextBetween(u"a11.10", u"10", u"11"), u"a");
}

TEST_F(Helpers, CountStopsAtTheEndsOfSixteenBits) {
  std::int16_t counter = 32767;
  EXPECT_EQ(RaisedBy([&] { Count(counter, 1); }), kOverflow);
  EXPECT_EQ(counter, 32767);
  counter = -32768;
  EXPECT_EQ(RaisedBy([&] { Count(counter, -1); }), kOverflow);
  EXPECT_EQ(counter, -32768);
}

}  // namespace
}  // namespace qva
