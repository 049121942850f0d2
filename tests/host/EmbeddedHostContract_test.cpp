// The embedded host keeps what every host promises.
#include "tests/host/host_test.h"
#include "tests/platform/host_contract.h"
#include "tests/source_text.h"

namespace qva {
namespace {

class EmbeddedSystem {
 public:
  EmbeddedSystem() {
    embedded::WriteFile(options_.sample, SourceText("host/sample.sql") +
                                             "INSERT INTO Book (Code, Name, CompanyCode) "
                                             "VALUES ('TUSCIA', 'Tuščia', '398417265');\n");
    InstallServices(platform_.services());
  }
  EmbeddedSystem(const EmbeddedSystem&) = delete;
  EmbeddedSystem& operator=(const EmbeddedSystem&) = delete;
  ~EmbeddedSystem() { InstallServices({}); }

  ObjectFactory& factory() { return factory_; }
  MemoryMessageBox& message_box() { return platform_.message_box; }
  MemoryListChooser& list_chooser() { return platform_.list_chooser; }
  static HostFacts Facts() {
    return {.book = u"MEDVILNE",
            .empty_book = u"TUSCIA",
            .account_sets = {{u"BIUDZ", u"Biudžeto sąskaitų planas", true},
                             {u"GAMYBA", u"Gamybos padalinio biudžetas", true},
                             {u"O'BRIEN", u"Padalinio „O'Brien“ biudžetas", true},
                             {u"PAGR", u"Pagrindinis sąskaitų planas", false}},
            .budgets = {{102, u"BIU-2024-01", DateFromParts(2024, 1, 1)},
                        {103, u"BIU-2024-02", DateFromParts(2024, 7, 1)}},
            .company_code = u"398417265",
            .vat_code = u"LT100099172410",
            .company_name = u"UAB „Medvilnės namai“",
            .address = u"Audėjų g. 14-3, LT-44177 Kaunas",
            .telephone = u"+370 37 000 112",
            .fax = u"+370 37 000 113",
            .director = u"Rūta Žiedaitė",
            .chief_accountant = u"Šarūnas Įkalnis",
            .archive = u"C:\\Ataskaitos\\Archyvas",
            .number_of_a_text = 800};
  }

 private:
  embedded::TemporaryFolder folder_;
  MemoryPlatform platform_;
  embedded::HostOptions options_{.database = folder_.path() / "host.sqlite",
                                 .sample = folder_.path() / "sample.sql",
                                 .resources = SourceFolder() / "host"};
  embedded::EmbeddedHost factory_{options_, platform_.services()};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Embedded, HostContract, EmbeddedSystem);

}  // namespace qva
