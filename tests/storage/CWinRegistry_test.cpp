#include "storage/CWinRegistry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/memory/MemoryPlatform.h"
#include "platform/text.h"

namespace qva {
namespace {

using testing::ElementsAre;

/// Passes everything on and writes down what was asked for.
class RecordingRegistry : public ForwardingRegistry {
 public:
  using ForwardingRegistry::ForwardingRegistry;

  std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                       RegistryKey& key) override {
    Line() << "open " << std::hex << parent << " " << ToUtf8(path) << " access " << access;
    return ForwardingRegistry::OpenKey(parent, path, access, key);
  }
  std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                         const RegistrySecurity& security, RegistryKey& key) override {
    Line() << "create " << std::hex << parent << " " << ToUtf8(path) << " access " << access << std::dec
           << " security " << security.length << (security.inherit_handle ? " inherited" : " not inherited");
    return ForwardingRegistry::CreateKey(parent, path, access, security, key);
  }
  std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                          std::span<char> data, std::uint32_t& size) override {
    Line() << "query " << ToUtf8(name) << " type " << type << " buffer " << data.size() << " size " << size
           << (std::string(data.begin(), data.end()) == std::string(data.size(), ' ') ? " blank" : "");
    return ForwardingRegistry::QueryValue(key, name, type, data, size);
  }
  std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        std::span<const char> data) override {
    Line() << "set " << ToUtf8(name) << " type " << type << " bytes " << data.size();
    return ForwardingRegistry::SetValue(key, name, type, data);
  }
  std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) override {
    Line() << "delete " << ToUtf8(name);
    return ForwardingRegistry::DeleteValue(key, name);
  }
  std::int32_t CloseKey(RegistryKey key) override {
    Line() << "close";
    return ForwardingRegistry::CloseKey(key);
  }

  std::vector<std::string> lines() const {
    std::vector<std::string> lines;
    for (const std::ostringstream& line : lines_) lines.push_back(line.str());
    return lines;
  }

 private:
  std::ostringstream& Line() { return lines_.emplace_back(); }

  std::vector<std::ostringstream> lines_;
};

class WinRegistry : public testing::Test {
 protected:
  using Operation = FaultyRegistry::Operation;

  WinRegistry() {
    Services services = platform.services();
    services.registry = &recorder;
    InstallServices(services);
  }
  ~WinRegistry() override { InstallServices({}); }

  std::u16string Get(const std::u16string& name = u"PATH") {
    return registry.GetRegSetting(HKEY_CURRENT_USER_VALUE, u"Environment", name, type);
  }
  bool Save(const std::u16string& value, std::int32_t value_type = kRegSz) {
    return registry.SaveRegSetting(HKEY_CURRENT_USER_VALUE, u"Environment", u"PATH", value, value_type);
  }
  bool Delete() { return registry.DeleteRegSetting(HKEY_CURRENT_USER_VALUE, u"Environment", u"PATH"); }
  /// Stores bytes of any type, without the help of the class.
  void Store(std::uint32_t value_type, const std::string& bytes) {
    RegistryKey key = 0;
    store.CreateKey(HKEY_CURRENT_USER_VALUE, u"Environment", kKeySetValue, {}, key);
    store.SetValue(key, u"PATH", value_type, bytes);
    store.CloseKey(key);
  }

  MemoryPlatform platform;
  MemoryRegistry& store = platform.registry;
  FaultyRegistry& faults = platform.faults.registry;
  RecordingRegistry recorder{faults};
  CWinRegistry registry;
  std::int32_t type = kRegSz;
};

TEST_F(WinRegistry, ReadsATextWithAccess63AndABlankBufferOf255) {
  store.SetText(u"Environment", u"PATH", "C:\\Bin");
  EXPECT_EQ(Get(), u"C:\\Bin");
  EXPECT_THAT(recorder.lines(), ElementsAre("open 80000001 Environment access 3f",
                                            "query PATH type 1 buffer 255 size 255 blank", "close"));
  EXPECT_EQ(store.OpenHandles(), 0u);
}

TEST_F(WinRegistry, GivesTheStoredTypeBack) {
  store.SetText(u"Environment", u"PATH", "%HOME%", kRegExpandSz);
  EXPECT_EQ(Get(), u"%HOME%");
  EXPECT_EQ(type, kRegExpandSz);
}

TEST_F(WinRegistry, ReadsAndWritesInTheAnsiCodePage) {
  store.SetText(u"Environment", u"PATH", "C:\\\xE0\xE8\xE6");
  EXPECT_EQ(Get(), u"C:\\ąčę");
  EXPECT_TRUE(Save(u"C:\\Žemė€ 漢"));
  EXPECT_EQ(store.Text(u"Environment", u"PATH"),
            "C:\\\xDE"
            "em\xEB\x80 ?");
}

TEST_F(WinRegistry, ReadsUpTo254Characters) {
  store.SetText(u"Environment", u"PATH", std::string(254, 'a'));
  EXPECT_EQ(Get(), std::u16string(254, u'a'));
}

TEST_F(WinRegistry, ReadsAValueOf255CharactersAsEmpty) {
  store.SetText(u"Environment", u"PATH", std::string(255, 'a'));
  EXPECT_EQ(Get(), u"");
  EXPECT_EQ(store.OpenHandles(), 0u);
}

TEST_F(WinRegistry, DropsTheLastByteWhateverTheTypeIs) {
  Store(kRegBinary, "abc");
  EXPECT_EQ(Get(), u"ab");
  EXPECT_EQ(type, kRegBinary);
  Store(kRegDword, std::string("\x41\x42\0\0", 4));
  EXPECT_EQ(Get(), std::u16string(u"AB\0", 3));
}

TEST_F(WinRegistry, ReadsAValueWithoutBytesAsEmpty) {
  Store(kRegBinary, "");
  EXPECT_EQ(Get(), u"");
  EXPECT_EQ(type, kRegBinary);
}

TEST_F(WinRegistry, ReadsWhatIsMissingAsEmptyAndClosesTheKey) {
  EXPECT_EQ(Get(), u"");
  EXPECT_THAT(recorder.lines(), ElementsAre("open 80000001 Environment access 3f"));
  store.SetText(u"Environment", u"TEMP", "C:\\Temp");
  EXPECT_EQ(Get(), u"");
  EXPECT_EQ(recorder.lines().back(), "close");
  EXPECT_EQ(type, kRegSz);
  EXPECT_EQ(store.OpenHandles(), 0u);
}

TEST_F(WinRegistry, ReadsTheValueEvenWhenTheKeyCannotBeClosed) {
  store.SetText(u"Environment", u"PATH", "C:\\Bin");
  faults.Refuse(Operation::Close, kRegistryInvalidHandle);
  EXPECT_EQ(Get(), u"C:\\Bin");
}

TEST_F(WinRegistry, ReadsNothingBelowAForeignHive) {
  EXPECT_EQ(registry.GetRegSetting(0x80000009, u"Environment", u"PATH", type), u"");
}

TEST_F(WinRegistry, WritesATextWithoutItsZeroAndWithSecurityOfLength10) {
  EXPECT_TRUE(Save(u"C:\\Ąžuolas"));
  EXPECT_THAT(recorder.lines(), ElementsAre("create 80000001 Environment access 3f security 10 inherited",
                                            "set PATH type 1 bytes 10", "close"));
  EXPECT_EQ(store.Text(u"Environment", u"PATH"), "C:\\\xC0\xFEuolas");
  EXPECT_EQ(store.OpenHandles(), 0u);
}

TEST_F(WinRegistry, WritesAsManyBytesAsTheTextHasCharacters) {
  EXPECT_TRUE(Save(u""));
  EXPECT_TRUE(Save(u"a😀"));
  EXPECT_EQ(recorder.lines()[1], "set PATH type 1 bytes 0");
  EXPECT_LE(store.Text(u"Environment", u"PATH")->size(), 3u);
}

TEST_F(WinRegistry, WritesNoMoreBytesThanTheTextHasCharactersInACodePageOfSeveralBytes) {
  class Utf8Locale : public ForwardingLocale {
   public:
    using ForwardingLocale::ForwardingLocale;
    std::string ToAnsi(std::u16string_view text) const override { return ToUtf8(text); }
  } locale(platform.locale);
  Services services = GetServices();
  services.locale = &locale;
  InstallServices(services);
  EXPECT_TRUE(Save(u"aąb"));
  EXPECT_EQ(recorder.lines()[1], "set PATH type 1 bytes 3");
  EXPECT_EQ(store.Text(u"Environment", u"PATH"), "a\xC4\x85");
}

TEST_F(WinRegistry, WritesTheTypeThatItIsGiven) {
  EXPECT_TRUE(Save(u"%HOME%", kRegExpandSz));
  EXPECT_EQ(Get(), u"%HOME%");
  EXPECT_EQ(type, kRegExpandSz);
}

TEST_F(WinRegistry, WritesLongTextsThatItCannotReadBack) {
  EXPECT_TRUE(Save(std::u16string(255, u'a')));
  EXPECT_EQ(store.Text(u"Environment", u"PATH"), std::string(255, 'a'));
  EXPECT_EQ(Get(), u"");
}

TEST_F(WinRegistry, WritesNothingWithoutTheKey) {
  faults.Refuse(Operation::Create, kRegistryAccessDenied);
  EXPECT_FALSE(Save(u"C:\\Bin"));
  EXPECT_EQ(recorder.lines().size(), 1u);
}

TEST_F(WinRegistry, LeavesTheKeyOpenWhenTheWriteFails) {
  faults.Refuse(Operation::Set, kRegistryAccessDenied);
  EXPECT_FALSE(Save(u"C:\\Bin"));
  EXPECT_EQ(recorder.lines().back(), "set PATH type 1 bytes 6");
  EXPECT_EQ(store.OpenHandles(), 1u);
}

TEST_F(WinRegistry, CallsAWriteFailedWhenTheKeyCannotBeClosed) {
  faults.Refuse(Operation::Close, kRegistryInvalidHandle);
  EXPECT_FALSE(Save(u"C:\\Bin"));
  EXPECT_EQ(store.Text(u"Environment", u"PATH"), "C:\\Bin");
}

TEST_F(WinRegistry, DeletesAValue) {
  store.SetText(u"Environment", u"PATH", "C:\\Bin");
  EXPECT_TRUE(Delete());
  EXPECT_FALSE(store.Text(u"Environment", u"PATH"));
  EXPECT_THAT(recorder.lines(), ElementsAre("open 80000001 Environment access 3f", "delete PATH", "close"));
  EXPECT_EQ(store.OpenHandles(), 0u);
}

TEST_F(WinRegistry, DeletesNothingWithoutTheKeyAndDoesNotCreateIt) {
  EXPECT_FALSE(Delete());
  EXPECT_FALSE(store.HasKey(u"Environment"));
  EXPECT_EQ(recorder.lines().size(), 1u);
}

TEST_F(WinRegistry, LeavesTheKeyOpenWhenTheDeletionFails) {
  store.SetText(u"Environment", u"TEMP", "C:\\Temp");
  EXPECT_FALSE(Delete());
  EXPECT_THAT(recorder.lines(), ElementsAre("open 80000001 Environment access 3f", "delete PATH"));
  EXPECT_EQ(store.OpenHandles(), 1u);
}

TEST_F(WinRegistry, CallsADeletionFailedWhenTheKeyCannotBeClosed) {
  store.SetText(u"Environment", u"PATH", "C:\\Bin");
  faults.Refuse(Operation::Close, kRegistryInvalidHandle);
  EXPECT_FALSE(Delete());
  EXPECT_FALSE(store.Text(u"Environment", u"PATH"));
}

}  // namespace
}  // namespace qva
