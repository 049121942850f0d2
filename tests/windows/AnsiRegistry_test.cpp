#include "platform/windows/AnsiRegistry.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/text.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {
namespace {

constexpr std::u16string_view kPath = u"Software\\QVA_Varnholt Test\\Ąžuolas";
constexpr std::uint32_t kAccess = 63;

class AnsiRegistryTest : public testing::Test {
 protected:
  ~AnsiRegistryTest() override {
    registry.CloseKey(key);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
  }

  std::int32_t Create() {
    return registry.CreateKey(HKEY_CURRENT_USER_VALUE, kPath, kAccess, {.length = 10, .inherit_handle = true},
                              key);
  }
  std::int32_t Set(std::u16string_view name, std::string_view data) {
    return registry.SetValue(key, name, kRegSz, data);
  }

  AnsiRegistry registry;
  RegistryKey key = 0;
  std::uint32_t type = 0;
  std::uint32_t size = 0;
};

TEST_F(AnsiRegistryTest, CreatesAKeyWithItsParentsAndOpensIt) {
  EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, kPath, kAccess, key), kRegistryFileNotFound);
  EXPECT_EQ(key, 0u);
  ASSERT_EQ(Create(), kRegistrySuccess);
  EXPECT_NE(key, 0u);
  RegistryKey again = 0;
  EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"SOFTWARE\\qva_varnholt test", kAccess, again),
            kRegistrySuccess);
  EXPECT_EQ(registry.CloseKey(again), kRegistrySuccess);
}

TEST_F(AnsiRegistryTest, ReadsBackATextThatCameWithoutItsTerminatingZero) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  const std::string text = "C:\\Host;D:\\x then something else";
  ASSERT_EQ(Set(u"PATH", std::string_view(text).substr(0, 12)), kRegistrySuccess);
  char buffer[32] = {};
  EXPECT_EQ(registry.QueryValue(key, u"path", type, buffer, size), kRegistrySuccess);
  EXPECT_EQ(type, kRegSz);
  EXPECT_EQ(size, 13u);
  EXPECT_EQ(std::string(buffer, size), std::string("C:\\Host;D:\\x\0", 13));
}

TEST_F(AnsiRegistryTest, TellsTypeAndSizeWithoutABuffer) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  ASSERT_EQ(Set(u"name", "1234"), kRegistrySuccess);
  EXPECT_EQ(registry.QueryValue(key, u"name", type, {}, size), kRegistrySuccess);
  EXPECT_EQ(type, kRegSz);
  EXPECT_EQ(size, 5u);
}

TEST_F(AnsiRegistryTest, LeavesABufferThatIsTooSmall) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  ASSERT_EQ(Set(u"name", std::string(300, 'x')), kRegistrySuccess);
  std::string buffer(255, ' ');
  EXPECT_EQ(registry.QueryValue(key, u"name", type, buffer, size), kRegistryMoreData);
  EXPECT_EQ(size, 301u);
  EXPECT_EQ(buffer, std::string(255, ' '));
}

TEST_F(AnsiRegistryTest, NamesItsKeysAndTextsForAllWhoReadTheRegistry) {
  if (GetACP() != 1257) GTEST_SKIP() << "the system's code page is not the Lithuanian one";
  ASSERT_EQ(Create(), kRegistrySuccess);
  ASSERT_EQ(Set(u"name", "\xFE"), kRegistrySuccess);
  wchar_t text[16];
  DWORD bytes = sizeof text;
  ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test\\\u0104\u017Euolas", L"name",
                         RRF_RT_REG_SZ, nullptr, text, &bytes),
            ERROR_SUCCESS);
  EXPECT_STREQ(text, L"ž");
}

TEST_F(AnsiRegistryTest, GivesAndTakesValuesAsTheyAreStored) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  const std::u16string text = std::u16string(3000, u'я') + u'\0';
  const RegistryValue value{kRegExpandSz, ToUtf16Bytes(text)};
  ASSERT_EQ(registry.SetStored(key, u"name", value), kRegistrySuccess);
  RegistryValue read;
  ASSERT_EQ(registry.QueryStored(key, u"NAME", read), kRegistrySuccess);
  EXPECT_EQ(read, value);
  ASSERT_EQ(registry.SetStored(key, u"none", {kRegBinary, ""}), kRegistrySuccess);
  ASSERT_EQ(registry.QueryStored(key, u"none", read), kRegistrySuccess);
  EXPECT_EQ(read, (RegistryValue{kRegBinary, ""}));
  EXPECT_EQ(registry.QueryStored(key, u"missing", read), kRegistryFileNotFound);
}

TEST_F(AnsiRegistryTest, DeletesAValue) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  ASSERT_EQ(Set(u"name", "text"), kRegistrySuccess);
  EXPECT_EQ(registry.DeleteValue(key, u"name"), kRegistrySuccess);
  EXPECT_EQ(registry.DeleteValue(key, u"name"), kRegistryFileNotFound);
  EXPECT_EQ(registry.QueryValue(key, u"name", type, {}, size), kRegistryFileNotFound);
}

TEST_F(AnsiRegistryTest, RefusesAHandleThatIsNone) {
  EXPECT_EQ(registry.DeleteValue(0x7654, u"name"), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CloseKey(0), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CloseKey(HKEY_CURRENT_USER_VALUE), kRegistrySuccess);
}

}  // namespace
}  // namespace qva::windows
