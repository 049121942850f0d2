#include "platform/posix/ModuleFactory.h"

#include "platform/host.h"
#include "platform/member_table.h"
#include "platform/module.h"
#include "platform/recordset/RecordsetFactory.h"
#include "tests/files.h"
#include "tests/platform/core_test.h"
#include "tests/platform/object_factory_contract.h"
#include "tests/raised_error.h"
#include "tests/temporary_environment.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

struct ModuleSystem {
  static constexpr std::u16string_view kKnown = u"ADODB.Recordset";
  ObjectFactory& factory() { return modules; }

  MemoryPlatform platform;
  const Services services = platform.services();
  recordset::RecordsetFactory recordsets;
  ModuleFactory modules{services, {&recordsets}, {HostModuleFile()}};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(ModuleFactory, ObjectFactoryContract, ModuleSystem);

namespace {

class ModuleFactoryTest : public CoreTest {
 protected:
  ModuleFactoryTest() { environment.Set("QVA_HOST_DATABASE", folder / "host.sqlite"); }

  static AutomationError ErrorOfCreate(ObjectFactory& factory, std::u16string_view identifier) {
    return ErrorOf([&] { factory.Create(identifier); }).value();
  }

  TemporaryFolder folder;
  TemporaryEnvironment environment;
  Services services = platform.services();
};

/// A factory of one class, which may refuse in its own way.
class OneClass : public ObjectFactory {
 public:
  class Thing : public Described<Thing> {
   public:
    static ClassBuilder Describe() {
      return ClassBuilder(u"Thing", "").Property<&Thing::maker>(u"Maker").Default(u"Maker");
    }
    std::u16string maker;
  };

  OneClass(std::u16string_view identifier, std::u16string_view maker)
      : identifier_(identifier), maker_(maker) {}

  ObjectPtr Create(std::u16string_view identifier) override {
    ++asked;
    if (raises) throw AutomationError(raises, u"OneClass", u"Refused");
    if (identifier != identifier_) throw AutomationError(kCannotCreateObject);
    auto thing = MakeRef<Thing>();
    thing->maker = maker_;
    return thing;
  }

  int asked = 0;
  std::int32_t raises = 0;

 private:
  std::u16string identifier_;
  std::u16string maker_;
};

TEST_F(ModuleFactoryTest, AsksItsFactoriesInTheirOrder) {
  OneClass first(u"A.Thing", u"first"), second(u"B.Thing", u"second"), third(u"B.Thing", u"third");
  ModuleFactory factory(services, {&first, &second, &third}, {});
  EXPECT_EQ(Value(factory.Create(u"B.Thing")).ToText(), u"second");
  EXPECT_EQ(first.asked, 1);
  EXPECT_EQ(third.asked, 0);
}

TEST_F(ModuleFactoryTest, Raises429WhenNobodyHasTheClass) {
  OneClass first(u"A.Thing", u"first");
  ModuleFactory factory(services, {&first}, {});
  const AutomationError error = ErrorOfCreate(factory, u"C.Thing");
  EXPECT_EQ(error.number(), kCannotCreateObject);
  EXPECT_EQ(error.source(), u"QVA_Varnholt");
  EXPECT_EQ(error.description(), u"C.Thing: no such class");
  ModuleFactory empty(services, {}, {});
  EXPECT_EQ(ErrorOfCreate(empty, u"C.Thing").number(), kCannotCreateObject);
}

TEST_F(ModuleFactoryTest, OtherErrorsGoToTheCaller) {
  OneClass first(u"A.Thing", u"first"), second(u"A.Thing", u"second");
  first.raises = kOutOfMemory;
  ModuleFactory factory(services, {&first, &second}, {});
  const AutomationError error = ErrorOfCreate(factory, u"A.Thing");
  EXPECT_EQ(error.number(), kOutOfMemory);
  EXPECT_EQ(error.description(), u"Refused");
  EXPECT_EQ(second.asked, 0);
}

TEST_F(ModuleFactoryTest, AsksAModuleWhenNoFactoryHasTheClass) {
  OneClass own(u"A.Thing", u"own");
  ModuleFactory factory(services, {&own}, {HostModuleFile()});
  const ObjectPtr tools = factory.Create(host::kClientTools);
  ASSERT_TRUE(tools);
  EXPECT_EQ(own.asked, 1);
  EXPECT_EQ(ErrorOfCreate(factory, u"C.Thing").description(), u"C.Thing: no such class");
}

TEST_F(ModuleFactoryTest, ModuleThatIsNotNeededIsNotLoaded) {
  OneClass own(u"A.Thing", u"own");
  ModuleFactory factory(services, {&own}, {folder / "missing.so"});
  EXPECT_EQ(Value(factory.Create(u"A.Thing")).ToText(), u"own");
}

TEST_F(ModuleFactoryTest, ModuleThatCannotBeLoadedIsNamedWithTheReason) {
  const std::filesystem::path missing = folder / "missing.so";
  const std::filesystem::path text = folder / "text.so";
  WriteFile(text, "not a library");
  ModuleFactory factory(services, {}, {missing, text, "libm.so.6"});
  // The second time tells the same as the first one, though nothing is tried again.
  for (int time = 1; time <= 2; ++time) {
    const AutomationError error = ErrorOfCreate(factory, u"A.Thing");
    EXPECT_EQ(error.number(), kCannotCreateObject);
    const std::string description = ToUtf8(error.description());
    EXPECT_THAT(description, testing::StartsWith("A.Thing: no such class\n" + missing.string() + ": "));
    EXPECT_THAT(description, testing::HasSubstr("No such file"));
    EXPECT_THAT(description, testing::HasSubstr("\n" + text.string() + ": "));
    EXPECT_THAT(description, testing::HasSubstr("\nlibm.so.6: "));
    EXPECT_THAT(description, testing::HasSubstr(kOpenModuleName));
  }
}

TEST_F(ModuleFactoryTest, ModuleThatCannotBeLoadedHidesNoOther) {
  ModuleFactory factory(services, {}, {folder / "missing.so", HostModuleFile()});
  EXPECT_TRUE(factory.Create(host::kClientTools));
}

TEST_F(ModuleFactoryTest, ModuleThatCannotBeOpenedIsNamed) {
  services.message_box = nullptr;  // without which the module cannot work
  ModuleFactory factory(services, {}, {HostModuleFile()});
  EXPECT_THAT(ToUtf8(ErrorOfCreate(factory, host::kClientTools).description()),
              testing::HasSubstr(HostModuleFile() + ": the module cannot be opened"));
}

}  // namespace
}  // namespace qva
