#include "platform/settings.h"

#include "tests/platform/core_test.h"

namespace qva {
namespace {

class GetSettingTest : public CoreTest {
 protected:
  static constexpr std::u16string_view kPath =
      u"Software\\VB and VBA Program Settings\\Quillon Enterprise\\Forms\\MDI";

  ~GetSettingTest() override { EXPECT_EQ(platform.registry.OpenHandles(), 0u) << "a key stays open"; }

  std::u16string P0(std::u16string_view default_value = u"none") {
    return GetSetting(*GetServices().registry, platform.locale, u"Quillon Enterprise", u"Forms\\MDI", u"P0",
                      default_value);
  }
};

TEST_F(GetSettingTest, GivesTheValuesText) {
  platform.registry.SetText(kPath, u"P0", "MEDVILN\xCB");
  EXPECT_EQ(P0(), u"MEDVILNĖ");
}

TEST_F(GetSettingTest, GivesAnEmptyTextThatIsThere) {
  platform.registry.SetText(kPath, u"P0", "");
  EXPECT_EQ(P0(), u"");
}

TEST_F(GetSettingTest, GivesLongTextsWhole) {
  platform.registry.SetText(kPath, u"P0", std::string(5000, 'x'));
  EXPECT_EQ(P0(), std::u16string(5000, u'x'));
}

TEST_F(GetSettingTest, EndsATextAtItsFirstZero) {
  platform.registry.SetText(kPath, u"P0", std::string("a\0b", 3));
  EXPECT_EQ(P0(), u"a");
}

TEST_F(GetSettingTest, GivesTheDefaultWhenKeyOrValueIsMissing) {
  EXPECT_EQ(P0(u"default"), u"default");
  platform.registry.SetText(kPath, u"Other", "a");
  EXPECT_EQ(P0(), u"none");
}

TEST_F(GetSettingTest, GivesTheDefaultForAnythingButText) {
  for (const std::uint32_t type : {kRegExpandSz, kRegBinary, kRegDword}) {
    platform.registry.SetText(kPath, u"P0", "abcd", type);
    EXPECT_EQ(P0(), u"none") << type;
  }
}

TEST_F(GetSettingTest, GivesTheDefaultWhenTheValueCannotBeRead) {
  platform.registry.SetText(kPath, u"P0", "a");
  platform.faults.registry.Refuse(FaultyRegistry::Operation::Query, kRegistryAccessDenied);
  EXPECT_EQ(P0(), u"none");
}

TEST_F(GetSettingTest, ClosesTheKeyWhenMemoryRunsOut) {
  struct ShortOfMemory : ForwardingRegistry {
    using ForwardingRegistry::ForwardingRegistry;
    std::int32_t QueryValue(RegistryKey, std::u16string_view, std::uint32_t&, std::span<char>,
                            std::uint32_t&) override {
      throw std::bad_alloc();
    }
  } registry(platform.registry);
  platform.registry.SetText(kPath, u"P0", "a");
  EXPECT_THROW(GetSetting(registry, platform.locale, u"Quillon Enterprise", u"Forms\\MDI", u"P0", u""),
               std::bad_alloc);
  EXPECT_EQ(platform.registry.OpenHandles(), 0u);
}

class SaveSettingTest : public GetSettingTest {
 protected:
  bool Save(std::u16string_view text) {
    return SaveSetting(*GetServices().registry, platform.locale, u"Quillon Enterprise", u"Forms\\MDI", u"P0",
                       text);
  }
};

TEST_F(SaveSettingTest, IsFoundByGetSettingAlsoWhereThereWasNone) {
  for (const std::u16string_view text : {u"MEDVILNĖ", u"BALTIJA", u""}) {
    EXPECT_TRUE(Save(text));
    EXPECT_EQ(P0(), text);
  }
}

TEST_F(SaveSettingTest, TellsThatItIsNotWritten) {
  for (const auto operation : {FaultyRegistry::Operation::Create, FaultyRegistry::Operation::Set}) {
    platform.faults.registry.Refuse(operation, kRegistryAccessDenied);
    EXPECT_FALSE(Save(u"MEDVILNE"));
    EXPECT_EQ(P0(), u"none");
    platform.faults.registry.Allow(operation);
  }
}

}  // namespace
}  // namespace qva
