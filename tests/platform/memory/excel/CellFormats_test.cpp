#include "platform/memory/excel/CellFormats.h"

#include <gtest/gtest.h>

#include "platform/excel_constants.h"
#include "tests/platform/core_test.h"

namespace qva::memory {
namespace {

TEST(CellFormats, BeginWithExcelsOwn) {
  const CellFormats formats;
  EXPECT_EQ(formats[FormatProperty::Locked].At(1, 1), Value(true));
  EXPECT_EQ(formats[FormatProperty::FontColorIndex].At(9, 9), Value(std::int32_t{xlColorIndexAutomatic}));
  EXPECT_EQ(formats[FormatProperty::InteriorColorIndex].At(9, 9), Value(std::int32_t{xlColorIndexNone}));
  EXPECT_EQ(formats[FormatProperty::NumberFormat].At(9, 9), Value(u"General"));
}

TEST(CellFormats, TheLatestSettingHoldsWhereRowColumnAndCellMeet) {
  FormatLayer layer(0);
  layer.Set({2, 2, 1, 1}, 1);
  layer.Set({1, 2, kRowCount, 1}, 2);
  EXPECT_EQ(layer.At(2, 2), Value(2));
  layer.Set({2, 1, 1, kColumnCount}, 3);
  EXPECT_EQ(layer.At(2, 2), Value(3));
  EXPECT_EQ(layer.At(3, 2), Value(2));
  EXPECT_EQ(layer.At(2, 3), Value(3));
  layer.Set({2, 2, 1, 1}, 4);
  EXPECT_EQ(layer.At(2, 2), Value(4));
  layer.Set(kWholeSheet, 5);
  EXPECT_EQ(layer.At(2, 2), Value(5));
  EXPECT_EQ(layer.At(3, 2), Value(5));
}

TEST(CellFormats, GiveWhatAllCellsHaveOrNothing) {
  FormatLayer layer(0);
  EXPECT_EQ(layer.Common(kWholeSheet), Value(0));
  layer.Set({1, 2, kRowCount, 1}, 2);
  EXPECT_EQ(layer.Common({1, 2, kRowCount, 1}), Value(2));
  EXPECT_EQ(layer.Common(kWholeSheet), std::nullopt);
  layer.Set({5, 2, 1, 1}, 7);
  EXPECT_EQ(layer.Common({1, 2, 6, 1}), std::nullopt);
  EXPECT_EQ(layer.Common({1, 2, 4, 1}), Value(2));
  layer.Set({5, 2, 1, 1}, 2);
  EXPECT_EQ(layer.Common({1, 2, kRowCount, 1}), Value(2));
}

}  // namespace
}  // namespace qva::memory
