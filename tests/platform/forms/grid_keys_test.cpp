#include "platform/forms/grid_keys.h"

#include <gtest/gtest.h>

namespace qva {
namespace {

constexpr GridExtent kExtent{.lines = 3, .columns = 3, .page = 2};

std::optional<GridCell> From(GridCell cell, GridKey key) {
  return KeyTarget(key, false, false, cell, kExtent);
}
std::optional<GridCell> WithCtrl(GridCell cell, GridKey key) {
  return KeyTarget(key, true, false, cell, kExtent);
}
std::optional<GridCell> WithShift(GridCell cell, GridKey key) {
  return KeyTarget(key, false, true, cell, kExtent);
}

TEST(KeyTarget, ArrowsStopAtTheEnds) {
  EXPECT_EQ(From({1, 1}, GridKey::Left), (GridCell{1, 0}));
  EXPECT_EQ(From({1, 0}, GridKey::Left), (GridCell{1, 0}));
  EXPECT_EQ(From({1, 1}, GridKey::Right), (GridCell{1, 2}));
  EXPECT_EQ(From({1, 2}, GridKey::Right), (GridCell{1, 2}));
  EXPECT_EQ(From({1, 1}, GridKey::Up), (GridCell{0, 1}));
  EXPECT_EQ(From({0, 1}, GridKey::Up), (GridCell{0, 1}));
  EXPECT_EQ(From({1, 1}, GridKey::Down), (GridCell{2, 1}));
  EXPECT_EQ(From({2, 1}, GridKey::Down), (GridCell{2, 1}));
}

TEST(KeyTarget, PageKeysGoByWhatIsInSightAndStopAtTheEnds) {
  EXPECT_EQ(From({0, 2}, GridKey::PageDown), (GridCell{2, 2}));
  EXPECT_EQ(From({1, 2}, GridKey::PageDown), (GridCell{2, 2}));
  EXPECT_EQ(From({2, 2}, GridKey::PageUp), (GridCell{0, 2}));
  EXPECT_EQ(From({1, 2}, GridKey::PageUp), (GridCell{0, 2}));
}

TEST(KeyTarget, HomeAndEndGoToTheEndsOfTheLineAndWithCtrlToTheCorners) {
  EXPECT_EQ(From({1, 1}, GridKey::Home), (GridCell{1, 0}));
  EXPECT_EQ(From({1, 1}, GridKey::End), (GridCell{1, 2}));
  EXPECT_EQ(WithCtrl({1, 1}, GridKey::Home), (GridCell{0, 0}));
  EXPECT_EQ(WithCtrl({1, 1}, GridKey::End), (GridCell{2, 2}));
}

TEST(KeyTarget, TabGoesCellByCellAndLeavesTheGridAtItsEnds) {
  EXPECT_EQ(From({0, 1}, GridKey::Tab), (GridCell{0, 2}));
  EXPECT_EQ(From({0, 2}, GridKey::Tab), (GridCell{1, 0}));
  EXPECT_EQ(From({2, 2}, GridKey::Tab), std::nullopt);
  EXPECT_EQ(WithShift({1, 0}, GridKey::Tab), (GridCell{0, 2}));
  EXPECT_EQ(WithShift({0, 0}, GridKey::Tab), std::nullopt);
}

TEST(KeyTarget, LeavesTabAndPageKeysWithCtrlToTheForm) {
  EXPECT_EQ(WithCtrl({0, 2}, GridKey::PageDown), std::nullopt);
  EXPECT_EQ(WithCtrl({2, 2}, GridKey::PageUp), std::nullopt);
  EXPECT_EQ(WithCtrl({0, 2}, GridKey::Tab), std::nullopt);
  EXPECT_EQ(KeyTarget(GridKey::Tab, true, true, {1, 2}, kExtent), std::nullopt);
}

TEST(KeyTarget, LeadsNowhereInAGridWithoutCells) {
  for (const GridKey key : {GridKey::Tab, GridKey::Down, GridKey::End, GridKey::PageDown}) {
    EXPECT_EQ(KeyTarget(key, false, false, {}, {.lines = 0, .columns = 3}), std::nullopt);
    EXPECT_EQ(KeyTarget(key, false, false, {}, {.lines = 3, .columns = 0}), std::nullopt);
  }
}

}  // namespace
}  // namespace qva
