#include <limits>

#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class ConditionBuilderTest : public HostTest {
 protected:
  host::ConditionBuilder build_ = host::ConditionBuilder::Create(factory_);
};

/// The one row of one column that an expression of SQL gives, as text.
std::u16string Evaluated(std::u16string_view expression) {
  const Database database(":memory:", Database::Mode::Write);
  const Statement statement = database.Prepare("SELECT " + ToUtf8(expression));
  Cursor row = statement.Run({});
  EXPECT_TRUE(row.Next());
  return row.Text(0);
}

TEST_F(ConditionBuilderTest, AFieldEqualsAValueOfEachKind) {
  const std::pair<Value, std::u16string> values[] = {
      {u"BOBN", u"'BOBN'"},
      {u"", u"''"},
      {true, u"1"},
      {false, u"0"},
      {std::uint8_t{255}, u"255"},
      {std::int16_t{-7}, u"-7"},
      {std::int32_t{2147483647}, u"2147483647"},
      {0.1, u"0.1"},
      {-1e300, u"-1e+300"},
      {Currency{15000}, u"1.5"},
      {Currency{9223372036854775807}, u"922337203685477.5807"},
      {Date{45292}, u"'2024-01-01'"},
      {Date{45292.5}, u"'2024-01-01 12:00:00'"},
  };
  for (const auto& [value, literal] : values) {
    EXPECT_EQ(ToUtf8(build_.Equal(u"Doc.X", value)), ToUtf8(u"Doc.X = " + literal));
  }
}

TEST_F(ConditionBuilderTest, NumbersAreWrittenWithAPointAndInFull) {
  EXPECT_EQ(build_.Equal(u"X", 0.1 + 0.2), u"X = 0.30000000000000004");
}

TEST_F(ConditionBuilderTest, WhateverCharactersATextHasItStaysOneValue) {
  for (const std::u16string text : {u"O'BRIEN", u"'", u"''", u"X' OR '1'='1", u"\"", u"a\\' --",
                                    u"x'; DROP TABLE Book", u"ąžuolas „–“", u"\n\t/*", u"?1 :a @b $c"}) {
    const std::u16string condition = build_.Equal(u"X", text);
    EXPECT_EQ(ToUtf8(Evaluated(std::u16string_view(condition).substr(4))), ToUtf8(text));
  }
  EXPECT_EQ(build_.Equal(u"X", u"O'BRIEN"), u"X = 'O''BRIEN'");
}

TEST_F(ConditionBuilderTest, ATextWithANullCharacterIsRefused) {
  ExpectFailure([&] { build_.Equal(u"X", std::u16string(u"a\0b", 3)); }, Failure::WrongParameters,
                u"NVXCommonObjects", u"without null characters");
}

TEST_F(ConditionBuilderTest, WhatIsNoPlainValueIsRefused) {
  for (const Value& value :
       {Value(), Value(Null{}), Value(build_.object()), Value(ObjectPtr()), Array::Of({u"X"}),
        Value(ErrorValue{2042}), Value(std::numeric_limits<double>::infinity()),
        Value(std::numeric_limits<double>::quiet_NaN())}) {
    ExpectFailure([&] { build_.Equal(u"X", value); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"ConditionBuilder.Equal needs");
  }
}

TEST_F(ConditionBuilderTest, FieldsAreNamesWithOnePointAtMost) {
  for (const auto field : {u"IDC", u"Doc.IDC", u"_a1.B_2", u"Doc2.Doc2"}) {
    EXPECT_EQ(build_.Equal(field, u""), std::u16string(field) + u" = ''");
    EXPECT_EQ(build_.In(field, u"(SELECT 1)"), std::u16string(field) + u" IN (SELECT 1)");
  }
  for (const auto field : {u"", u".", u"Doc.", u".IDC", u"a.b.c", u"a b", u"1", u"1a", u"Doc.1", u"a'",
                           u"a\"", u"a;", u"a--", u"a(b)", u"Sąskaita", u" IDC", u"*"}) {
    ExpectFailure([&] { build_.Equal(field, u""); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"ConditionBuilder.Equal needs a field");
    ExpectFailure([&] { build_.In(field, u"(SELECT 1)"); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"ConditionBuilder.In needs a field");
  }
}

TEST_F(ConditionBuilderTest, BothConditionsAreJoinedWithAnd) {
  EXPECT_EQ(build_.And(build_.Equal(u"A.X", u"1"), build_.Equal(u"B.Y", std::int32_t{2})),
            u"A.X = '1' AND B.Y = 2");
}

TEST_F(ConditionBuilderTest, AConditionThatIsNotThereIsRefused) {
  for (const auto& [first, second] : {std::pair(u"", u"X = 1"), {u"X = 1", u" "}}) {
    ExpectFailure([&] { build_.And(first, second); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"ConditionBuilder.And needs a condition");
  }
}

TEST_F(ConditionBuilderTest, ASubQueryMustComeInParentheses) {
  for (const auto sub_query : {u"", u"SELECT 1", u"(SELECT 1", u"SELECT 1)"}) {
    ExpectFailure([&] { build_.In(u"IDC", sub_query); }, Failure::WrongParameters, u"NVXCommonObjects",
                  u"a sub-query in parentheses");
  }
}

}  // namespace
}  // namespace qva::embedded
