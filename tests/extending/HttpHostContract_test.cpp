// The host of the example keeps what every host promises.
#include "tests/extending/HttpHost.h"
#include "tests/platform/memory_sample_facts.h"
#include "tests/platform/memory_user.h"
#include "tests/platform/object_factory_contract.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

/// Answers from what the facts say, with the documents in the service's own order.
class FactsService : public http::Service {
 public:
  explicit FactsService(HostFacts facts) : facts_(std::move(facts)) {}

  std::optional<std::string> Get(const std::string& path) override {
    const std::string book = "/books/" + ToUtf8(facts_.book), empty = "/books/" + ToUtf8(facts_.empty_book);
    std::u16string table;
    if (path == book || path == empty) return "";
    if (path == "/folders/BookRepSave" || path == book + "/folders/BookRepSave")
      return ToUtf8(facts_.archive);
    if (path == book + "/company") {
      table = u"Code\tVATCode\tName\tAddress\tTEL\tFA\tDIR\tFDIR\n" + facts_.company_code + u"\t" +
              facts_.vat_code + u"\t" + facts_.company_name + u"\t" + facts_.address + u"\t" +
              facts_.telephone + u"\t" + facts_.fax + u"\t" + facts_.director + u"\t" +
              facts_.chief_accountant;
    } else if (path == book + "/tables/book") {
      table = u"Code\tName\n" + facts_.empty_book + u"\t\n" + facts_.book + u"\t";
    } else if (path == book + "/tables/refbankaccountrole") {
      table = u"Code\tName\n";
    } else if (path == book + "/tables/glaccountset" || path == empty + "/tables/glaccountset") {
      table = u"Code\tName\tIsBudget:flag\n";
      if (path.starts_with(book)) {
        for (const HostFacts::AccountSet& set : facts_.account_sets) {
          table += set.code + u"\t" + set.name + u"\t" + (set.is_budget ? u"1\n" : u"0\n");
        }
      }
    } else if (path.starts_with(book + "/documents?")) {
      table = u"IDC:number\tCode\tDate:day\tName\n";
      for (const HostFacts::Document& document : facts_.budgets) {
        const std::u16string day = FormatByWindowsPattern(document.date, u"yyyy-MM-dd");
        if (!path.starts_with(book + "/documents?type=BOBN&") || ToUtf8(day) < Day(path, "&from=") ||
            ToUtf8(day) > Day(path, "&to=")) {
          continue;
        }
        table += NumberText(document.id) + u"\t" + document.code + u"\t" + day + u"\t\n";
      }
    } else {
      return std::nullopt;
    }
    return ToUtf8(table);
  }

 private:
  static std::string Day(const std::string& path, const std::string& name) {
    return path.substr(path.find(name) + name.size(), 10);
  }

  const HostFacts facts_;
};

class HttpSystem : public MemoryUser {
 public:
  static constexpr std::u16string_view kKnown = host::kSettingsCollection;
  ObjectFactory& factory() { return factory_; }
  static HostFacts Facts() {
    return MemorySampleFacts({{11, u"BIU-2", DateFromParts(2024, 1, 31)},
                              {13, u"BIU-1", DateFromParts(2024, 6, 30)},
                              {12, u"BIU-3", DateFromParts(2024, 6, 30)}});
  }

 private:
  FactsService service_{Facts()};
  http::HttpHost factory_{service_, platform_.services(), SourceFolder() / "host"};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(HttpHost, HostContract, HttpSystem);
INSTANTIATE_TYPED_TEST_SUITE_P(HttpHost, ObjectFactoryContract, HttpSystem);

}  // namespace qva
