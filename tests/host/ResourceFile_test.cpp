#include "host/ResourceFile.h"

#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

ResourceTexts Parse(std::string_view bytes) {
  return ParseResource(bytes, u"Lib");
}

void ExpectMalformed(std::string_view bytes, int line, std::u16string_view cause) {
  ExpectFailure([&] { Parse(bytes); }, Failure::MalformedResource, u"QVA_Common",
                u"\"Lib\" has in line " + NumberText(line) + u" " + std::u16string(cause));
}

TEST(ResourceFile, ReadsANumberAndTheTextAfterBlanksOrTabs) {
  EXPECT_THAT(Parse("800 Vienas\n801\tDu\n16514 \t  Trys keturi\n"),
              testing::ElementsAre(testing::Pair(800, u"Vienas"), testing::Pair(801, u"Du"),
                                   testing::Pair(16514, u"Trys keturi")));
}

TEST(ResourceFile, ReadsNumbersOfTheWholeRangeInAnyOrder) {
  EXPECT_THAT(Parse("2147483647 b\n1 a"),
              testing::ElementsAre(testing::Pair(1, u"a"), testing::Pair(2147483647, u"b")));
}

TEST(ResourceFile, PassesOverBlankLinesAndComments) {
  EXPECT_THAT(Parse("# 1 a\n\n \t \n  # 2 b\n3 c # kept\n"),
              testing::ElementsAre(testing::Pair(3, u"c # kept")));
  EXPECT_THAT(Parse(""), testing::IsEmpty());
}

TEST(ResourceFile, TakesByteOrderMarkCarriageReturnsAndAMissingLastLineEnd) {
  EXPECT_THAT(Parse("\xEF\xBB\xBF"
                    "1 a\r\n2 b"),
              testing::ElementsAre(testing::Pair(1, u"a"), testing::Pair(2, u"b")));
}

TEST(ResourceFile, ResolvesEscapesAndDropsBlanksAtTheEnd) {
  EXPECT_THAT(Parse("1 a\\nb \\\\n c \t \n"), testing::ElementsAre(testing::Pair(1, u"a\nb \\n c")));
}

TEST(ResourceFile, ReadsTextBeyondLatinLetters) {
  EXPECT_THAT(Parse("1 „Ąžuolas“ – \xF0\x9F\x8C\xB3"),
              testing::ElementsAre(testing::Pair(1, u"„Ąžuolas“ – \U0001F333")));
}

TEST(ResourceFile, NamesTheLineWithoutANumber) {
  ExpectMalformed("# head\n1 a\nabc\n", 3, u"no number at its start");
  ExpectMalformed("+1 a", 1, u"no number at its start");
}

TEST(ResourceFile, NamesTheLineWhoseNumberIsOutOfRange) {
  ExpectMalformed("0 a", 1, u"a number outside 1 to 2147483647");
  ExpectMalformed("\n-5 a", 2, u"a number outside 1 to 2147483647");
  ExpectMalformed("2147483648 a", 1, u"a number outside 1 to 2147483647");
}

TEST(ResourceFile, NamesTheLineWithoutAText) {
  ExpectMalformed("1 a\n2\n", 2, u"no text after the number");
  ExpectMalformed("1 a\n2 \t \r\n", 2, u"no text after the number");
}

TEST(ResourceFile, NamesTheLineWhoseNumberRunsIntoTheText) {
  ExpectMalformed("1a", 1, u"no blank after the number");
  ExpectMalformed("1.5 a", 1, u"no blank after the number");
}

TEST(ResourceFile, NamesTheLineWithAnUnknownEscape) {
  ExpectMalformed("1 a\n2 a\\tb", 2, u"an escape other than \\n and \\\\");
  ExpectMalformed("1 a\\", 1, u"an escape other than \\n and \\\\");
}

TEST(ResourceFile, NamesTheLineThatIsNotUtf8) {
  ExpectMalformed("1 a\n2 \xE0\x65\n", 2, u"bytes that are not UTF-8");
}

TEST(ResourceFile, NamesTheSecondLineOfANumber) {
  ExpectMalformed("1 a\n2 b\n1 c\n", 3, u"a number that was used before");
}

}  // namespace
}  // namespace qva::embedded
