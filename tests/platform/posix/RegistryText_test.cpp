#include "platform/posix/RegistryText.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/registry.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kKey = u"HKEY_CURRENT_USER\\Software\\Test";

const std::string kHeader = "Windows Registry Editor Version 5.00\n";
const std::string kSection = kHeader + "\n[HKEY_CURRENT_USER\\Software\\Test]\n";

RegistryData TextData(std::u16string text, std::uint32_t type = kRegSz) {
  text += u'\0';
  return {.type = type, .text = text};
}

RegistryData Bytes(std::uint32_t type, std::string bytes) {
  return {.type = type, .bytes = std::move(bytes)};
}

/// What the value line behind the section's header means; nothing when it is malformed or no value of "a".
std::optional<RegistryData> DataOf(const std::string& line) {
  const auto registry = RegistryText::Parse(kSection + line + "\n");
  const RegistryData* data = registry ? registry->Find(kKey, u"a") : nullptr;
  return data ? std::optional(*data) : std::nullopt;
}

bool IsMalformed(const std::string& text) {
  return !RegistryText::Parse(text);
}

/// The lines that a value "a" with these data adds below its section.
std::string Written(const RegistryData& data) {
  RegistryText registry;
  registry.Set(kKey, u"a", data);
  const std::string text = registry.Utf8();
  EXPECT_TRUE(text.starts_with(kSection)) << text;
  return text.substr(std::min(kSection.size(), text.size()));
}

TEST(RegistryText, EmptyRegistryIsTheHeaderAlone) {
  EXPECT_EQ(RegistryText().Utf8(), kHeader);
  const auto parsed = RegistryText::Parse("");
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->Utf8(), kHeader);
}

TEST(RegistryText, ReadsTextWithEscapes) {
  EXPECT_EQ(DataOf(R"("a"="C:\\Host \"A\" ąž")"), TextData(u"C:\\Host \"A\" ąž"));
  EXPECT_EQ(DataOf(R"("a"="")"), TextData(u""));
  EXPECT_EQ(DataOf(R"(  "a" = "x" ; a comment)"), TextData(u"x"));
  EXPECT_EQ(DataOf(R"("A"="x")"), TextData(u"x"));
}

TEST(RegistryText, BackslashTypedByHandStandsForItself) {
  EXPECT_EQ(DataOf(R"("a"="C:\Host\new")"), TextData(u"C:\\Host\\new"));
}

TEST(RegistryText, ReadsNumbersAndBytes) {
  EXPECT_EQ(DataOf("\"a\"=dword:0000002a"), Bytes(kRegDword, std::string("\x2A\0\0\0", 4)));
  EXPECT_EQ(DataOf("\"a\"=dword:FFFFFFFE"), Bytes(kRegDword, "\xFE\xFF\xFF\xFF"));
  EXPECT_EQ(DataOf("\"a\"=hex:01,fF,2"), Bytes(kRegBinary, "\x01\xFF\x02"));
  EXPECT_EQ(DataOf("\"a\"=hex:"), Bytes(kRegBinary, ""));
  EXPECT_EQ(DataOf("\"a\"=hex(b):01"), Bytes(11, "\x01"));
  EXPECT_EQ(DataOf("\"a\"=hex:01,\\\n  02,\\\r\n\t03 ; end"), Bytes(kRegBinary, "\x01\x02\x03"));
}

TEST(RegistryText, ReadsTextInUtf16Bytes) {
  EXPECT_EQ(DataOf("\"a\"=hex(2):25,00,05,01,00,00"), TextData(u"%ą", kRegExpandSz));
  EXPECT_EQ(DataOf("\"a\"=hex(1):61,00"), TextData(u"a"));  // the terminating zero is added
  EXPECT_EQ(DataOf("\"a\"=hex(1):"),
            (RegistryData{.type = kRegSz, .text = u"", .bytes = ""}));  // but to nothing
}

TEST(RegistryText, ReadsTheDefaultValueByTheEmptyName) {
  const auto registry = RegistryText::Parse(kSection + "@=\"x\"\n");
  ASSERT_TRUE(registry);
  ASSERT_NE(registry->Find(kKey, u""), nullptr);
  EXPECT_EQ(*registry->Find(kKey, u""), TextData(u"x"));
}

TEST(RegistryText, ReadsNamesWithEscapes) {
  const auto registry = RegistryText::Parse(kSection + R"("C:\\x=\"1\""="y")"
                                                       "\n");
  ASSERT_TRUE(registry);
  EXPECT_NE(registry->Find(kKey, u"c:\\X=\"1\""), nullptr);
}

TEST(RegistryText, RefusesWhatItCannotRead) {
  EXPECT_TRUE(IsMalformed("\n"));
  EXPECT_TRUE(IsMalformed("REGEDIT4\n"));
  EXPECT_TRUE(IsMalformed("[HKEY_CURRENT_USER\\A]\n"));
  EXPECT_TRUE(IsMalformed(kHeader + "\xFF\n"));
  EXPECT_TRUE(IsMalformed(kHeader + "[HKEY_CURRENT_USER\\A\n"));
  EXPECT_TRUE(IsMalformed(kHeader + "[-HKEY_CURRENT_USER\\A]\n"));
  EXPECT_TRUE(IsMalformed(kHeader + "\"a\"=\"outside of any section\"\n"));
  for (const char* line : {"\"a\"",
                           "\"a",
                           "\"a\"=",
                           "\"a\"=-",
                           "\"a\"=x",
                           "\"a\"=\"x",
                           "\"a\"=\"C:\\\"",
                           "\"a\"=\"x\"y",
                           "\"a\" \"x\"",
                           "@",
                           "@x=\"y\"",
                           "\"a\"=dword:",
                           "\"a\"=dword:123456789",
                           "\"a\"=dword:1g",
                           "\"a\"=hex:1g",
                           "\"a\"=hex:100",
                           "\"a\"=hex:01 02",
                           "\"a\"=hex(:01",
                           "\"a\"=hex(1:01",
                           "\"a\"=hex(x):01",
                           "\"a\"=hex 01",
                           "\"a\"=hex:01,\\"}) {
    EXPECT_TRUE(IsMalformed(kSection + line + "\n")) << line;
  }
}

TEST(RegistryText, CommentThatEndsInABackslashHidesNothing) {
  EXPECT_EQ(DataOf("\"b\"=\"x\" ; C:\\\n\"a\"=\"y\""), TextData(u"y"));
  EXPECT_EQ(DataOf("\"b\"=hex:01 ; C:\\\n\"a\"=\"y\""), TextData(u"y"));
}

TEST(RegistryText, KeepsWhatItDoesNotKnow) {
  const std::string text =
      "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n"
      "; my settings\r\n"
      "\r\n"
      "[HKEY_CURRENT_USER\\Software\\Test] ; here\r\n"
      "\"b\" = \"x\"\r\n"
      "something else\r\n"
      "\"c\"=hex:01,\\\r\n  02\r\n"
      "[HKEY_LOCAL_MACHINE\\A]\r\n"
      "@=dword:1\r\n";
  auto registry = RegistryText::Parse(text);
  ASSERT_TRUE(registry);
  EXPECT_EQ(registry->Utf8(), text);

  registry->Set(kKey, u"a", TextData(u"y"));
  std::string with_a = text;
  const std::string before_a = "\"c\"=hex:01,\\\r\n  02\r\n";
  with_a.insert(with_a.find(before_a) + before_a.size(), "\"a\"=\"y\"\r\n");
  EXPECT_EQ(registry->Utf8(), with_a);
}

TEST(RegistryText, LastLineMayLackItsEnd) {
  auto registry = RegistryText::Parse(kSection + "\"b\"=\"x\"");
  ASSERT_TRUE(registry);
  registry->Set(kKey, u"a", TextData(u"y"));
  EXPECT_EQ(registry->Utf8(), kSection + "\"b\"=\"x\"\n\"a\"=\"y\"\n");
}

TEST(RegistryText, ReplacesAValueInItsPlaceAndSpelling) {
  auto registry = RegistryText::Parse(kSection + "\"Ąb\"=hex:01,\\\n  02\n; after\n");
  ASSERT_TRUE(registry);
  registry->Set(u"hkey_current_user\\SOFTWARE\\test", u"ąB", TextData(u"y"));
  EXPECT_EQ(registry->Utf8(), kSection + "\"Ąb\"=\"y\"\n; after\n");
}

TEST(RegistryText, LastOfSeveralValuesWinsAndAllAreDeleted) {
  const std::string again = "[HKEY_CURRENT_USER\\SOFTWARE\\Test]\n";
  auto registry = RegistryText::Parse(kSection + "\"a\"=\"1\"\n" + again + "\"a\"=\"2\"\n\"b\"=\"3\"\n");
  ASSERT_TRUE(registry);
  EXPECT_EQ(registry->Find(kKey, u"a")->text, TextData(u"2").text);
  registry->Set(kKey, u"a", TextData(u"4"));
  EXPECT_EQ(registry->Find(kKey, u"a")->text, TextData(u"4").text);
  const auto read_again = RegistryText::Parse(registry->Utf8());
  ASSERT_TRUE(read_again);
  EXPECT_EQ(read_again->Find(kKey, u"a")->text, TextData(u"4").text);
  EXPECT_TRUE(registry->Delete(kKey, u"A"));
  EXPECT_EQ(registry->Find(kKey, u"a"), nullptr);
  EXPECT_FALSE(registry->Delete(kKey, u"a"));
  EXPECT_EQ(registry->Utf8(), kSection + again + "\"b\"=\"3\"\n");
}

TEST(RegistryText, KeyIsThereWithAnyKeyBelowIt) {
  const auto registry = RegistryText::Parse(kSection);
  ASSERT_TRUE(registry);
  EXPECT_TRUE(registry->HasKey(kKey));
  EXPECT_TRUE(registry->HasKey(u"hkey_current_user\\SOFTWARE"));
  EXPECT_FALSE(registry->HasKey(u"HKEY_CURRENT_USER\\Soft"));
  EXPECT_FALSE(registry->HasKey(u"HKEY_CURRENT_USER\\Software\\Test\\More"));
  EXPECT_EQ(registry->Find(u"HKEY_CURRENT_USER\\Software", u"a"), nullptr);
}

TEST(RegistryText, AddsAKeyOnce) {
  RegistryText registry;
  registry.AddKey(kKey);
  registry.AddKey(kKey);
  registry.AddKey(u"HKEY_CURRENT_USER\\Software");
  EXPECT_EQ(registry.Utf8(), kSection);
}

TEST(RegistryText, ValueOfAKeyThatOnlyItsChildrenNameGetsASection) {
  auto registry = RegistryText::Parse(kSection);
  ASSERT_TRUE(registry);
  registry->Set(u"HKEY_CURRENT_USER\\Software", u"", TextData(u"x"));
  EXPECT_EQ(registry->Utf8(), kSection + "\n[HKEY_CURRENT_USER\\Software]\n@=\"x\"\n");
}

TEST(RegistryText, KeyNamesMayHoldBrackets) {
  RegistryText registry;
  registry.Set(u"HKEY_CURRENT_USER\\a[1];b", u"", TextData(u"x"));
  const auto again = RegistryText::Parse(registry.Utf8());
  ASSERT_TRUE(again);
  EXPECT_NE(again->Find(u"HKEY_CURRENT_USER\\a[1];b", u""), nullptr);
}

TEST(RegistryText, WritesReadableTextWherePossible) {
  EXPECT_EQ(Written(TextData(u"C:\\Host \"A\" ąž €")), "\"a\"=\"C:\\\\Host \\\"A\\\" ąž €\"\n");
  EXPECT_EQ(Written(TextData(u"")), "\"a\"=\"\"\n");
  EXPECT_EQ(Written(Bytes(kRegDword, std::string("\x2A\0\0\x80", 4))), "\"a\"=dword:8000002a\n");
  EXPECT_EQ(Written(Bytes(kRegBinary, "\x01\xFF")), "\"a\"=hex:01,ff\n");
  EXPECT_EQ(Written(Bytes(kRegBinary, "")), "\"a\"=hex:\n");
  EXPECT_EQ(Written(Bytes(kRegDword, "\x01")), "\"a\"=hex(4):01\n");
  EXPECT_EQ(Written(TextData(u"%ą", kRegExpandSz)), "\"a\"=hex(2):25,00,05,01,00,00\n");
}

TEST(RegistryText, WritesLinesOfTextAsBytes) {
  EXPECT_EQ(Written(TextData(u"a\n")), "\"a\"=hex(1):61,00,0a,00,00,00\n");
  EXPECT_EQ(Written({.type = kRegSz, .text = u"", .bytes = ""}), "\"a\"=hex(1):\n") << "not even a zero";
}

TEST(RegistryText, BreaksLongBytesIntoLines) {
  const std::string lines = Written(Bytes(kRegBinary, std::string(60, '\x11')));
  std::size_t longest = 0;
  for (std::size_t start = 0; start < lines.size();) {
    const std::size_t end = lines.find('\n', start);
    longest = std::max(longest, end - start);
    start = end + 1;
  }
  EXPECT_LE(longest, 80u) << lines;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3) << lines;
}

TEST(RegistryText, ReadsBackWhatItWrites) {
  std::string all_bytes;
  for (int byte = 0; byte < 256; ++byte) all_bytes += static_cast<char>(byte);
  std::u16string controls;
  for (char16_t c = 0; c < 0x80; ++c) controls += c;
  const RegistryData data[] = {
      TextData(u""),
      TextData(u"\\"),
      TextData(u"\""),
      TextData(u" ; x \\"),
      TextData(u"ąž€😀\uFFFD"),
      TextData(std::u16string{0xD800, u'a'}),
      TextData(controls),
      TextData(controls, kRegExpandSz),
      TextData(std::u16string(u"one\0two\0", 8), 7),
      Bytes(kRegBinary, all_bytes),
      Bytes(kRegDword, "\x01\x02\x03\x04"),
      Bytes(kRegDword, all_bytes),
      Bytes(0, ""),
      Bytes(0xFFFFFFFF, "x"),
  };
  for (const RegistryData& written : data) {
    RegistryText registry;
    registry.Set(kKey, u"name \\ \" = ; ą", written);
    const auto again = RegistryText::Parse(registry.Utf8());
    ASSERT_TRUE(again) << registry.Utf8();
    const RegistryData* read = again->Find(kKey, u"name \\ \" = ; ą");
    ASSERT_NE(read, nullptr) << registry.Utf8();
    EXPECT_EQ(*read, written) << registry.Utf8();
  }
}

TEST(RegistryText, TellsTheLineOfAMistake) {
  const std::string good = kHeader + "\n[HKEY_CURRENT_USER\\A]\n";
  const auto line_of = [](const std::string& text) {
    int line = 0;
    EXPECT_FALSE(RegistryText::Parse(text, &line));
    return line;
  };
  EXPECT_EQ(line_of("no header\n"), 1);
  EXPECT_EQ(line_of(good + "\"a\"=\"unended\n\"b\"=\"x\"\n"), 4);
  EXPECT_EQ(line_of(good + "\"a\"=\"x\"\n; \xFF\n"), 5);
  EXPECT_EQ(line_of(good + "\"a\"=hex:01,\\\n  0x\n\"b\"=\"x\"\n"), 4) << "where the value begins";
  EXPECT_EQ(line_of(good + "[-HKEY_CURRENT_USER\\A]\n"), 4);
}

}  // namespace
}  // namespace qva
