#include "platform/filesystem/windows_path.h"

#include <gtest/gtest.h>

#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

const WindowsPath kCurrent{.root = u"C:", .names = {u"Host", u"Bin"}};

/// The path written out, the root in brackets; the number of the error that it raises.
std::string Parsed(std::u16string_view path) {
  WindowsPath parsed;
  if (const auto raised = RaisedBy([&] { parsed = ParseWindowsPath(path, kCurrent); }))
    return std::to_string(raised);
  std::string text = "[" + ToUtf8(parsed.root) + "]";
  for (const auto& name : parsed.names) text += " " + ToUtf8(name);
  return text + (parsed.ends_in_separator ? " \\" : "");
}

TEST(ParseWindowsPath, TakesAWholePathApart) {
  EXPECT_EQ(Parsed(u"C:\\Ataskaitos\\x.xls"), "[C:] Ataskaitos x.xls");
  EXPECT_EQ(Parsed(u"d:/a/b"), "[d:] a b");
  EXPECT_EQ(Parsed(u"C:\\"), "[C:] \\");
  EXPECT_EQ(Parsed(u"C:\\a\\\\b\\"), "[C:] a b \\");
}

TEST(ParseWindowsPath, KnowsServersAndShares) {
  EXPECT_EQ(Parsed(u"\\\\server\\share\\a b\\x"), "[\\\\server\\share] a b x");
  EXPECT_EQ(Parsed(u"//server/share"), "[\\\\server\\share]");
  EXPECT_EQ(Parsed(u"\\\\server"), "76");
  EXPECT_EQ(Parsed(u"\\\\"), "76");
}

TEST(ParseWindowsPath, StartsFromTheCurrentFolder) {
  EXPECT_EQ(Parsed(u"x.txt"), "[C:] Host Bin x.txt");
  EXPECT_EQ(Parsed(u"a\\x.txt"), "[C:] Host Bin a x.txt");
  EXPECT_EQ(Parsed(u"\\x.txt"), "[C:] x.txt");
  EXPECT_EQ(Parsed(u"c:x.txt"), "[C:] Host Bin x.txt");
  EXPECT_EQ(Parsed(u"D:x.txt"), "[D:] x.txt");
}

TEST(ParseWindowsPath, ResolvesDots) {
  EXPECT_EQ(Parsed(u"."), "[C:] Host Bin");
  EXPECT_EQ(Parsed(u"..\\x"), "[C:] Host x");
  EXPECT_EQ(Parsed(u"C:\\a\\.\\b\\..\\c"), "[C:] a c");
}

TEST(ParseWindowsPath, DotsDoNotLeadOutOfTheRoot) {
  EXPECT_EQ(Parsed(u"..\\..\\..\\..\\x"), "[C:] x");
  EXPECT_EQ(Parsed(u"\\\\server\\share\\..\\..\\x"), "[\\\\server\\share] x");
}

TEST(ParseWindowsPath, DotsAreNeitherServersNorShares) {
  for (const char16_t* path : {u"\\\\..\\..\\evil", u"\\\\.\\share\\x", u"\\\\server\\..\\x", u"//../.."}) {
    EXPECT_EQ(Parsed(path), "52") << ToUtf8(path);
  }
}

TEST(ParseWindowsPath, RefusesWhatWindowsRefuses) {
  EXPECT_EQ(Parsed(u""), "76");
  for (const char16_t bad : std::u16string_view(u"<>:\"|?*\x1F")) {
    EXPECT_EQ(Parsed(std::u16string(u"C:\\a") + bad + u"b\\x"), "52") << static_cast<int>(bad);
  }
  EXPECT_EQ(Parsed(u"\\\\ser?ver\\share\\x"), "52");
}

TEST(WindowsPath, IsWrittenOutAsWindowsDoes) {
  EXPECT_EQ(kCurrent.Text(), u"C:\\Host\\Bin");
  EXPECT_EQ(WindowsPath{.root = u"C:"}.Text(), u"C:\\");
}

}  // namespace
}  // namespace qva
