#include "platform/forms/list_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::u16string>;

TEST(ListFilter, FindsInEveryColumnWhateverTheCaseAndTheMarks) {
  const ListFilter filter({{u"MEDVILNE", u"Medvilnė ir Ko"}, {u"BALT", u"Baltų žąsys"}, {u"01", u""}});
  EXPECT_THAT(filter.RowsWith(u"medv"), ElementsAre(0u));
  EXPECT_THAT(filter.RowsWith(u"VILNĖ IR"), ElementsAre(0u));
  EXPECT_THAT(filter.RowsWith(u"zasys"), ElementsAre(1u));
  EXPECT_THAT(filter.RowsWith(u"ŽĄSYS"), ElementsAre(1u));
  EXPECT_THAT(filter.RowsWith(u"l"), ElementsAre(0u, 1u));
  EXPECT_THAT(filter.RowsWith(u"1"), ElementsAre(2u));
  EXPECT_THAT(filter.RowsWith(u""), ElementsAre(0u, 1u, 2u));
  EXPECT_THAT(filter.RowsWith(u"nėra"), IsEmpty());
}

TEST(ListFilter, DoesNotFindAcrossColumns) {
  const ListFilter filter(std::vector<Texts>{{u"ab", u"cd"}});
  EXPECT_THAT(filter.RowsWith(u"bc"), IsEmpty());
  const std::vector<Texts> nothing;
  EXPECT_THAT(ListFilter(nothing).RowsWith(u""), IsEmpty());
}

}  // namespace
}  // namespace qva
