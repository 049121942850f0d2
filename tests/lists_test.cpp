// The lists that whoever adds a class, a member, a service or a page must add to, where neither the compiler
// nor another test tells of one that was forgotten. CONTRIBUTING.md has all of them.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "platform/member_table.h"
#include "platform/services.h"
#include "platform/text.h"
#include "server/PublicClasses.h"
#include "tests/member_names.h"
#include "tests/source_text.h"
#include "tools/guide/Guide.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qva {
namespace {

namespace fs = std::filesystem;

/// The part of a text from one mark up to another behind it; empty where the first is missing.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const std::size_t at = text.find(begin);
  if (at == text.npos) return {};
  return text.substr(at + begin.size(), text.find(end, at + begin.size()) - at - begin.size());
}

std::vector<std::string> Classes() {
  std::vector<std::string> names;
  for (const PublicClass& public_class : PublicClasses()) {
    names.push_back(ToUtf8(public_class.description().name()));
  }
  return names;
}

/// A class's members in their order.
std::vector<std::string> MembersOf(const ClassDescription& table) {
  std::vector<std::string> members;
  for (const Member& member : table.members()) members.push_back(NameOf(member));
  return members;
}

TEST(Lists, TheIdlHasEveryClassAndItsMembersInTheirOrder) {
  const std::string idl = SourceText("server/com/QVA_Varnholt.idl");
  EXPECT_EQ(Matches(idl, "coclass (\\w+) \\{"), Classes());
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    const std::string name = ToUtf8(table.name());
    EXPECT_EQ(Matches(Between(idl, "interface _" + name + " : IDispatch {", "\n  };"),
                      "\\[id\\(\\d+\\)(?:, prop(get|putref|put))?[^\\]]*\\]\\s*HRESULT (\\w+)\\("),
              MembersOf(table))
        << name;
  }
}

TEST(Lists, SiteAndHelpHaveEveryPageOfTheGuide) {
  std::vector<std::string> english, lithuanian, pages;
  for (const GuidePage& page : MakeGuidePages(SourceFolder(), GuideLanguage::English)) {
    pages.push_back(page.name);
    english.push_back("guide/" + page.name);
    lithuanian.push_back("gidas/" + page.name);
  }
  const std::string site = SourceText("mkdocs.yml");
  EXPECT_EQ(Matches(site, "- (guide/\\w+)\\.md"), english);
  EXPECT_EQ(Matches(site, "- (gidas/\\w+)\\.md"), lithuanian);
  std::vector<std::string> help =
      Matches(Between(SourceText("tools/help-pages.pl"), "@order = qw(", ")"), "([\\w-]+)");
  pages.emplace_back("klaida-429");
  EXPECT_EQ(help, pages);
}

TEST(Lists, ScriptsMacrosAndExamplesHaveEveryClass) {
  const std::string created = SourceText("tests/corpus/macros/create_objects.macro");
  const std::vector<std::string> examples =
      Matches(Between(SourceText("tools/guide-examples.pl"), "%expected = (", "\n);"), "\n  (\\w+) =>");
  const std::string manifest = SourceText("tests/com/client/Registration_test.cpp");
  EXPECT_EQ(examples, Classes());
  for (const std::string& name : Classes()) {
    EXPECT_TRUE(fs::exists(SourceFolder() / "tests/com/scripts" / (name + ".vbs"))) << name;
    EXPECT_NE(created.find("\"" + name + "\""), created.npos) << name;
    // Without an application this one cannot be made.
    EXPECT_EQ(manifest.find("L\"QVA_Varnholt." + name + "\"") == manifest.npos, name == "CLockScreen")
        << name;
  }
}

TEST(Lists, ScriptsCallEveryMemberOfTheirClass) {
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    const std::string script = SourceText("tests/com/scripts/" + ToUtf8(table.name()) + ".vbs");
    const std::vector<std::string> called = Matches(script, "\\.(\\w+)");
    for (const Member& member : table.members()) {
      EXPECT_TRUE(std::ranges::any_of(
          called, [&](const std::string& name) { return EqualIgnoringCase(FromUtf8(name), member.name); }))
          << ToUtf8(table.name()) << "." << ToUtf8(member.name);
    }
  }
}

/// The sources in these folders that others than tests may use, as text by their paths.
std::map<fs::path, std::string> SourcesIn(std::initializer_list<const char*> folders) {
  std::map<fs::path, std::string> sources;
  for (const char* folder : folders) {
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(SourceFolder() / folder)) {
      const fs::path extension = entry.path().extension();
      if (extension == ".h" || extension == ".cpp") sources[entry.path()] = SourceText(entry.path());
    }
  }
  return sources;
}

/// The contracts that tests hold adapters to, as "HostContract_EmbeddedHost".
std::set<std::string> ContractsKept() {
  std::set<std::string> kept;
  for (const auto& [path, source] : SourcesIn({"tests"})) {
    for (const std::string& names : Matches(source, "INSTANTIATE_TYPED_TEST_SUITE_P\\((\\w+),\\s+(\\w+),")) {
      const std::size_t between = names.find('_');
      kept.insert(names.substr(between + 1) + "_" + names.substr(0, between));
    }
  }
  return kept;
}

/// The interfaces of the services, without the namespace that one of them has.
std::vector<std::string> ServiceNames() {
  return Matches(SourceText("platform/services.h"), "\n  (?:ui::)?(\\w+)\\* \\w+ = nullptr;");
}

/// The classes in these folders that have bases, each as "ClassName_public Base, public OtherBase ".
std::vector<std::string> DerivedClassesIn(std::initializer_list<const char*> folders) {
  std::vector<std::string> classes;
  for (const auto& [path, source] : SourcesIn(folders)) {
    std::ranges::copy(Matches(source, "\n *(?:class|struct) ([A-Z][A-Za-z0-9]*)(?: final)?\\s+: ([^;{]*)\\{"),
                      std::back_inserter(classes));
  }
  return classes;
}

/// The tests of a contract bear the adapter's name, by which it is seen here that each adapter passes them,
/// those that forward to another one included.
TEST(Lists, EveryAdapterKeepsTheContractOfItsInterface) {
  const std::set<std::string> kept = ContractsKept();
  const std::vector<std::string> classes =
      DerivedClassesIn({"platform", "host", "server", "tests/extending"});
  for (const std::string& interface : ServiceNames()) {
    const std::string contract = (interface == "FormFactory" ? "Form" : interface) + "Contract_";
    const std::regex is_base("[_ ](?:ui::)?(?:Forwarding)?" + interface + "[ ,]");
    int adapters = 0;
    for (const std::string& derived : classes) {
      if (!std::regex_search(derived, is_base)) continue;
      const std::string name = derived.substr(0, derived.find('_'));
      ++adapters;
      EXPECT_TRUE(kept.contains(contract + name)) << contract << name;
    }
    EXPECT_GE(adapters, 3) << interface << ": the twin's, Linux' and Windows' at least";
  }
}

/// Hosts are known by what they create; Windows' demo host is one by itself, since it stands behind COM.
TEST(Lists, EveryHostKeepsTheContractOfHosts) {
  const std::set<std::string> kept = ContractsKept();
  std::vector<std::string> hosts = {"DemoHost"};
  for (const auto& [path, source] : SourcesIn({"platform", "host", "server", "tests/extending"})) {
    if (source.find("(host::kCommonObjects))") != source.npos) hosts.push_back(path.stem().string());
  }
  EXPECT_GE(hosts.size(), 4u);
  for (const std::string& host : hosts) EXPECT_TRUE(kept.contains("HostContract_" + host)) << host;
}

TEST(Lists, EveryServiceHasItsForwardingBase) {
  const std::string forwarding = SourceText("platform/forwarding.h");
  const std::string tests =
      SourceText("tests/platform/forwarding_test.cpp") + SourceText("platform/memory/FaultyRegistry.h");
  const std::vector<std::string> services = ServiceNames();
  EXPECT_EQ(services.size(), sizeof(Services) / sizeof(void*));
  for (const std::string& service : services) {
    EXPECT_NE(forwarding.find("class Forwarding" + service + " : public ForwardingTo<" + service + ">"),
              forwarding.npos)
        << service;
    EXPECT_NE(tests.find("Forwarding" + service), tests.npos) << service << " forwards untested";
  }
}

/// What can fail is what does not say of each operation that it cannot.
TEST(Lists, EveryServiceThatCanFailDoesSoOnDemand) {
  std::string headers;
  for (const std::string& header : Matches(SourceText("platform/services.h"), "#include \"(\\S+)\"")) {
    headers += SourceText(header);
  }
  std::vector<std::string> failing;
  for (const std::string& service : ServiceNames()) {
    const std::string interface = Between(headers, "\nclass " + service + " {", "\n};");
    const std::size_t operations = Matches(interface, "(= 0;)").size();
    EXPECT_GT(operations, 0u) << service;
    if (interface.find("Nothing here raises") != interface.npos ||
        Matches(interface, "(Does not\\s+(?:///\\s+)?(?:raise|fail))").size() == operations) {
      continue;
    }
    failing.push_back(service);
    const std::string faulty = "Faulty" + service;
    const std::string header = SourceText("platform/memory/" + faulty + ".h");
    EXPECT_FALSE(
        Matches(header, "\nclass " + faulty + " : public (?:ui::)?(Forwarding" + service + ") ").empty())
        << service;
  }
  EXPECT_THAT(failing, testing::ElementsAre("ObjectFactory", "Registry", "FormFactory", "Files"));
}

/// By words that only the helpers, and what runs within LibreOffice, have.
TEST(Lists, WhatTestsHaveHelpersForIsNotDoneByHand) {
  const std::map<std::string, std::set<std::string>> words = {
      {"setenv(", {"tests/calc/module/FileCalls.cpp", "tests/temporary_environment.h"}},
      {"SetEnvironmentVariable", {"tests/temporary_environment.h"}},
      {"ofstream", {"tests/files.h"}},
      {"SetCurrentDirectory", {}},
      {"GetTempPath", {}}};
  std::map<std::string, std::set<std::string>> found;
  for (const auto& [path, source] : SourcesIn({"tests"})) {
    if (path.filename() == "lists_test.cpp") continue;
    for (const auto& [word, files] : words) {
      std::set<std::string>& files_with_it = found[word];
      if (source.find(word) != source.npos)
        files_with_it.insert(fs::relative(path, SourceFolder()).generic_string());
    }
  }
  EXPECT_EQ(found, words);
}

/// The tests of all programs, as "Suite.Test" and "Suite.*".
std::set<std::string> Tests() {
  std::set<std::string> tests;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(SourceFolder() / "tests")) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string source = SourceText(entry.path());
    for (std::size_t at = source.find("\nTEST"); at != source.npos; at = source.find("\nTEST", at + 1)) {
      std::istringstream names(Between(source.substr(at, 300), "(", ")"));
      std::string suite, test;
      std::getline(names, suite, ',');
      names >> test;
      tests.insert({suite + "." + test, suite + ".*"});
    }
  }
  return tests;
}

TEST(Lists, PagesForDevelopersNameFilesAndTestsThatAreThere) {
  for (const char* page : {"CONTRIBUTING.md", "docs/extending.md", "docs/architecture.md"}) {
    for (const std::string& path :
         Matches(SourceText(page), "[`( ]([a-z]+/[A-Za-z0-9_./-]*[A-Za-z0-9_/])[`) ,.:;]")) {
      if (path.starts_with("build/") || path.starts_with("out/")) continue;
      // "period/HostForm" is a header and what belongs to it.
      EXPECT_TRUE(fs::exists(SourceFolder() / path) || fs::exists(SourceFolder() / (path + ".h")))
          << page << ": " << path;
    }
  }
  const std::set<std::string> tests = Tests();
  for (const char* page : {"CONTRIBUTING.md", "docs/extending.md"}) {
    for (const std::string& name : Matches(SourceText(page), "`([A-Z]\\w+\\.(?:[A-Z]\\w+|\\*))`")) {
      EXPECT_TRUE(tests.contains(name)) << page << ": " << name;
    }
  }
}

TEST(Lists, SourcesNamePagesThatAreThere) {
  int named = 0;
  for (const auto& [path, source] : SourcesIn({"global", "period", "reports", "storage", "excelui",
                                               "platform", "host", "server", "tools", "bench"})) {
    for (std::size_t at = source.find("docs/"); at != source.npos; at = source.find("docs/", at + 1)) {
      for (const std::string& page :
           Matches(source.substr(at, 100), "^(docs/[A-Za-z0-9_./-]*[A-Za-z0-9_])")) {
        ++named;
        EXPECT_TRUE(fs::exists(SourceFolder() / page)) << path << ": " << page;
      }
    }
  }
  EXPECT_GT(named, 10);
}

/// A source without its comments.
std::string CodeOf(const std::string& source) {
  std::string code;
  std::istringstream lines(source);
  for (std::string line; std::getline(lines, line);) code += line.substr(0, line.find("//")) + "\n";
  return code;
}

TEST(Lists, NamesThatSeveralSourcesUseStandInOneOfThem) {
  std::map<std::string, std::string> product;
  for (const auto& [path, source] : SourcesIn(
           {"platform", "global", "period", "reports", "storage", "excelui", "host", "server", "tools"})) {
    const std::string name = fs::relative(path, SourceFolder()).generic_string();
    if (!name.starts_with("platform/memory/"))
      product[name] = CodeOf(source);  // the twin has its own companies
  }
  const auto where = [&](const std::string& literal) {
    std::vector<std::string> files;
    for (const auto& [path, code] : product) {
      const std::size_t at = code.find(literal);
      if (at != code.npos && code[at - 1] != '\\') files.push_back(path);  // a quotation mark within a text
    }
    return files;
  };
  for (const char* caption : {"\"Gerai\"", "\"Atšaukti\"", "\"Taip\"", "\"Ne\""})
    EXPECT_THAT(where(caption), testing::ElementsAre("platform/message_box.h")) << caption;
  EXPECT_THAT(where("\"MEDVILNE\""), testing::ElementsAre("host/Sample.h"));
  EXPECT_THAT(where("\"Ataskaita.Main\""), testing::ElementsAre("server/calc/entry_macro.h"));
  for (const char* word : {"\"no-macro\"", "\"wrong-answer\"", "\"ready\"", "\"started\"", "\"ended\""})
    EXPECT_THAT(where(word), testing::ElementsAre("server/calc/job_protocol.h")) << word;
  EXPECT_THAT(where("sablonas.fods\""), testing::ElementsAre("server/calc/NewReport.h"));
  for (const auto& [name, file] : std::initializer_list<std::pair<const char*, const char*>>{
           {"\"/probe\"", "tools/doctor/CommandLine.h"},
           {"\"/register\"", "tools/doctor/CommandLine.h"},
           {"\"/remove\"", "tools/doctor/CommandLine.h"},
           {"\"/register-demo\"", "tools/doctor/CommandLine.h"},
           {"\"/remove-demo\"", "tools/doctor/CommandLine.h"},
           {"/answer", "tools/doctor/CommandLine.h"},
           {"\"CallLog\"", "server/com/CallLog.h"},
           {"libqva_calc.so", "tools/report-runner/Office.h"},
           {"LibreOffice died while it ran the report", "tools/report-runner/ReportResult.cpp"},
           {"host.sqlite", "host/HostOptions.h"},
           {"sample.sql", "host/HostOptions.h"},
           {"\"RepCurrPerBeg\"", "period/CRepPeriod.h"},
           {"\"RepCurrPerEnd\"", "period/CRepPeriod.h"}})
    EXPECT_THAT(where(name), testing::ElementsAre(file)) << name;
  EXPECT_THAT(where("libqva_host.so"), testing::IsEmpty()) << "CMake knows it";
  // The host is another system, whose lists have captions of their own.
  for (const char* caption : {"\"Kodas\"", "\"Pavadinimas\""})
    EXPECT_THAT(where(caption), testing::ElementsAre("host/DocumentSelection.cpp", "period/CodesAndNames.h"))
        << caption;
  // Other files have members of the same name, the two that a job's result passes between have none.
  for (const char* member : {"\"status\"", "\"text\"", "\"error\"", "\"number\"", "\"source\"", "\"line\"",
                             "\"period\"", "\"from\"", "\"to\""}) {
    const std::vector<std::string> files = where(member);
    EXPECT_THAT(files, testing::Contains("server/calc/job_protocol.h")) << member;
    for (const char* user : {"server/calc/ReportJob.cpp", "tools/report-runner/ReportRun.cpp"})
      EXPECT_THAT(files, testing::Not(testing::Contains(user))) << member;
  }
  for (const char* of_platform_host :
       {"\"BookRepSave\"", "'BookRepSave'", "\"NVX", "\"QVA_Common", "\"QVAFormRes"})
    EXPECT_THAT(where(of_platform_host), testing::IsSubsetOf({"platform/host.h"})) << of_platform_host;
}

/// The variables of platform/variables.h, but for those of the report runner's jobs.
std::set<std::string> UsersVariables() {
  std::set<std::string> variables;
  for (const std::string& name : Matches(SourceText("platform/variables.h"), "\\[\\] = \"(\\w+)\";")) {
    if (!name.starts_with("QVA_JOB_")) variables.insert(name);
  }
  return variables;
}

TEST(Lists, ThePageOfSettingsHasEveryVariable) {
  const std::string page = SourceText("docs/installation.md");
  const std::vector<std::string> rows =
      Matches(Between(page, "\n## Settings on Linux\n", "\n## "), "\n\\| `(\\w+)` \\|");
  std::set<std::string> variables = UsersVariables();
  EXPECT_EQ(variables.erase("QVA_HOST_LIST_ANSWERS"), 1u) << "Windows' alone: docs/host-interface.md";
  EXPECT_EQ(std::set<std::string>(rows.begin(), rows.end()), variables);
  EXPECT_EQ(rows.size(), variables.size());
}

TEST(Lists, PagesNameVariablesThatAreThere) {
  const std::set<std::string> variables = UsersVariables();
  std::set<std::string> named;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(SourceFolder() / "docs")) {
    if (entry.path().extension() != ".md") continue;
    const std::string page = SourceText(entry.path());
    for (std::size_t at = page.find("QVA_"); at != page.npos; at = page.find("QVA_", at + 1)) {
      const std::size_t end = page.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_", at);
      const std::string name = page.substr(at, end - at);
      if (!name.starts_with("QVA_HOST_") && !name.starts_with("QVA_VARNHOLT_")) continue;
      named.insert(name);
      EXPECT_TRUE(variables.contains(name)) << entry.path() << ": " << name;
    }
  }
  EXPECT_EQ(named, variables) << "each is told somewhere";
}

}  // namespace
}  // namespace qva
