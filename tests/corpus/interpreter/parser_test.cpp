// What the parser takes, and what it refuses by line.
#include "tests/corpus/interpreter/Parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/corpus/interpreter/Lexer.h"
#include "tests/corpus/interpreter/MacroError.h"

namespace qva::corpus {
namespace {

/// The message of the mistake that a macro holds; empty for none.
std::string MistakeOf(std::u16string_view source) {
  try {
    ParseMacro(source);
    return "";
  } catch (const MacroError& mistake) {
    return mistake.what();
  }
}

TEST(MacroLexer, LeavesOutCommentsAndJoinsContinuedLines) {
  const std::vector<Token> tokens = SplitIntoTokens(u"' a comment\nx = _\n  1 ' another\n\n");
  ASSERT_EQ(tokens.size(), 5u);
  EXPECT_EQ(tokens[0].line, 2);
  EXPECT_EQ(tokens[2].line, 3);
  EXPECT_EQ(tokens[3].kind, Token::Kind::EndOfLine);
}

TEST(MacroLexer, GivesNumbersTheSmallestKindThatHoldsThem) {
  const std::vector<Token> tokens = SplitIntoTokens(u"32767 32768 1.5 \"a\"\"ą\"");
  EXPECT_EQ(tokens[0].literal, Value(std::int16_t{32767}));
  EXPECT_EQ(tokens[1].literal, Value(std::int32_t{32768}));
  EXPECT_EQ(tokens[2].literal, Value(1.5));
  EXPECT_EQ(tokens[3].literal, Value(u"a\"ą"));
}

TEST(MacroParser, KeepsOmittedArguments) {
  const Block macro = ParseMacro(u"r.FillAttr , x, , y");
  const Expression& call = *macro.at(0).expressions.at(0);
  ASSERT_EQ(call.operands.size(), 5u);
  EXPECT_FALSE(call.operands[1]);
  EXPECT_TRUE(call.operands[2]);
  EXPECT_FALSE(call.operands[3]);
}

TEST(MacroParser, TakesABracketAfterABlankForTheFirstArgument) {
  const Block macro = ParseMacro(u"r.Increment (x)");
  const Expression& call = *macro.at(0).expressions.at(0);
  EXPECT_EQ(call.operands.at(1)->kind, Expression::Kind::Group);
}

TEST(MacroParser, RefusesWhatEnginesDoNotUnderstandAlike) {
  EXPECT_EQ(MistakeOf(u"x = 1\nIf a Is b Then\nEnd If"),
            "line 2: only \"Is Nothing\" means the same to all engines; compare by SameObject");
  EXPECT_EQ(MistakeOf(u"r.Init(x)"), "line 1: a statement's arguments stand without brackets");
  EXPECT_EQ(MistakeOf(u"On Error GoTo Handler"), "line 1: handlers with a label are outside the subset");
  EXPECT_EQ(MistakeOf(u"If x Then y = 1 Else y = 2"), "line 1: \"Else\" is too much");
  EXPECT_EQ(MistakeOf(u"If x Then If y Then z = 1"),
            "line 1: only one simple statement stands in the line of its If");
  EXPECT_EQ(MistakeOf(u"x = 1 ^ 2"), "line 1: \"^\" is outside the subset");
  EXPECT_EQ(MistakeOf(u"x = \"a"), "line 1: a text without an end");
  EXPECT_EQ(MistakeOf(u"x = 99999999999"), "line 1: too large a number");
}

TEST(MacroParser, RefusesBlocksWithoutAnEndOrABeginning) {
  EXPECT_EQ(MistakeOf(u"For i = 1 To 2\nx = 1"), "line 2: \"Next\" is missing");
  EXPECT_EQ(MistakeOf(u"If x Then\ny = 1\n"), "line 3: \"End\" is missing");
  EXPECT_EQ(MistakeOf(u"x = (1"), "line 1: \")\" is missing");
  EXPECT_EQ(MistakeOf(u"x ="), "line 1: something is missing");
}

}  // namespace
}  // namespace qva::corpus
