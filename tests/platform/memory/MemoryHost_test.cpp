#include "platform/memory/MemoryHost.h"

#include "tests/platform/memory_sample_facts.h"
#include "tests/platform/memory_user.h"

namespace qva {
namespace {

class MemorySystem : public MemoryUser {
 public:
  MemorySystem() {
    host_.books[u"TUSCIA"] = {};
    host_.documents.push_back(
        {19, u"MEDVILNE", std::u16string(host::kBudgetDocument), u"BIU-2022", DateFromParts(2024, 6, 30)});
    host_.message_box = &platform_.message_box;
    host_.list_chooser = &platform_.list_chooser;
    for (const std::u16string_view identifier : host::kCreatableClasses) {
      platform_.object_factory.Register(identifier, [this, identifier] { return host_.Create(identifier); });
    }
  }

  ObjectFactory& factory() { return platform_.object_factory; }
  static HostFacts Facts() {
    return MemorySampleFacts({{11, u"BIU-2023", DateFromParts(2023, 6, 30)},
                              {19, u"BIU-2022", DateFromParts(2024, 6, 30)},
                              {12, u"BIU-2024", DateFromParts(2024, 6, 30)}});
  }

 private:
  MemoryHost host_ = MemoryHost::Sample();
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryHost, HostContract, MemorySystem);

}  // namespace qva
