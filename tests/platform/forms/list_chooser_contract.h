// What ListChooser promises, as tests that every adapter passes. A User is made for each test and brings the
// adapter:
// - static bool IsThere(): whether lists can be shown here at all.
// - void Pick(std::u16string_view code): what the user will do with the next list, "Sąrašas": pick this row.
// - void Leave(): the same: leave it.
//   The user fails the test when that list never comes.
// - ListChooser& chooser(): the adapter, once it was told what the user will do.
#pragma once

#include <gtest/gtest.h>

#include "platform/list_chooser.h"
#include "platform/text.h"

namespace qva {

template <class User>
class ListChooserContract : public testing::Test {
 protected:
  void SetUp() override {
    if (!User::IsThere()) GTEST_SKIP() << "no display";
  }

  User user;
  ChoiceList list{
      u"Sąrašas",
      {u"Kodas", u"Pavadinimas"},
      {{u"BALT", u"Baltų žąsys"}, {u"MEDVILNE", u"Medvilnė ir Ko"}, {u"ZUIKIS", u"Žalias zuikis"}}};
};

TYPED_TEST_SUITE_P(ListChooserContract);

TYPED_TEST_P(ListChooserContract, PickingGivesTheNumberOfTheRow) {
  for (std::size_t row = 0; row < this->list.rows.size(); ++row) {
    this->user.Pick(this->list.rows[row].front());
    EXPECT_EQ(this->user.chooser().Choose(this->list, u"MEDVILNE"), row);
  }
}

TYPED_TEST_P(ListChooserContract, ARowIsPickedWhateverCodeIsMarkedAtFirst) {
  for (const std::u16string_view marked : {u"", u"nėra"}) {
    this->user.Pick(u"ZUIKIS");
    EXPECT_EQ(this->user.chooser().Choose(this->list, marked), 2u);
  }
}

TYPED_TEST_P(ListChooserContract, LeavingGivesNothing) {
  this->user.Leave();
  EXPECT_EQ(this->user.chooser().Choose(this->list, u"MEDVILNE"), std::nullopt);
}

TYPED_TEST_P(ListChooserContract, AnEmptyListIsShown) {
  this->list.rows.clear();
  this->user.Leave();
  EXPECT_EQ(this->user.chooser().Choose(this->list, u"MEDVILNE"), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(ListChooserContract, PickingGivesTheNumberOfTheRow,
                            ARowIsPickedWhateverCodeIsMarkedAtFirst, LeavingGivesNothing, AnEmptyListIsShown);

}  // namespace qva
