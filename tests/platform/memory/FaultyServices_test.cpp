// The faults of registry, object creation and forms: what is refused fails as the interface says and does not
// reach the target, the rest does.
#include "platform/ado.h"
#include "platform/memory/FaultyFormFactory.h"
#include "platform/memory/FaultyObjectFactory.h"
#include "platform/memory/FaultyRegistry.h"
#include "platform/memory/excel/Application.h"
#include "tests/platform/core_test.h"
#include "tests/platform/forms/form_contract.h"
#include "tests/platform/forms/memory_desk.h"
#include "tests/platform/object_factory_contract.h"
#include "tests/platform/registry_contract.h"

namespace qva {
namespace {

/// As long as nothing is refused, all goes through.
struct FaultyStore {
  Registry& registry() { return faulty; }
  std::u16string root() { return u"Bandymai"; }

  MemoryRegistry memory;
  FaultyRegistry faulty{memory};
};

struct FaultySystem {
  static constexpr std::u16string_view kKnown = ado::kRecordset;
  ObjectFactory& factory() { return faulty; }

  MemoryObjectFactory memory;
  FaultyObjectFactory faulty{memory};
};

struct FaultyDesk : MemoryDesk {
  ui::FormFactory& factory() { return faulty; }

  FaultyFormFactory faulty{memory};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(FaultyRegistry, RegistryContract, FaultyStore);
INSTANTIATE_TYPED_TEST_SUITE_P(FaultyObjectFactory, ObjectFactoryContract, FaultySystem);
INSTANTIATE_TYPED_TEST_SUITE_P(FaultyFormFactory, FormContract, FaultyDesk);

namespace {

class FaultyRegistryTest : public CoreTest {
 protected:
  using Operation = FaultyRegistry::Operation;

  FaultyRegistryTest() {
    platform.registry.SetText(u"K", u"v", "abc");
    registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"K", kKeyQueryValue | kKeySetValue, key);
  }

  /// What each operation answers: two that open, two that read, two that write, a deletion, a closing.
  std::vector<std::int32_t> Answers() {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    return {registry.OpenKey(HKEY_CURRENT_USER_VALUE, u"K", kKeyQueryValue, other),
            registry.CreateKey(HKEY_CURRENT_USER_VALUE, u"N", kKeyQueryValue, {}, created),
            registry.QueryValue(key, u"v", type, {}, size),
            registry.QueryStored(key, u"v", stored),
            registry.SetValue(key, u"a", kRegSz, std::string("1")),
            registry.SetStored(key, u"b", {kRegBinary, "2"}),
            registry.DeleteValue(key, u"v"),
            registry.CloseKey(key)};
  }

  FaultyRegistry& registry = platform.faults.registry;
  RegistryKey key = 0, other = 0, created = 0;
  RegistryValue stored;
};

TEST_F(FaultyRegistryTest, LetsEverythingThroughUntilItIsToldToRefuse) {
  EXPECT_THAT(Answers(), testing::Each(std::int32_t{kRegistrySuccess}));
  EXPECT_TRUE(platform.registry.HasKey(u"N"));
  EXPECT_EQ(platform.registry.Text(u"K", u"a"), "1");
  EXPECT_EQ(platform.registry.Text(u"K", u"v"), std::nullopt);
  EXPECT_EQ(platform.registry.OpenHandles(), 2u) << "key is closed, other and created are open";
  EXPECT_FALSE(stored.bytes.empty());
}

TEST_F(FaultyRegistryTest, DoesNothingWhereItWasToldToRefuse) {
  for (const Operation operation : {Operation::Open, Operation::Create, Operation::Query, Operation::Set,
                                    Operation::Delete, Operation::Close}) {
    registry.Refuse(operation, kRegistryWriteFault);
  }
  EXPECT_THAT(Answers(), testing::Each(std::int32_t{kRegistryWriteFault}));
  EXPECT_EQ(other, 0u);
  EXPECT_EQ(created, 0u);
  EXPECT_FALSE(platform.registry.HasKey(u"N"));
  EXPECT_EQ(platform.registry.Text(u"K", u"v"), "abc");
  EXPECT_EQ(platform.registry.Text(u"K", u"a"), std::nullopt);
  EXPECT_EQ(platform.registry.OpenHandles(), 1u);
  EXPECT_EQ(stored, RegistryValue());
}

TEST_F(FaultyRegistryTest, RefusesOneOperationAndAllowsItAgain) {
  registry.Refuse(Operation::Query);
  EXPECT_EQ(registry.QueryStored(key, u"v", stored), kRegistryAccessDenied);
  EXPECT_EQ(registry.SetStored(key, u"b", {kRegBinary, "2"}), kRegistrySuccess);
  registry.Allow(Operation::Query);
  EXPECT_EQ(registry.QueryStored(key, u"b", stored), kRegistrySuccess);
  EXPECT_EQ(stored.bytes, "2");
}

using FaultyObjectFactoryTest = CoreTest;

TEST_F(FaultyObjectFactoryTest, RefusesAClassInAnyLetterCaseAsIfItWereNotThere) {
  platform.object_factory.Register<memory::Application>(u"Excel.Application");
  FaultyObjectFactory& factory = platform.faults.object_factory;
  EXPECT_EQ(factory.Create(u"Excel.Application")->TypeName(), u"Application");
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"No.Such"); }), kCannotCreateObject);
  factory.Refuse(u"EXCEL.application");
  const AutomationError refusal = ErrorOf([&] { factory.Create(u"Excel.Application"); }).value();
  EXPECT_EQ(refusal.number(), kCannotCreateObject);
  EXPECT_EQ(refusal.description(), u"EXCEL.application: no such class");
  EXPECT_TRUE(factory.Create(u"ADODB.Recordset"));
  factory.Refuse(u"Excel.Application", AutomationError(kOutOfMemory));
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"Excel.Application"); }), kOutOfMemory);
  factory.Allow(u"excel.application");
  EXPECT_TRUE(factory.Create(u"Excel.Application"));
}

using FaultyFormFactoryTest = CoreTest;

TEST_F(FaultyFormFactoryTest, BuildsNoFormWhileItRefuses) {
  FaultyFormFactory& forms = platform.faults.forms;
  const ui::FormDescription description{.name = u"frmTest"};
  EXPECT_TRUE(forms.Create(description));
  forms.Refuse();
  EXPECT_EQ(RaisedBy([&] { forms.Create(description); }), kOutOfMemory);
  EXPECT_EQ(platform.forms.created, 1);
  forms.Allow();
  EXPECT_TRUE(forms.Create(description));
  EXPECT_EQ(platform.forms.created, 2);
}

TEST_F(FaultyFormFactoryTest, ShowsNoFormWhileItRefuses) {
  FaultyFormFactory& forms = platform.faults.forms;
  int shown = 0;
  platform.forms.user = [&](MemoryForm&) { ++shown; };
  const std::unique_ptr<ui::Form> form = forms.Create({.name = u"frmTest"});
  forms.RefuseShowing(kOutOfMemory);
  EXPECT_EQ(RaisedBy([&] { form->ShowModal(); }), kOutOfMemory);
  EXPECT_FALSE(form->Visible());
  EXPECT_EQ(shown, 0);
  forms.Allow();
  form->ShowModal();
  EXPECT_EQ(shown, 1);
}

}  // namespace
}  // namespace qva
