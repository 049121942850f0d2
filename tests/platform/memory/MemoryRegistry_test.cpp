#include "platform/memory/MemoryRegistry.h"

#include "tests/platform/registry_contract.h"

namespace qva {
namespace {

struct MemoryStore {
  Registry& registry() { return memory; }
  std::u16string root() { return u"Bandymai"; }

  MemoryRegistry memory;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryRegistry, RegistryContract, MemoryStore);

namespace {

class MemoryRegistryTest : public testing::Test {
 protected:
  RegistryKey Open(std::u16string_view path, std::uint32_t access = kKeyQueryValue | kKeySetValue) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, path, access, key), kRegistrySuccess);
    return key;
  }

  MemoryRegistry registry;
};

TEST_F(MemoryRegistryTest, CountsOpenHandles) {
  registry.SetText(u"A", u"", "");
  RegistryKey none = 0;
  EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"B", kKeyQueryValue, none), kRegistryFileNotFound);
  EXPECT_EQ(registry.OpenHandles(), 0u);
  const RegistryKey first = Open(u"A");
  const RegistryKey second = Open(u"A");
  EXPECT_EQ(registry.OpenHandles(), 2u);
  EXPECT_EQ(registry.CloseKey(first), kRegistrySuccess);
  EXPECT_EQ(registry.CloseKey(first), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CloseKey(second), kRegistrySuccess);
  EXPECT_EQ(registry.OpenHandles(), 0u);
}

TEST_F(MemoryRegistryTest, ShowsTestsWhatItHolds) {
  registry.SetText(u"Software\\Ąžuolas", u"PATH", "C:\\Bin", kRegExpandSz);
  EXPECT_TRUE(registry.HasKey(u"SOFTWARE\\ąŽUOLAS"));
  EXPECT_FALSE(registry.HasKey(u"Software\\Other"));
  EXPECT_EQ(registry.Text(u"SOFTWARE\\ĄŽUOLAS", u"path"), "C:\\Bin");
  RegistryValue value;
  ASSERT_EQ(registry.QueryStored(Open(u"Software\\Ąžuolas"), u"PATH", value), kRegistrySuccess);
  EXPECT_EQ(value, (RegistryValue{kRegExpandSz, ToUtf16Bytes(std::u16string_view(u"C:\\Bin\0", 7))}));
  EXPECT_EQ(registry.Text(u"Software\\Other", u"PATH"), std::nullopt);
  EXPECT_EQ(registry.Text(u"Software\\Ąžuolas", u"TEMP"), std::nullopt);
}

TEST_F(MemoryRegistryTest, TakesFromTestsWhatItsInterfaceWouldNotStore) {
  const RegistryValue text{kRegSz, ToUtf16Bytes(u"ą")};
  registry.SetBytes(u"K", u"v", text);
  RegistryValue value;
  ASSERT_EQ(registry.QueryStored(Open(u"K"), u"v", value), kRegistrySuccess);
  EXPECT_EQ(value, text);
  EXPECT_EQ(registry.Text(u"K", u"v"), "\xE0");
  registry.SetBytes(u"K", u"b", {kRegBinary, "abc"});
  EXPECT_EQ(registry.Text(u"K", u"b"), std::nullopt) << "is no text";
}

}  // namespace
}  // namespace qva
