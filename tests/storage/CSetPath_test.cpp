#include "storage/CSetPath.h"

#include <utility>

#include "platform/forwarding.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using RegistryOperation = FaultyRegistry::Operation;

class SetPath : public LibraryTest {
 protected:
  SetPath() {
    SetSetting(u"General", u"Kelias", u"C:\\Buhalterija");
    count.Reset();
    trace.Clear();
  }

  bool RegPath(std::u16string_view key = u"Kelias") { return Call(path, u"RegPath", {key}).ToBoolean(); }
  void SetUserPath(std::string_view text, std::uint32_t type = kRegSz) {
    platform.registry.SetText(u"Environment", u"PATH", text, type);
  }
  std::optional<std::string> UserPath() const { return platform.registry.Text(u"Environment", u"PATH"); }
  std::size_t MessagesShown() const { return platform.message_box.boxes().size(); }

  /// A value of the user's environment as it is stored; nothing where there is none.
  std::optional<RegistryValue> Stored(std::u16string_view name) {
    RegistryKey key = 0;
    RegistryValue value;
    platform.registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"Environment", kKeyQueryValue, key);
    const bool found = platform.registry.QueryStored(key, name, value) == kRegistrySuccess;
    platform.registry.CloseKey(key);
    return found ? std::optional(value) : std::nullopt;
  }
  std::optional<RegistryValue> Kept() { return Stored(kKept); }
  void Store(const RegistryValue& path) { platform.registry.SetBytes(u"Environment", u"PATH", path); }
  static RegistryValue TextValue(std::u16string_view text, std::uint32_t type = kRegSz) {
    return {type, ToUtf16Bytes(std::u16string(text) + u'\0')};
  }
  std::uint32_t UserPathType() { return Stored(u"PATH")->type; }

  static constexpr std::u16string_view kKept = u"PATH_before_QVA_Varnholt";

  ObjectPtr path = Create(u"CSetPath");
};

TEST_F(SetPath, MakesTheFolderTheWholePathWhereThereWasNone) {
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(UserPathType(), kRegSz);
}

TEST_F(SetPath, AppendsTheFolderAtTheEndBehindASemicolon) {
  SetUserPath("C:\\Bin;D:\\Tools");
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin;D:\\Tools;C:\\Buhalterija\\Varnholt");
}

TEST_F(SetPath, AddsASemicolonEvenBehindOne) {
  SetUserPath("C:\\Bin;");
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin;;C:\\Buhalterija\\Varnholt");
}

TEST_F(SetPath, TellsTheUserWithOneButton) {
  EXPECT_TRUE(RegPath());
  ASSERT_EQ(MessagesShown(), 1u);
  const MemoryMessageBox::Shown& box = platform.message_box.boxes()[0];
  EXPECT_EQ(box.text, u"Tekstas 800: C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(box.title, u"");
  EXPECT_THAT(box.captions, ElementsAre(u"Gerai"));
}

TEST_F(SetPath, AddsTheFolderOnce) {
  EXPECT_TRUE(RegPath());
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(MessagesShown(), 1u);
}

TEST_F(SetPath, LeavesAPathThatHoldsTheFolderInOtherLetterCaseUntouched) {
  SetSetting(u"General", u"Kelias", u"C:\\Ąžuolas");
  SetUserPath("C:\\Bin;c:\\\xE0\xFEUOLAS\\VARNHOLT;D:\\");
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin;c:\\\xE0\xFEUOLAS\\VARNHOLT;D:\\");
  EXPECT_EQ(MessagesShown(), 0u);
}

TEST_F(SetPath, TakesTheFolderAnywhereInThePathForPresent) {
  SetUserPath("C:\\Buhalterija\\Varnholt2\\Bin");
  EXPECT_FALSE(RegPath());
}

TEST_F(SetPath, AnEmptyOrMissingSettingGivesAFolderOfTheRoot) {
  EXPECT_TRUE(RegPath(u"Nera"));
  EXPECT_EQ(UserPath(), "\\Varnholt");
  SetUserPath("C:\\Bin");
  SetSetting(u"General", u"Kelias", u"   ");
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin;\\Varnholt");
}

TEST_F(SetPath, TrimsTheSettingAndAddsItsSeparatorWhereItIsMissing) {
  SetSetting(u"General", u"Kelias", u" C:\\Host ");
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Host\\Varnholt");
  SetUserPath("");
  SetSetting(u"General", u"Kelias", u"C:\\Host\\");
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Host\\Varnholt");
}

TEST_F(SetPath, DoesNothingWhenTheFolderIsOnTheProcessPathInAnyLetterCase) {
  platform.environment.Set(u"PATH", "C:\\Windows;c:\\BUHALTERIJA\\varnholt");
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), std::nullopt);
  EXPECT_FALSE(platform.registry.HasKey(u"Environment"));
  EXPECT_EQ(MessagesShown(), 0u);
}

TEST_F(SetPath, LooksIntoAProcessPathOfUpTo1023Characters) {
  const std::string folder = "C:\\Buhalterija\\Varnholt";
  platform.environment.Set(u"PATH", std::string(1023 - folder.size(), ';') + folder);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), std::nullopt);
}

TEST_F(SetPath, NeverLooksIntoALongerProcessPath) {
  const std::string folder = "C:\\Buhalterija\\Varnholt";
  platform.environment.Set(u"PATH", folder + std::string(1024 - folder.size(), ';'));
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), folder);
}

TEST_F(SetPath, ReplacesAUserPathThatIsTooLongToBeRead) {
  SetUserPath(std::string(255, 'a'));
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
}

TEST_F(SetPath, AppendsToTheLongestUserPathThatCanBeRead) {
  SetUserPath(std::string(254, 'a'));
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), std::string(254, 'a') + ";C:\\Buhalterija\\Varnholt");
}

TEST_F(SetPath, MakesAPathWithReferencesAPlainText) {
  SetUserPath("%USERPROFILE%\\bin", kRegExpandSz);
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "%USERPROFILE%\\bin;C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(UserPathType(), kRegSz);
}

TEST_F(SetPath, LeavesAPathAloneThatCannotBeReadAtAll) {
  SetUserPath("C:\\Bin");
  platform.faults.registry.Refuse(RegistryOperation::Query, kRegistryAccessDenied);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin");
  EXPECT_EQ(MessagesShown(), 0u);
}

// --- What is replaced is kept

TEST_F(SetPath, KeepsNothingOfAPathThatItReadWholeAndExactly) {
  EXPECT_TRUE(RegPath());
  SetUserPath("C:\\Bin;C:\\\xC0\xFEuolas");
  EXPECT_TRUE(RegPath(u"Nera"));
  EXPECT_EQ(Kept(), std::nullopt);
}

TEST_F(SetPath, KeepsAPathThatIsTooLongToBeRead) {
  SetUserPath(std::string(3000, 'a'), kRegExpandSz);
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(Kept(), TextValue(std::u16string(3000, u'a'), kRegExpandSz));
}

TEST_F(SetPath, KeepsAPathWithReferencesWithItsType) {
  SetUserPath("%USERPROFILE%\\bin", kRegExpandSz);
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(Kept(), TextValue(u"%USERPROFILE%\\bin", kRegExpandSz));
}

TEST_F(SetPath, KeepsAPathWithLettersThatTheCodePageLacks) {
  Store(TextValue(u"C:\\Програми"));
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\????????;C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(Kept(), TextValue(u"C:\\Програми"));
}

TEST_F(SetPath, KeepsAPathThatIsNoText) {
  const RegistryValue bytes{kRegBinary, std::string("\1\2\0\3", 4)};
  Store(bytes);
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(Kept(), bytes);
}

TEST_F(SetPath, KeepsAPathThatLacksItsTerminatingZeroWhoseLastLetterIsNotRead) {
  Store({kRegSz, ToUtf16Bytes(u"C:\\Bin")});
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bi;C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(Kept(), TextValue(u"C:\\Bin"));
}

TEST_F(SetPath, KeepsEachPathThatItReplacesOnce) {
  SetUserPath(std::string(300, 'a'));
  EXPECT_TRUE(RegPath());
  SetUserPath(std::string(300, 'b'));  // put back and changed since
  EXPECT_TRUE(RegPath());
  SetUserPath(std::string(300, 'a'));
  EXPECT_TRUE(RegPath());
  EXPECT_EQ(Kept(), TextValue(std::u16string(300, u'a')));
  EXPECT_EQ(Stored(u"PATH_before_QVA_Varnholt_2"), TextValue(std::u16string(300, u'b')));
  EXPECT_EQ(Stored(u"PATH_before_QVA_Varnholt_3"), std::nullopt);
}

TEST_F(SetPath, ReplacesNoPathThatCannotBeKept) {
  SetUserPath(std::string(300, 'a'));
  platform.faults.registry.Refuse(RegistryOperation::Set, kRegistryAccessDenied);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), std::string(300, 'a'));
  EXPECT_EQ(platform.registry.OpenHandles(), 0u);
  EXPECT_EQ(MessagesShown(), 0u);
}

TEST_F(SetPath, ReplacesNoPathWhereItCannotTellWhatIsKept) {
  class KeptIsHidden : public ForwardingRegistry {
   public:
    using ForwardingRegistry::ForwardingRegistry;
    std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) override {
      return name == kKept ? kRegistryAccessDenied : ForwardingRegistry::QueryStored(key, name, value);
    }
  } registry(platform.registry);
  SetUserPath(std::string(300, 'a'));
  Services services = GetServices();
  Registry* const own = std::exchange(services.registry, &registry);
  InstallServices(services);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), std::string(300, 'a'));
  services.registry = own;
  InstallServices(services);
}

TEST_F(SetPath, IsSilentWhenThePathCannotBeWritten) {
  SetUserPath("C:\\Bin");
  platform.faults.registry.Refuse(RegistryOperation::Create, kRegistryAccessDenied);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin");
  EXPECT_EQ(MessagesShown(), 0u);
}

TEST_F(SetPath, LeavesTheKeyOpenWhenTheWriteFails) {
  SetUserPath("C:\\Bin");
  platform.faults.registry.Refuse(RegistryOperation::Set, kRegistryAccessDenied);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Bin");
  EXPECT_EQ(MessagesShown(), 0u);
  EXPECT_EQ(platform.registry.OpenHandles(), 1u);
  // The next key that is opened has the next number.
  RegistryKey next = 0;
  platform.registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"Environment", kKeyQueryValue, next);
  EXPECT_EQ(platform.registry.CloseKey(next), kRegistrySuccess);
  EXPECT_EQ(platform.registry.CloseKey(next - 1), kRegistrySuccess);
}

TEST_F(SetPath, IsSilentWhenTheKeyCannotBeClosed) {
  platform.faults.registry.Refuse(RegistryOperation::Close, kRegistryInvalidHandle);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(MessagesShown(), 0u);
  platform.faults.registry.Allow(RegistryOperation::Close);
  for (RegistryKey key = 1; platform.registry.OpenHandles() > 0; ++key) platform.registry.CloseKey(key);
}

TEST_F(SetPath, RaisesTheHostsErrorAfterThePathWasChanged) {
  host.texts.erase(800);
  EXPECT_EQ(RaisedBy([&] { RegPath(); }), kSubscriptOutOfRange);
  EXPECT_EQ(UserPath(), "C:\\Buhalterija\\Varnholt");
  EXPECT_EQ(MessagesShown(), 0u);
}

TEST_F(SetPath, LeavesTheCallersKeyAlone) {
  Arguments arguments{u"Kelias"};
  path->Invoke(Access::Call, u"RegPath", arguments);
  EXPECT_EQ(arguments.positional[0], Value(u"Kelias"));
}

TEST_F(SetPath, CostsThreeCallsForTheMessageAndNoneWhenNothingChanges) {
  EXPECT_TRUE(RegPath());
  EXPECT_THAT(trace.lines(), ElementsAre("CreateObject(\"QVA_Common.Message\")",
                                         "MessageResource.Text(800) -> \"Tekstas 800: %0\"",
                                         "Message.Show(\"Tekstas 800: C:\\Buhalterija\\Varnholt\", \"\", "
                                         "Array(\"Gerai\")) -> 1"));
  EXPECT_EQ(count.calls(), 3);
  EXPECT_FALSE(RegPath());
  EXPECT_EQ(count.calls(), 3);
}

}  // namespace
}  // namespace qva
