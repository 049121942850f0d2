// What Locale promises, as tests that every adapter passes. A System is made for each test and brings the
// adapter:
// - Locale& locale(): the adapter, for a Lithuanian user.
// - void SetShortDate(std::u16string_view pattern): the user changes the pattern of short dates.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/date.h"
#include "platform/locale.h"
#include "tests/readable_values.h"

namespace qva {

template <class System>
class LocaleContract : public testing::Test {
 protected:
  std::set<std::u16string> Names(DateName name, int count) {
    std::set<std::u16string> names;
    for (int number = 0; number < count; ++number) names.insert(locale.NameOf(name, number));
    return names;
  }

  System system;
  Locale& locale = system.locale();
};

TYPED_TEST_SUITE_P(LocaleContract);

TYPED_TEST_P(LocaleContract, PatternsWriteWhatIsReadAgain) {
  const Date time{DateFromParts(2024, 11, 29).serial + 15.0 / 24 + 7.0 / 1440};
  const std::u16string text = ShortDateText(time, this->locale) + u" " + LongTimeText(time, this->locale);
  EXPECT_EQ(ParseDate(text, this->locale), time) << ToUtf8(text);
}

TYPED_TEST_P(LocaleContract, SettingsAreReadAnewOnEachCall) {
  for (const std::u16string_view pattern : {u"dd.MM.yyyy", u"yyyy-MM-dd"}) {
    this->system.SetShortDate(pattern);
    EXPECT_EQ(this->locale.ShortDatePattern(), pattern);
  }
}

TYPED_TEST_P(LocaleContract, EveryPartOfADateHasANameOfItsOwn) {
  for (const DateName name : {DateName::Month, DateName::MonthOfDate, DateName::ShortMonth}) {
    EXPECT_EQ(this->Names(name, 12).size(), 12u);
    EXPECT_FALSE(this->Names(name, 12).contains(u""));
  }
  for (const DateName name : {DateName::Weekday, DateName::ShortWeekday}) {
    EXPECT_EQ(this->Names(name, 7).size(), 7u);
    EXPECT_FALSE(this->Names(name, 7).contains(u""));
  }
  EXPECT_EQ(this->Names(DateName::HalfOfDay, 2).size(), 2u);
  EXPECT_EQ(ToLower(this->locale.NameOf(DateName::Month, 0)), u"sausis");
  EXPECT_EQ(ToLower(this->locale.NameOf(DateName::MonthOfDate, 10)), u"lapkričio");
  EXPECT_EQ(ToLower(this->locale.NameOf(DateName::Weekday, 0)), u"pirmadienis");
}

TYPED_TEST_P(LocaleContract, NumbersHaveADecimalSeparator) {
  EXPECT_EQ(this->locale.DecimalSeparator(), u",");
}

TYPED_TEST_P(LocaleContract, AnsiTextComesBack) {
  EXPECT_EQ(this->locale.ToAnsi(u"Ąžuolas"), "\xC0\xFEuolas");
  const std::u16string text(u"C:\\a\0b Žąsys", 12);
  EXPECT_EQ(this->locale.FromAnsi(this->locale.ToAnsi(text)), text);
  EXPECT_EQ(this->locale.ToAnsi(u""), "");
  EXPECT_EQ(this->locale.FromAnsi(""), u"");
}

TYPED_TEST_P(LocaleContract, ACharacterThatTheCodePageLacksIsAQuestionMark) {
  EXPECT_EQ(this->locale.ToAnsi(u"a漢b"), "a?b");
  EXPECT_EQ(this->locale.ToAnsi(std::u16string(1, u'\xD800')), "?") << "half a character";
}

TYPED_TEST_P(LocaleContract, EveryByteIsACharacter) {
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(this->locale.FromAnsi(std::string(1, static_cast<char>(byte))).size(), 1u) << byte;
  }
}

REGISTER_TYPED_TEST_SUITE_P(LocaleContract, PatternsWriteWhatIsReadAgain, SettingsAreReadAnewOnEachCall,
                            EveryPartOfADateHasANameOfItsOwn, NumbersHaveADecimalSeparator, AnsiTextComesBack,
                            ACharacterThatTheCodePageLacksIsAQuestionMark, EveryByteIsACharacter);

}  // namespace qva
