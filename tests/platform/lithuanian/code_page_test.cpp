#include "platform/lithuanian/code_page.h"

#include <gtest/gtest.h>

#include <set>

namespace qva {
namespace {

// Bytes to which Windows-1257 gives no character.
const std::set<int> kUnassigned = {0x81, 0x83, 0x88, 0x8A, 0x8C, 0x90, 0x98, 0x9A, 0x9C, 0x9F, 0xA1, 0xA5};

TEST(CodePage1257, EveryAssignedByteRoundTrips) {
  std::set<char16_t> characters;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    const std::u16string text = FromCodePage1257(bytes);
    ASSERT_EQ(text.size(), 1u);
    if (kUnassigned.contains(byte)) {
      EXPECT_EQ(text, u"\uFFFD") << byte;
      EXPECT_EQ(ToCodePage1257(text), "?") << byte;
    } else {
      EXPECT_EQ(ToCodePage1257(text), bytes) << byte;
      EXPECT_TRUE(characters.insert(text[0]).second) << byte;
    }
  }
  EXPECT_EQ(characters.size(), 256u - kUnassigned.size());
}

TEST(CodePage1257, HasTheLithuanianLettersAndPunctuation) {
  EXPECT_EQ(ToCodePage1257(u"ĄČĘĖĮŠŲŪŽ"), "\xC0\xC8\xC6\xCB\xC1\xD0\xD8\xDB\xDE");
  EXPECT_EQ(ToCodePage1257(u"ąčęėįšųūž"), "\xE0\xE8\xE6\xEB\xE1\xF0\xF8\xFB\xFE");
  EXPECT_EQ(ToCodePage1257(u"€„“–"), "\x80\x84\x93\x96");
  EXPECT_EQ(FromCodePage1257("\xE0\xE8\x80"), u"ąč€");
}

TEST(CodePage1257, CharactersThatItLacksBecomeQuestionMarks) {
  EXPECT_EQ(ToCodePage1257(u"ñя\u0081"), "???");
}

TEST(CodePage1257, KeepsZerosInside) {
  const std::string bytes("a\0b\0", 4);
  EXPECT_EQ(ToCodePage1257(FromCodePage1257(bytes)), bytes);
}

}  // namespace
}  // namespace qva
