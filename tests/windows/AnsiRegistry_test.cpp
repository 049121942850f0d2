#include "platform/windows/AnsiRegistry.h"

#include "platform/windows/WindowsApi.h"
#include "tests/platform/registry_contract.h"

namespace qva {
namespace {

struct AnsiStore {
  AnsiStore() = default;
  AnsiStore(const AnsiStore&) = delete;
  AnsiStore& operator=(const AnsiStore&) = delete;
  ~AnsiStore() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
  }
  Registry& registry() { return ansi; }
  std::u16string root() { return u"Software\\QVA_Varnholt Test"; }

  windows::AnsiRegistry ansi;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(AnsiRegistry, RegistryContract, AnsiStore);

namespace windows {
namespace {

class AnsiRegistryTest : public testing::Test {
 protected:
  ~AnsiRegistryTest() override { store.ansi.CloseKey(key); }

  std::int32_t Create() {
    return store.ansi.CreateKey(HKEY_CURRENT_USER_VALUE, store.root() + u"\\Ąžuolas",
                                kKeyQueryValue | kKeySetValue, {.length = 10, .inherit_handle = true}, key);
  }
  std::int32_t Set(std::u16string_view name, std::string_view data) {
    return store.ansi.SetValue(key, name, kRegSz, data);
  }

  AnsiStore store;
  RegistryKey key = 0;
  std::uint32_t type = 0;
  std::uint32_t size = 0;
};

TEST_F(AnsiRegistryTest, ReadsBackATextThatCameWithoutItsTerminatingZero) {
  ASSERT_EQ(Create(), kRegistrySuccess);
  const std::string text = "C:\\Host;D:\\x then something else";
  ASSERT_EQ(Set(u"PATH", std::string_view(text).substr(0, 12)), kRegistrySuccess);
  char buffer[32] = {};
  EXPECT_EQ(store.ansi.QueryValue(key, u"path", type, buffer, size), kRegistrySuccess);
  EXPECT_EQ(type, kRegSz);
  EXPECT_EQ(size, 13u);
  EXPECT_EQ(std::string(buffer, size), std::string("C:\\Host;D:\\x\0", 13));
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

}  // namespace
}  // namespace windows
}  // namespace qva
