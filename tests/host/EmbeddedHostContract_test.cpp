// The embedded host keeps what every host promises.
#include "tests/host/host_test.h"
#include "tests/host/sample_facts.h"
#include "tests/platform/memory_user.h"
#include "tests/platform/object_factory_contract.h"
#include "tests/source_text.h"

namespace qva {
namespace {

class EmbeddedSystem : public MemoryUser {
 public:
  EmbeddedSystem() { WriteFile(options_.sample, SourceText("host/sample.sql") + embedded::kContractSql); }
  static constexpr std::u16string_view kKnown = host::kSettingsCollection;
  ObjectFactory& factory() { return factory_; }
  static HostFacts Facts() { return embedded::SampleFacts(); }

 private:
  TemporaryFolder folder_;
  embedded::HostOptions options_{.database = folder_.path() / "host.sqlite",
                                 .sample = folder_.path() / "sample.sql",
                                 .resources = SourceFolder() / "host"};
  embedded::EmbeddedHost factory_{options_, platform_.services()};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(EmbeddedHost, HostContract, EmbeddedSystem);
INSTANTIATE_TYPED_TEST_SUITE_P(EmbeddedHost, ObjectFactoryContract, EmbeddedSystem);

}  // namespace qva
