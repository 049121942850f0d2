// What Environment promises, as tests that every adapter passes. A System is made for each test and brings
// the adapter:
// - Environment& environment(): the adapter.
// - void Set(std::u16string_view name, std::u16string_view value): sets a variable for the test's time.
// - bool IsOwn(const std::u16string& folder): whether it is the one that the library's file lies in.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/environment.h"
#include "platform/text.h"

namespace qva {

template <class System>
class EnvironmentContract : public testing::Test {
 protected:
  /// What a call with a buffer of so many characters, "~" at first, gives and leaves there.
  std::pair<std::uint32_t, std::string> Read(std::u16string_view name, std::size_t size) {
    std::string buffer(size, '~');
    const std::uint32_t result = environment.GetVariable(name, buffer);
    return {result, buffer};
  }

  System system;
  Environment& environment = system.environment();
};

TYPED_TEST_SUITE_P(EnvironmentContract);

TYPED_TEST_P(EnvironmentContract, AVariableIsStoredWithItsZeroAndItsLengthTold) {
  this->system.Set(u"QVA_TEST", u"abc");
  EXPECT_EQ(this->Read(u"QVA_TEST", 6), std::pair(3u, std::string("abc\0~~", 6)));
  EXPECT_EQ(this->Read(u"QVA_TEST", 4), std::pair(3u, std::string("abc\0", 4)));
}

TYPED_TEST_P(EnvironmentContract, ABufferThatIsTooSmallIsLeftAloneAndTheNeededSizeTold) {
  this->system.Set(u"QVA_TEST", u"abc");
  EXPECT_EQ(this->Read(u"QVA_TEST", 3), std::pair(4u, std::string("~~~")));
  EXPECT_EQ(this->Read(u"QVA_TEST", 0).first, 4u);
}

TYPED_TEST_P(EnvironmentContract, NamesIgnoreLetterCase) {
  this->system.Set(u"QVA_TEST", u"abc");
  EXPECT_EQ(this->Read(u"qva_Test", 4).first, 3u);
}

TYPED_TEST_P(EnvironmentContract, CharactersAreThoseOfTheAnsiCodePage) {
  this->system.Set(u"QVA_TEST", u"ąž");
  EXPECT_EQ(this->Read(u"QVA_TEST", 3), std::pair(2u, std::string("\xE0\xFE\0", 3)));
}

TYPED_TEST_P(EnvironmentContract, WhatIsNotThereIsZero) {
  EXPECT_EQ(this->Read(u"QVA_NO_SUCH_VARIABLE", 3).first, 0u);
  EXPECT_EQ(this->Read(u"", 3).first, 0u);
}

TYPED_TEST_P(EnvironmentContract, TheLibraryLiesInItsFolder) {
  const std::u16string folder = this->environment.LibraryFolder();
  EXPECT_TRUE(this->system.IsOwn(folder)) << ToUtf8(folder);
  EXPECT_EQ(folder.find_last_of(u"/\\"), folder.find_last_of(u"/\\", folder.size() - 2))
      << "nothing at its end";
}

REGISTER_TYPED_TEST_SUITE_P(EnvironmentContract, AVariableIsStoredWithItsZeroAndItsLengthTold,
                            ABufferThatIsTooSmallIsLeftAloneAndTheNeededSizeTold, NamesIgnoreLetterCase,
                            CharactersAreThoseOfTheAnsiCodePage, WhatIsNotThereIsZero,
                            TheLibraryLiesInItsFolder);

}  // namespace qva
