#include "platform/forms/list_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ListFilterTest : public testing::Test {
 protected:
  std::vector<std::size_t> RowsWith(std::u16string_view text) {
    filter.Filter(text);
    return filter.rows();
  }
  const ChoiceList list{
      .rows = {{u"MEDVILNE", u"Medvilnė ir Ko"}, {u"BALT", u"Baltų žąsys"}, {u"01", u""}, {}, {u"02"}}};
  ListFilter filter{list};
};

TEST_F(ListFilterTest, FindsInEveryColumnWhateverTheCaseAndTheMarks) {
  EXPECT_THAT(filter.rows(), ElementsAre(0u, 1u, 2u, 3u, 4u));
  EXPECT_THAT(RowsWith(u"medv"), ElementsAre(0u));
  EXPECT_THAT(RowsWith(u"VILNĖ IR"), ElementsAre(0u));
  EXPECT_THAT(RowsWith(u"zasys"), ElementsAre(1u));
  EXPECT_THAT(RowsWith(u"ŽĄSYS"), ElementsAre(1u));
  EXPECT_THAT(RowsWith(u"l"), ElementsAre(0u, 1u));
  EXPECT_THAT(RowsWith(u"1"), ElementsAre(2u));
  EXPECT_THAT(RowsWith(u""), ElementsAre(0u, 1u, 2u, 3u, 4u));
  EXPECT_THAT(RowsWith(u"nėra"), IsEmpty());
}

TEST_F(ListFilterTest, DoesNotFindAcrossColumns) {
  EXPECT_THAT(RowsWith(u"em"), IsEmpty());
  const ChoiceList nothing;
  EXPECT_THAT(ListFilter(nothing).rows(), IsEmpty());
}

TEST_F(ListFilterTest, GoesFromCodesToRowsAndFromRowsToLines) {
  EXPECT_EQ(filter.RowOf(u"BALT"), 1u);
  EXPECT_EQ(filter.RowOf(u"Balt"), 0u);
  filter.Filter(u"0");
  EXPECT_EQ(filter.LineOf(4), 1u);
  EXPECT_EQ(filter.LineOf(1), 0u) << "its row is not shown";
}

TEST_F(ListFilterTest, TellsWhatStandsInItsLines) {
  filter.Filter(u"0");
  EXPECT_EQ(filter.TextAt(0, 0), u"01");
  EXPECT_EQ(filter.TextAt(1, 0), u"02");
  EXPECT_EQ(filter.TextAt(1, 1), u"") << "no such column";
  EXPECT_EQ(filter.TextAt(2, 0), u"") << "no such line";
}

}  // namespace
}  // namespace qva
