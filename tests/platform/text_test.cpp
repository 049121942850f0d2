#include "platform/text.h"

#include <gtest/gtest.h>

#include <limits>

namespace qva {
namespace {

TEST(Utf8, RoundTripsCharactersOfEveryLength) {
  const std::u16string text = u"aZ\x7F\x80ąžŠ\u07FF\u0800€\uD7FF\uE000\uFFFD\uFFFF\U00010000😀\U0010FFFF";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"ą€😀"), "\xC4\x85\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(ToUtf8(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8, UnpairedSurrogatesAreReplaced) {
  EXPECT_EQ(ToUtf8(std::u16string{u'a', 0xD800, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(ToUtf8(std::u16string{0xD800}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xDC00, 0xD800}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Utf8, MalformedBytesAreReplacedAndTheRestIsRead) {
  for (const char* bytes : {"\x80", "\xC0", "\xC1", "\xF5", "\xFF", "\xC4"}) {
    EXPECT_EQ(FromUtf8(std::string(bytes) + "a"),
              u"\uFFFD"
              u"a")
        << testing::PrintToString(std::string(bytes));
  }
  EXPECT_EQ(FromUtf8("\xE2\x82"), u"\uFFFD\uFFFD");                      // cut short
  EXPECT_EQ(FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");                      // longer than needed
  EXPECT_EQ(FromUtf8("\xE0\x80\xAF"), u"\uFFFD\uFFFD\uFFFD");            // longer than needed
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");            // a surrogate
  EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // beyond the last character
  EXPECT_EQ(FromUtf8("a\xE2\x82\xAC"), u"a€");
}

TEST(LetterCase, LowerCaseKnowsTheEuropeanLetters) {
  EXPECT_EQ(ToLower(u"ABCXYZ"), u"abcxyz");
  EXPECT_EQ(ToLower(u"ĄČĘĖĮŠŲŪŽ"), u"ąčęėįšųūž");
  EXPECT_EQ(ToLower(u"ÀÖØÞŸ"), u"àöøþÿ");
  EXPECT_EQ(ToLower(u"ĀĶĹŇŊŶŹŽ"), u"āķĺňŋŷźž");
  EXPECT_EQ(ToLower(u"ȘȚẀ"), u"șțẁ");
  EXPECT_EQ(ToLower(u"ΑΩ АЯЁ"), u"αω аяё");
}

TEST(LetterCase, LowerCaseLeavesEverythingElseAlone) {
  const std::u16string_view others = u"aąž0@[`{×÷ßĸŉſıİ€\u30A2😀";
  EXPECT_EQ(ToLower(others), others);
}

TEST(LetterCase, EveryLowerCaseIsStable) {
  for (char32_t c = 1; c < 0x10000; ++c) {
    const std::u16string once = ToLower(std::u16string(1, static_cast<char16_t>(c)));
    ASSERT_EQ(ToLower(once), once) << std::hex << static_cast<std::uint32_t>(c);
  }
}

TEST(LetterCase, IsIgnoredInComparisons) {
  EXPECT_TRUE(EqualIgnoringCase(u"C:\\Šaltinis", u"c:\\ŠALTINIS"));
  EXPECT_TRUE(EqualIgnoringCase(u"", u""));
  EXPECT_FALSE(EqualIgnoringCase(u"a", u"ab"));
  EXPECT_FALSE(EqualIgnoringCase(u"s", u"š"));
}

TEST(LetterCase, IsIgnoredWhenLookingForAText) {
  EXPECT_TRUE(ContainsIgnoringCase(u"C:\\Bin;C:\\ŠALTINIS;D:\\", u"c:\\šaltinis"));
  EXPECT_FALSE(ContainsIgnoringCase(u"C:\\Saltinis", u"c:\\šaltinis"));
  EXPECT_TRUE(ContainsIgnoringCase(u"", u""));
  EXPECT_TRUE(ContainsIgnoringCase(u"a", u""));
  EXPECT_FALSE(ContainsIgnoringCase(u"", u"a"));
}

TEST(Pattern, FitsNamesInAnyLetterCase) {
  EXPECT_TRUE(FitsPattern(u"Ataskaita_Š.xls", u"ATASKAITA_š.XLS"));
  EXPECT_FALSE(FitsPattern(u"Ataskaita.xls", u"Ataskaita"));
  EXPECT_FALSE(FitsPattern(u"Ataskaita", u"Ataskaita.xls"));
  EXPECT_TRUE(FitsPattern(u"", u""));
  EXPECT_FALSE(FitsPattern(u"a", u""));
}

TEST(Pattern, TakesAnAsteriskForAnyCharactersAndAQuestionMarkForOne) {
  for (const auto* pattern :
       {u"*", u"*.*", u"B*", u"*.xls", u"B*_20??*.xls", u"**", u"*s*s", u"Balansas_2024.xl?"}) {
    EXPECT_TRUE(FitsPattern(u"Balansas_2024.xls", pattern)) << ToUtf8(pattern);
  }
  for (const auto* pattern : {u"?", u"*.doc", u"A*", u"*_2024.xls?", u"Balansas?2024.xl", u"*x", u"*ss*ss"}) {
    EXPECT_FALSE(FitsPattern(u"Balansas_2024.xls", pattern)) << ToUtf8(pattern);
  }
  EXPECT_TRUE(FitsPattern(u"Balansas", u"*.*"));
  EXPECT_FALSE(FitsPattern(u"", u"?"));
}

TEST(Trim, DropsBlanksAtBothEndsAndNothingElse) {
  EXPECT_EQ(Trim(u"  a b  "), u"a b");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
  EXPECT_EQ(Trim(u"\ta\u00A0"), u"\ta\u00A0");
}

TEST(ReplaceAll, ReplacesFromTheLeftWithoutLookingAtWhatWasPutIn) {
  EXPECT_EQ(ReplaceAll(u"%1 and %1", u"%1", u"x"), u"x and x");
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"b"), u"ba");
  EXPECT_EQ(ReplaceAll(u"a", u"a", u"aa"), u"aa");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(ReplaceAll(u"abc", u"b", u""), u"ac");
  EXPECT_EQ(ReplaceAll(u"", u"b", u"x"), u"");
}

TEST(ColumnLetters, CountOnFromAToZ) {
  EXPECT_EQ(ColumnLetters(1), u"A");
  EXPECT_EQ(ColumnLetters(26), u"Z");
  EXPECT_EQ(ColumnLetters(27), u"AA");
  EXPECT_EQ(ColumnLetters(256), u"IV");
  EXPECT_EQ(ColumnLetters(16384), u"XFD");
}

TEST(NumberText, WritesDecimalDigits) {
  EXPECT_EQ(NumberText(0), u"0");
  EXPECT_EQ(NumberText(-12), u"-12");
  EXPECT_EQ(NumberText(std::numeric_limits<long long>::min()), u"-9223372036854775808");
}

}  // namespace
}  // namespace qva
