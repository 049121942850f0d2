#include "platform/memory/MemoryHost.h"

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
    return {.book = u"MEDVILNE",
            .empty_book = u"TUSCIA",
            .account_sets = {{u"B1", u"Biudžetas", true}, {u"F1", u"Finansinė apskaita", false}},
            .budgets = {{11, u"BIU-2023", DateFromParts(2023, 6, 30)},
                        {19, u"BIU-2022", DateFromParts(2024, 6, 30)},
                        {12, u"BIU-2024", DateFromParts(2024, 6, 30)}},
            .company_code = u"302511789",
            .vat_code = u"LT100005117810",
            .company_name = u"UAB „Medvilnė“",
            .address = u"Šaltinių g. 12, LT-03215 Vilnius",
            .telephone = u"(8 5) 212 3456",
            .fax = u"(8 5) 212 3457",
            .director = u"Žygimantas Ąžuolaitis",
            .chief_accountant = u"Eglė Čepėnienė",
            .archive = u"C:\\Ataskaitos",
            .number_of_a_text = 800};
  }

 private:
  MemoryHost host_ = MemoryHost::Sample();
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryHost, HostContract, MemorySystem);

}  // namespace qva
