#include "platform/memory/excel/Area.h"

#include <gtest/gtest.h>

namespace qva::memory {
namespace {

TEST(Area, ReadsCellsRangesColumnsAndRows) {
  EXPECT_EQ(ParseArea(u"A1"), (Area{1, 1, 1, 1}));
  EXPECT_EQ(ParseArea(u"$b$12"), (Area{12, 2, 1, 1}));
  EXPECT_EQ(ParseArea(u"IV65536"), (Area{65536, 256, 1, 1}));
  EXPECT_EQ(ParseArea(u"C3:$A1"), (Area{1, 1, 3, 3}));
  EXPECT_EQ(ParseArea(u"B:D"), (Area{1, 2, kRowCount, 3}));
  EXPECT_EQ(ParseArea(u"$3:2"), (Area{2, 1, 2, kColumnCount}));
}

TEST(Area, RefusesWhatIsNoAddressOfTheGrid) {
  for (const char16_t* text : {u"", u"A", u"1", u"A0", u"A65537", u"IW1", u"AAA1", u"A1B", u"A1:", u":A1",
                               u"A1:B", u"A:1", u"A1:B2:C3", u"Ą1", u"A1 ", u"$", u"A$", u"A99999999999"}) {
    EXPECT_EQ(ParseArea(text), std::nullopt) << std::string(text, text + std::u16string_view(text).size());
  }
}

TEST(Area, WritesAbsoluteAndRelativeAddresses) {
  EXPECT_EQ(AreaText({1, 1, 1, 1}), u"$A$1");
  EXPECT_EQ(AreaText({1, 27, 2, 230}), u"$AA$1:$IV$2");
  EXPECT_EQ(AreaText({2, 2, 2, 2}, false, false), u"B2:C3");
  EXPECT_EQ(AreaText({2, 2, 1, 1}, true, false), u"B$2");
  EXPECT_EQ(AreaText({1, 2, kRowCount, 1}), u"$B:$B");
  EXPECT_EQ(AreaText({3, 1, 1, kColumnCount}), u"$3:$3");
  EXPECT_EQ(AreaText(kWholeSheet), u"$1:$65536");
}

TEST(Area, KnowsTheGrid) {
  EXPECT_EQ(AreaInGrid(65536, 256, 1, 1), (Area{65536, 256, 1, 1}));
  EXPECT_EQ(AreaInGrid(65536, 256, 2, 1), std::nullopt);
  EXPECT_EQ(AreaInGrid(65536, 256, 1, 2), std::nullopt);
  EXPECT_EQ(AreaInGrid(0, 1, 1, 1), std::nullopt);
  EXPECT_EQ(AreaInGrid(1, 0, 1, 1), std::nullopt);
  EXPECT_EQ(ParseColumn(u"iv"), 256);
  EXPECT_EQ(ParseColumn(u"IW"), std::nullopt);
}

TEST(Area, SpansTwoAreas) {
  EXPECT_EQ(Around({5, 5, 1, 1}, {2, 7, 2, 2}), (Area{2, 5, 4, 4}));
}

}  // namespace
}  // namespace qva::memory
