// What MessageBox promises, as tests that every adapter passes. A User is made for each test and brings the
// adapter:
// - static bool IsThere(): whether boxes can be shown here at all.
// - void Press(std::u16string_view title, std::int32_t button): what the user will do with the next
//   box, which has this title: press the button in this place, the first being 1.
// - void Close(std::u16string_view title): the same: close it.
// - MessageBox& box(): the adapter, once it was told what the user will do.
#pragma once

#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/message_box.h"
#include "platform/text.h"

namespace qva {

template <class User>
class MessageBoxContract : public testing::Test {
 protected:
  void SetUp() override {
    if (!User::IsThere()) GTEST_SKIP() << "no display";
  }

  User user;
  const std::u16string captions[3] = {u"Įrašyti", u"Neįrašyti", u"Atšaukti"};
};

TYPED_TEST_SUITE_P(MessageBoxContract);

TYPED_TEST_P(MessageBoxContract, AskingGivesTheNumberOfThePressedButton) {
  for (std::int32_t button = 1; button <= 3; ++button) {
    this->user.Press(u"Klausimas", button);
    EXPECT_EQ(this->user.box().Ask(u"Ar įrašyti?", u"Klausimas", this->captions), button);
  }
}

TYPED_TEST_P(MessageBoxContract, ClosingPressesTheLastButton) {
  this->user.Close(u"Klausimas");
  EXPECT_EQ(this->user.box().Ask(u"Ar įrašyti?", u"Klausimas", this->captions), 3);
}

TYPED_TEST_P(MessageBoxContract, ATextIsShownUntilItIsRead) {
  this->user.Press(u"Klaida", 1);
  EXPECT_EQ(this->user.box().Show(u"Tekstas", vbCritical, u"Klaida"), vbOK);
  this->user.Press(u"Pranešimas", 1);
  EXPECT_EQ(this->user.box().Show(u"Tekstas", vbOKOnly, u"Pranešimas"), vbOK);
}

TYPED_TEST_P(MessageBoxContract, WithoutATitleABoxHasTheLibrarysName) {
  this->user.Press(kLibraryName, 1);
  EXPECT_EQ(this->user.box().Show(u"Tekstas", vbOKOnly, u""), vbOK);
  this->user.Press(kLibraryName, 2);
  EXPECT_EQ(this->user.box().Ask(u"Ar įrašyti?", u"", this->captions), 2);
}

REGISTER_TYPED_TEST_SUITE_P(MessageBoxContract, AskingGivesTheNumberOfThePressedButton,
                            ClosingPressesTheLastButton, ATextIsShownUntilItIsRead,
                            WithoutATitleABoxHasTheLibrarysName);

}  // namespace qva
