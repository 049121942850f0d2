#include "platform/memory/MemoryRegistry.h"

#include <gtest/gtest.h>

#include "platform/text.h"

namespace qva {
namespace {

constexpr std::uint32_t kAll = kKeyQueryValue | kKeySetValue;

class MemoryRegistryTest : public testing::Test {
 protected:
  RegistryKey Open(std::u16string_view path, std::uint32_t access = kAll) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, path, access, key), kRegistrySuccess);
    return key;
  }

  MemoryRegistry registry;
  std::uint32_t type = 77;
  std::uint32_t size = 77;
};

TEST_F(MemoryRegistryTest, OpensNoKeyThatIsMissingAndLeavesTheHandleAlone) {
  RegistryKey key = 99;
  EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"Environment", kAll, key), kRegistryFileNotFound);
  EXPECT_EQ(key, 99u);
  EXPECT_EQ(registry.OpenHandles(), 0u);
}

TEST_F(MemoryRegistryTest, CreatesAKeyWithItsParentsAndFindsItInAnyLetterCase) {
  RegistryKey key = 0;
  ASSERT_EQ(registry.CreateKey(HKEY_CURRENT_USER_VALUE, u"Software\\Ąžuolas\\Deep", kAll, {}, key),
            kRegistrySuccess);
  EXPECT_TRUE(registry.HasKey(u"SOFTWARE\\ąŽUOLAS"));
  RegistryKey below = 0;
  ASSERT_EQ(registry.OpenKey(Open(u"software"), u"ĄŽUOLAS\\deep", kAll, below), kRegistrySuccess);
  EXPECT_NE(key, below);
  EXPECT_FALSE(registry.HasKey(u"Software\\Other"));
}

TEST_F(MemoryRegistryTest, CountsOpenHandles) {
  registry.SetText(u"A", u"", "");
  const RegistryKey first = Open(u"A");
  const RegistryKey second = Open(u"A");
  EXPECT_EQ(registry.OpenHandles(), 2u);
  EXPECT_EQ(registry.CloseKey(first), kRegistrySuccess);
  EXPECT_EQ(registry.CloseKey(first), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CloseKey(second), kRegistrySuccess);
  EXPECT_EQ(registry.OpenHandles(), 0u);
  EXPECT_EQ(registry.CloseKey(HKEY_CURRENT_USER_VALUE), kRegistrySuccess);
}

TEST_F(MemoryRegistryTest, ReadsBackWhatWasWrittenWithTheTerminatingZeroOfTexts) {
  registry.SetText(u"Environment", u"PATH", "");
  const RegistryKey key = Open(u"Environment");
  const std::string text = "C:\\Bin";
  ASSERT_EQ(registry.SetValue(key, u"Path", kRegExpandSz, text), kRegistrySuccess);
  ASSERT_EQ(registry.QueryValue(key, u"PATH", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(type, kRegExpandSz);
  ASSERT_EQ(size, text.size() + 1);
  std::string data(size, 'x');
  ASSERT_EQ(registry.QueryValue(key, u"PATH", type, data, size), kRegistrySuccess);
  EXPECT_EQ(data, text + '\0');
  EXPECT_EQ(registry.Text(u"ENVIRONMENT", u"path"), text);
}

TEST_F(MemoryRegistryTest, AddsNoSecondTerminatingZeroAndNoneToBinaryData) {
  registry.SetText(u"K", u"", "");
  const RegistryKey key = Open(u"K");
  const char with_zero[] = {'a', '\0'};
  ASSERT_EQ(registry.SetValue(key, u"text", kRegSz, with_zero), kRegistrySuccess);
  ASSERT_EQ(registry.QueryValue(key, u"text", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(size, 2u);
  const char bytes[] = {1, 2, 3};
  ASSERT_EQ(registry.SetValue(key, u"bytes", kRegBinary, bytes), kRegistrySuccess);
  ASSERT_EQ(registry.QueryValue(key, u"bytes", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(size, 3u);
  EXPECT_EQ(registry.Text(u"K", u"bytes"), std::nullopt);
}

TEST_F(MemoryRegistryTest, GivesAndTakesValuesAsTheyAreStored) {
  registry.SetText(u"K", u"text", "\xFE");
  const RegistryKey key = Open(u"K");
  RegistryValue value;
  ASSERT_EQ(registry.QueryStored(key, u"TEXT", value), kRegistrySuccess);
  EXPECT_EQ(value, (RegistryValue{kRegSz, std::string("\x7E\x01\0\0", 4)}));
  const RegistryValue cyrillic{kRegExpandSz, ToUtf16Bytes(std::u16string_view(u"я\0", 2))};
  ASSERT_EQ(registry.SetStored(key, u"copy", cyrillic), kRegistrySuccess);
  ASSERT_EQ(registry.QueryStored(key, u"copy", value), kRegistrySuccess);
  EXPECT_EQ(value, cyrillic);
  EXPECT_EQ(registry.Text(u"K", u"copy"), "?");
  EXPECT_EQ(registry.QueryStored(Open(u"K", kKeySetValue), u"copy", value), kRegistryAccessDenied);
  EXPECT_EQ(registry.SetStored(Open(u"K", kKeyQueryValue), u"copy", value), kRegistryAccessDenied);
  EXPECT_EQ(registry.QueryStored(4711, u"copy", value), kRegistryInvalidHandle);
}

TEST_F(MemoryRegistryTest, LeavesABufferAloneThatIsTooSmallAndTellsTheSize) {
  registry.SetText(u"K", u"v", "abc");
  std::string data(3, 'x');
  EXPECT_EQ(registry.QueryValue(Open(u"K"), u"v", type, data, size), kRegistryMoreData);
  EXPECT_EQ(data, "xxx");
  EXPECT_EQ(size, 4u);
  EXPECT_EQ(type, kRegSz);
}

TEST_F(MemoryRegistryTest, TellsNothingOfAMissingValue) {
  registry.SetText(u"K", u"v", "abc");
  EXPECT_EQ(registry.QueryValue(Open(u"K"), u"w", type, {}, size), kRegistryFileNotFound);
  EXPECT_EQ(type, 77u);
  EXPECT_EQ(size, 77u);
}

TEST_F(MemoryRegistryTest, DeletesAValueOnce) {
  registry.SetText(u"K", u"v", "abc");
  const RegistryKey key = Open(u"K");
  EXPECT_EQ(registry.DeleteValue(key, u"V"), kRegistrySuccess);
  EXPECT_EQ(registry.DeleteValue(key, u"V"), kRegistryFileNotFound);
  EXPECT_EQ(registry.Text(u"K", u"v"), std::nullopt);
}

TEST_F(MemoryRegistryTest, ChecksTheAccessThatAKeyWasOpenedWith) {
  registry.SetText(u"K", u"v", "abc");
  const RegistryKey reader = Open(u"K", kKeyQueryValue);
  const RegistryKey writer = Open(u"K", kKeySetValue);
  EXPECT_EQ(registry.QueryValue(reader, u"v", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(registry.SetValue(reader, u"v", kRegSz, {}), kRegistryAccessDenied);
  EXPECT_EQ(registry.DeleteValue(reader, u"v"), kRegistryAccessDenied);
  EXPECT_EQ(registry.QueryValue(writer, u"v", type, {}, size), kRegistryAccessDenied);
  EXPECT_EQ(registry.DeleteValue(writer, u"v"), kRegistrySuccess);
}

TEST_F(MemoryRegistryTest, RefusesInventedHandles) {
  RegistryKey key = 0;
  constexpr RegistryKey kInvented = 4711;
  EXPECT_EQ(registry.OpenKey(kInvented, u"K", kAll, key), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CreateKey(kInvented, u"K", kAll, {}, key), kRegistryInvalidHandle);
  EXPECT_EQ(registry.QueryValue(kInvented, u"v", type, {}, size), kRegistryInvalidHandle);
  EXPECT_EQ(registry.SetValue(kInvented, u"v", kRegSz, {}), kRegistryInvalidHandle);
  EXPECT_EQ(registry.DeleteValue(kInvented, u"v"), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CloseKey(kInvented), kRegistryInvalidHandle);
}

}  // namespace
}  // namespace qva
