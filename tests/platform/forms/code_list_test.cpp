#include "platform/forms/code_list.h"

#include <gtest/gtest.h>

namespace qva {
namespace {

CodeList Plans() {
  CodeList list;
  list.SetItems({{u"0012", u"Bendrasis planas"}, {u"00", u""}, {u"B – 1", u"su brūkšniu"}});
  return list;
}

TEST(CodeList, ShowsCodesWithTheirTexts) {
  EXPECT_EQ(Plans().Shown(u"0012"), u"0012 – Bendrasis planas");
  EXPECT_EQ(Plans().Shown(u"00"), u"00") << "there is no text";
  EXPECT_EQ(Plans().Shown(u"12"), u"12") << "there is no such code";
}

TEST(CodeList, TakesWhatItShowsForTheCode) {
  for (const char16_t* code : {u"0012", u"00", u"B – 1", u"12"}) {
    EXPECT_EQ(Plans().CodeOf(Plans().Shown(std::u16string_view(code))), code);
  }
}

TEST(CodeList, TakesWhatWasTypedWithoutTheSpacesAroundIt) {
  EXPECT_EQ(Plans().CodeOf(u"  0012 "), u"0012");
  EXPECT_EQ(Plans().CodeOf(u"0012 – Bendrasis"), u"0012 – Bendrasis") << "no item's";
  EXPECT_EQ(Plans().CodeOf(u" "), u"");
}

}  // namespace
}  // namespace qva
