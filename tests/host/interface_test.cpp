// docs/host-interface.md and platform/host.h, which say what the library expects of a host, and every host in
// the tree: whoever adds a class or a member to one must add it to the others.
#include <set>
#include <sstream>

#include "platform/member_table.h"
#include "platform/memory/MemoryHost.h"
#include "tests/extending/HttpHost.h"
#include "tests/host/host_test.h"
#include "tests/source_text.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

/// "Class.Member get", "… put", "… set" and "… method".
using Members = std::set<std::string>;

/// The page's table of members.
struct Page {
  std::set<std::string> identifiers;
  Members expected;  ///< of every host
  Members embedded;  ///< of the embedded host alone

  Page() {
    const std::string page = SourceText("docs/host-interface.md");
    std::istringstream lines(page.substr(page.find("| Class | Identifier |")));
    std::string line;
    std::string class_name;
    std::getline(lines, line);
    std::getline(lines, line);
    while (std::getline(lines, line) && line.starts_with("|")) {
      std::vector<std::string> cells;
      std::istringstream row(line.substr(1));
      for (std::string cell; std::getline(row, cell, '|');) cells.push_back(cell);
      for (const std::string& name : Matches(cells.at(0), "(\\w+)")) class_name = name;
      for (const std::string& identifier : Matches(cells[1], "`(\\w+\\.\\w+)`"))
        identifiers.insert(identifier);
      const bool is_embedded = cells.at(2).find("(embedded)") != std::string::npos;
      for (const std::string& member : Matches(cells[2], "`(\\w+)`")) {
        const std::size_t addition = std::min(cells.at(3).find('('), cells[3].size());
        for (const std::string& kind : Matches(cells[3].substr(0, addition), "(get|put|set|method)"))
          (is_embedded ? embedded : expected).insert(class_name + "." + member + " " + kind);
        for (const std::string& kind : Matches(cells[3].substr(addition), "(get|put|set|method)"))
          embedded.insert(class_name + "." + member + " " + kind);
      }
    }
  }
};

std::set<std::string> CreatableClasses() {
  std::set<std::string> identifiers;
  for (const std::u16string_view identifier : host::kCreatableClasses) identifiers.insert(ToUtf8(identifier));
  return identifiers;
}

/// What the objects of a host answer: those that it creates, and those that these give.
Members MembersOf(ObjectFactory& factory) {
  std::vector<ObjectPtr> objects;
  for (const std::u16string_view identifier : host::kCreatableClasses) {
    objects.push_back(factory.Create(identifier));
  }
  const auto book = host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  const auto company = host::CompanyAttributes::Create(factory);
  company.Init(book);
  const auto settings = host::SettingsCollection::Create(factory);
  settings.Add(u"A", 1);
  objects.insert(objects.end(), {book.object(), book.Table(u"GLAccountSet").object(),
                                 GetObject(host::ClientTools::Create(factory).object(), u"Session"),
                                 company.Address(u"").object(), settings.Item(u"A").object(),
                                 host::DataAccess::Create(factory).Lookup(u"PathKey", book).object()});
  Members members;
  for (const ObjectPtr& object : objects) {
    for (const Member& member : object->MemberTable()->members()) {
      constexpr const char* kKinds[] = {"method", "get", "put", "set"};
      members.insert(ToUtf8(object->TypeName()) + "." + ToUtf8(member.name) + " " +
                     kKinds[static_cast<int>(member.kind)]);
    }
  }
  return members;
}

class HostInterface : public embedded::HostTest {
 protected:
  const Page page_;
};

TEST_F(HostInterface, ThePageNamesTheClassesOfTheTable) {
  EXPECT_EQ(page_.identifiers, CreatableClasses());
}

/// Users' registries hold class identifiers that are made of the places.
TEST_F(HostInterface, TheTableKeepsItsOrder) {
  EXPECT_THAT(host::kCreatableClasses,
              ElementsAre(host::kCommonObjects, host::kPlant, host::kClientTools, host::kSettingsCollection,
                          host::kCompanyAttributes, host::kDataAccess, host::kQuery, host::kConditionBuilder,
                          host::kDocumentSelection, host::kMessage, host::kMessageResource));
}

TEST_F(HostInterface, EveryIdentifierOfTheHeaderIsInItsTable) {
  std::set<std::string> identifiers;
  for (const std::string& identifier : Matches(SourceText("platform/host.h"), "u\"(\\w+\\.\\w+)\""))
    identifiers.insert(identifier);
  EXPECT_EQ(identifiers, CreatableClasses());
}

TEST_F(HostInterface, AnIdentifierOfTheHostIsOneOfALibraryOfTheTable) {
  for (const std::u16string_view creatable : host::kCreatableClasses) {
    const std::u16string library(creatable.substr(0, creatable.find(u'.')));
    EXPECT_TRUE(host::IsHostIdentifier(creatable)) << ToUtf8(creatable);
    EXPECT_TRUE(host::IsHostIdentifier(ToLower(library) + u".Nera")) << ToUtf8(library);
    EXPECT_FALSE(host::IsHostIdentifier(library)) << ToUtf8(library);
    EXPECT_FALSE(host::IsHostIdentifier(library + u"2.Nera")) << ToUtf8(library);
    EXPECT_FALSE(host::IsHostIdentifier(u"X" + std::u16string(creatable))) << ToUtf8(creatable);
  }
  for (const std::u16string_view other : {u"", u".", u"Message", u"QVA_Varnholt.CTools", u"ADODB.Recordset"})
    EXPECT_FALSE(host::IsHostIdentifier(other)) << ToUtf8(other);
}

/// A text of the header as it is.
std::string Unescaped(const std::string& literal) {
  return ToUtf8(ReplaceAll(FromUtf8(literal), u"\\\\", u"\\"));
}

TEST_F(HostInterface, ThePageNamesWhatTheHeaderNames) {
  std::vector<std::string> names;
  for (const std::string& literal :
       Matches(SourceText("platform/host.h"), "constexpr std::u16string_view k\\w+ = u\"([^\"]+)\"")) {
    if (!CreatableClasses().contains(literal)) names.push_back(Unescaped(literal));
  }
  const std::string page = SourceText("docs/host-interface.md");
  const std::size_t begin = page.find("\n## Names\n");
  ASSERT_NE(begin, page.npos);
  EXPECT_THAT(Matches(page.substr(begin, page.find("\n### ", begin) - begin), "\n\\| `([^`]+)` \\|"),
              testing::ElementsAreArray(names));
  EXPECT_GT(names.size(), 20u);
}

/// So that the header is all that an installation changes.
TEST_F(HostInterface, TheLibraryTakesItsNamesFromTheHeader) {
  int sources = 0;
  for (const char* folder : {"excelui", "global", "period", "reports", "storage"}) {
    for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / folder)) {
      EXPECT_THAT(
          Matches(SourceText(entry.path()),
                  "(?:\\.|->)(?:Address|Contact|Equal|Field|From|In|Join|Lookup|Open|ResponsiblePerson|"
                  "Rows|Run|Select|Table)\\(\\{?u\"([^\"]+)\""),
          IsEmpty())
          << entry.path();
      EXPECT_THAT(Matches(SourceText(entry.path()), "u\"(NVX\\w+|QVA_Common|Quillon)[^\"]*\""), IsEmpty())
          << entry.path();
      ++sources;
    }
  }
  EXPECT_GT(sources, 50);
}

TEST_F(HostInterface, ThePageNamesEveryMemberThatTheFacadesCall) {
  std::set<std::string> names;
  for (const Members& members : {page_.expected, page_.embedded}) {
    for (const std::string& member : members) {
      const std::size_t point = member.find('.');
      names.insert(member.substr(point + 1, member.find(' ') - point - 1));
    }
  }
  int calls = 0;
  for (const std::string& called : Matches(SourceText("platform/host.h"),
                                           "(?:Call|Get|GetObject|Put|PutRef)\\((?:\\w+\\([^()]*"
                                           "(?:\\([^()]*\\))?[^()]*\\), )?u\"(\\w+)\"")) {
    EXPECT_TRUE(names.contains(called)) << called;
    ++calls;
  }
  EXPECT_GT(calls, 30);
}

/// By the facades' own functions: a member that only one of them reaches, such as the session, counts as it.
TEST_F(HostInterface, TheContractOfHostsNamesEveryMemberOfTheFacades) {
  const std::string contract = SourceText("tests/platform/host_contract.h");
  const std::string header = SourceText("platform/host.h");
  const std::string facades = header.substr(header.find("\nclass "));
  std::set<std::string> unnamed;
  int functions = 0;
  for (const std::string& created : Matches(facades, "\n  static (\\w+) Create\\(")) {
    if (contract.find("host::" + created + "::Create(") == contract.npos) unnamed.insert(created);
    ++functions;
  }
  for (const std::string& member : Matches(facades, "\n  [\\w:]+ (\\w+)\\(")) {
    if (contract.find("." + member + "(") == contract.npos) unnamed.insert(member);
    ++functions;
  }
  EXPECT_THAT(unnamed, ElementsAre("Books")) << "the embedded host alone has it";
  EXPECT_GT(functions, 40);
}

TEST_F(HostInterface, TheEmbeddedHostHasTheMembersOfThePageAndNoOthers) {
  Members documented = page_.expected;
  documented.insert(page_.embedded.begin(), page_.embedded.end());
  EXPECT_THAT(MembersOf(factory_), testing::ContainerEq(documented));
}

TEST_F(HostInterface, TheTwinHasTheMembersThatTheLibraryExpects) {
  MemoryHost host = MemoryHost::Sample();
  MemoryObjectFactory factory;
  for (const std::u16string_view identifier : host::kCreatableClasses) {
    factory.Register(identifier, [&host, identifier] { return host.Create(identifier); });
  }
  EXPECT_THAT(MembersOf(factory), IsSupersetOf(page_.expected));
}

TEST_F(HostInterface, TheExampleOfAHostHasTheMembersThatTheLibraryExpects) {
  struct : http::Service {
    std::optional<std::string> Get(const std::string&) override { return ""; }
  } service;
  http::HttpHost host(service, platform_.services(), kHostFolder);
  EXPECT_THAT(MembersOf(host), IsSupersetOf(page_.expected));
}

}  // namespace
}  // namespace qva
