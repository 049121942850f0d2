#include "tests/doctor/doctor_test.h"

#include <algorithm>
#include <set>

namespace qva::doctor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The machine with the facts of its 64-bit programs changed.
template <class Change>
MachineFacts With(Change&& change) {
  MachineFacts machine = GoodMachine();
  change(machine.bitnesses[0]);
  return machine;
}

HiveFacts Users(std::u16string_view file) {
  return {.hive = Hive::User, .expected = 10, .present = 10, .servers = {std::u16string(file)}};
}

TEST(Judge, FindsNothingWhereAllIsWell) {
  EXPECT_THAT(Problems(GoodMachine()), IsEmpty());
  EXPECT_EQ(Worst(Judge(GoodMachine(), &NoWords)), Level::Ok);
}

TEST(Judge, TellsAMissingFileFromAMissingFolder) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.files[1].is_there = false; })),
              ElementsAre("64:file-missing"));
  EXPECT_THAT(
      Problems(With([](BitnessFacts& x64) { x64.files[1].is_there = x64.files[1].has_folder = false; })),
      ElementsAre("64:folder-missing"));
}

TEST(Judge, LooksAtTheHeaderBeforeTheLoading) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                x64.files[1].machine = kMachineX86;
                x64.files[1].load_code = 193;
              })),
              ElementsAre("64:wrong-bitness"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.files[1].machine = 0; })),
              ElementsAre("64:file-damaged"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.files[1].load_code = 126; })),
              ElementsAre("64:file-does-not-load"));
  // Not even its header may be read.
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                x64.files[1].machine = 0;
                x64.files[1].load_code = 5;
              })),
              ElementsAre("64:file-does-not-load"));
}

TEST(Judge, TellsAPartialForeignAndMixedRegistration) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                HiveFacts& machine = x64.hives[1];
                machine.present = 7;
                machine.foreign = 1;
                machine.servers.emplace_back(kUnpacked);
              })),
              ElementsAre("64:registration-incomplete", "64:registration-foreign", "64:registration-mixed"));
}

TEST(Judge, TellsARegistrationForTheOtherBitness) {
  MachineFacts machine = GoodMachine();
  machine.excels[0].file.machine = kMachineX86;
  EXPECT_THAT(Problems(machine), ElementsAre("32:registered-for-other"));
}

TEST(Judge, TellsWhatCreateObjectGivesWhereNothingIsRegistered) {
  MachineFacts machine = With([](BitnessFacts& x64) {
    x64.hives.clear();
    for (Creation& creation : x64.creations) creation.code = 0x800401F3;
  });
  const std::vector<Finding> findings = Judge(machine, &NoWords);
  const auto found = std::ranges::find_if(
      findings, [](const Finding& finding) { return finding.kind->code == "not-registered"; });
  ASSERT_NE(found, findings.end());
  EXPECT_EQ(found->Cause(Language::English),
            u"The library is not registered: CreateObject fails with error 429 "
            u"(QVA_Varnholt.CReports: 0x800401F3).");
}

TEST(Judge, TakesWhatIsRegisteredForNeededWhereThereIsNoExcel) {
  MachineFacts machine = GoodMachine();
  machine.excels.clear();
  EXPECT_THAT(Problems(machine), ElementsAre("(excel-missing)"));
  machine.bitnesses[0].hives.clear();
  EXPECT_THAT(Problems(machine), ElementsAre("(excel-missing)", "64:not-registered", "32:not-registered"));
}

TEST(Judge, WarnsOfABitnessThatNoExcelHas) {
  MachineFacts machine = GoodMachine();
  machine.bitnesses[1].hives[0] = Users(u"C:\\Nera\\QVA_Varnholt.dll");
  machine.bitnesses[1].files = {{.path = u"C:\\Nera\\QVA_Varnholt.dll"}};
  EXPECT_THAT(Problems(machine), ElementsAre("(32:folder-missing)"));
}

TEST(Judge, ComparesTheVersionsOfTwoRegistrations) {
  MachineFacts machine = With([](BitnessFacts& x64) { x64.hives[0] = Users(kUnpacked); });
  EXPECT_THAT(Problems(machine), IsEmpty());
  machine.bitnesses[0].files[0].version = u"1.2.0.0";
  EXPECT_THAT(Problems(machine), ElementsAre("(64:outdated)", "(64:two-versions)"));
}

TEST(Judge, TellsWhatAnAdministratorDoesNotSee) {
  MachineFacts machine = With([](BitnessFacts& x64) {
    x64.hives[0] = Users(kInstalled);
    x64.hives[1].present = 0;
  });
  EXPECT_THAT(Problems(machine), IsEmpty());
  machine.is_elevated = true;
  EXPECT_THAT(Problems(machine), ElementsAre("(elevated)", "64:user-not-seen"));
}

TEST(Judge, TellsFailuresOfCreateObjectOnceForEachCode) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                for (Creation& creation : x64.creations) creation.code = 0x80040154;
              })),
              ElementsAre("64:does-not-create"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.creations[0].code = 0x800A01AD; })),
              ElementsAre("64:needs-host"));
}

TEST(Judge, TakesAClassThatWantsAConnectionFirstForReached) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.creations[0].code = 0x800A005B; })), IsEmpty());
}

TEST(Judge, TellsAHostThatIsMissingFromOneOfTheOtherBitness) {
  const auto without = [](bool is_for_other) {
    return Problems(With([=](BitnessFacts& x64) {
      for (HostClass& host : x64.host_classes) {
        host.server.clear();
        host.is_for_other = is_for_other;
      }
      x64.book = {};
      x64.archive = {};
    }));
  };
  EXPECT_THAT(without(false), ElementsAre("64:host-missing"));
  EXPECT_THAT(without(true), ElementsAre("64:host-for-other"));
}

TEST(Judge, NamesHostClassesThatAreMissingAndThatDoNotLoad) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.host_classes[0].server.clear(); })),
              ElementsAre("64:host-incomplete"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.host_classes[1].code = 0x8007007E; })),
              ElementsAre("64:host-does-not-load"));
}

TEST(Judge, KnowsTheDemoHostByItsFile) {
  const MachineFacts machine = With([](BitnessFacts& x64) {
    for (HostClass& host : x64.host_classes) host.server = u"D:\\x64\\qva_demohost.dll";
  });
  EXPECT_THAT(Problems(machine), IsEmpty());
  bool is_told = false;
  for (const Finding& finding : Judge(machine, &NoWords)) is_told |= finding.kind->code == "host-demo";
  EXPECT_TRUE(is_told);
}

TEST(Judge, TellsOfADemoHostThatStandsBeforeAnother) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                for (HostClass& host : x64.host_classes) host.is_behind_demo = true;
              })),
              ElementsAre("(64:demo-left)"));
}

TEST(Judge, TellsOfBookAndArchive) {
  MachineFacts machine = GoodMachine();
  machine.book_setting.clear();
  machine.bitnesses[0].book = {};
  EXPECT_THAT(Problems(machine), ElementsAre("no-book"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.book.error = -2147221503; })),
              ElementsAre("64:book-does-not-open"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.archive.error = 429; })),
              ElementsAre("(64:archive-unknown)"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.archive.text.clear(); })),
              ElementsAre("64:archive-none"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.archive_folder.is_there = false; })),
              ElementsAre("64:archive-missing"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) { x64.archive_folder.write_code = 5; })),
              ElementsAre("64:archive-read-only"));
}

TEST(Judge, TellsOfMacroSettings) {
  const auto trusting = [](TrustFacts trust) {
    MachineFacts machine = GoodMachine();
    machine.trusts = {std::move(trust)};
    return Problems(machine);
  };
  EXPECT_THAT(trusting({.version = u"16.0"}), ElementsAre("project-access-off"));
  EXPECT_THAT(trusting({.version = u"16.0", .macros = 3, .project_access = 1}),
              ElementsAre("(macros-signed-only)"));
  EXPECT_THAT(trusting({.version = u"16.0", .macros = 4, .project_access = 0}),
              ElementsAre("macros-off", "project-access-off"));
}

TEST(Judge, TellsOfTheRestOfTheMachine) {
  MachineFacts machine = GoodMachine();
  machine.code_page = 1252;
  machine.excels.push_back({{.path = u"C:\\Nera\\EXCEL.EXE"}});
  machine.excels.push_back({GoodFile(u"C:\\Office32\\EXCEL.EXE", u"16.0.1.2")});
  machine.excels.back().file.machine = kMachineX86;
  EXPECT_THAT(Problems(machine), ElementsAre("(code-page-other)", "(excel-file-missing)", "(excel-both)",
                                             "32:registered-for-other"));
}

TEST(Judge, TellsOfPartsThatDidNotRunOrDied) {
  MachineFacts machine = GoodMachine();
  machine.bitnesses[1] = {.bitness = Bitness::x86, .start_code = 2};
  EXPECT_THAT(Problems(machine), ElementsAre("(32:part-not-run)"));
  machine.bitnesses[1] = {.bitness = Bitness::x86};
  EXPECT_THAT(Problems(machine), ElementsAre("(32:part-not-run)"));
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                x64.is_complete = false;
                x64.doing = u"CreateObject(\"QVA_Varnholt.CReports\")";
              })),
              ElementsAre("64:part-stopped"));
}

TEST(Judge, TellsOfMarkedFiles) {
  EXPECT_THAT(Problems(With([](BitnessFacts& x64) {
                x64.files[0].zone = FileFacts::kInternetZone;
                x64.files[1].zone = 2;  // a trusted site's
              })),
              ElementsAre("(64:blocked)"));
}

TEST(Finding, FillsItsWordsInEachLanguage) {
  const MachineFacts machine = With([](BitnessFacts& x64) { x64.files[1].machine = kMachineX86; });
  for (const Finding& finding : Judge(machine, &NoWords)) {
    if (finding.kind->code != "wrong-bitness") continue;
    EXPECT_EQ(finding.Cause(Language::English),
              u"The library C:\\Varnholt\\x64\\QVA_Varnholt.dll, registered for 64-bit programs, is 32-bit.");
    EXPECT_EQ(
        finding.Cause(Language::Lithuanian),
        u"Biblioteka C:\\Varnholt\\x64\\QVA_Varnholt.dll, užregistruota 64 bitų programoms, yra 32 bitų.");
    return;
  }
  FAIL() << "not found";
}

/// Machines on which every kind of finding turns up.
std::vector<MachineFacts> ManyMachines();

TEST(Finding, LeavesNoPlaceForAValueUnfilled) {
  for (const MachineFacts& machine : ManyMachines()) {
    for (const Finding& finding : Judge(machine, &NoWords)) {
      for (const Language language : {Language::English, Language::Lithuanian}) {
        for (const std::u16string& text : {finding.Cause(language), finding.Action(language)}) {
          EXPECT_EQ(text.find_first_of(u"{}"), text.npos) << ToUtf8(text);
        }
      }
    }
  }
}

TEST(FindingKinds, AllTurnUp) {
  std::set<std::string_view> found;
  for (const MachineFacts& machine : ManyMachines()) {
    for (const Finding& finding : Judge(machine, &NoWords)) found.insert(finding.kind->code);
  }
  for (const FindingKind& kind : FindingKinds()) EXPECT_TRUE(found.contains(kind.code)) << kind.code;
}

TEST(FindingKinds, SayWhatToDoAboutWhateverIsWrong) {
  std::set<std::string_view> codes;
  for (const FindingKind& kind : FindingKinds()) {
    EXPECT_TRUE(codes.insert(kind.code).second) << kind.code;
    for (std::size_t language = 0; language < kLanguageCount; ++language) {
      EXPECT_FALSE(kind.cause[language].empty()) << kind.code;
      if (kind.level != Level::Ok) {
        EXPECT_FALSE(kind.action[language].empty()) << kind.code;
      }
    }
  }
}

std::vector<MachineFacts> ManyMachines() {
  std::vector<MachineFacts> machines;
  const auto add = [&](auto&& change) {
    machines.push_back(GoodMachine());
    change(machines.back(), machines.back().bitnesses[0]);
  };
  add([](MachineFacts& machine, BitnessFacts& x64) {
    machine.is_elevated = true;
    machine.call_log = u"C:\\calls.log";
    x64.hives[0] = Users(kInstalled);
    x64.hives[1].present = 0;
    x64.book = {};
  });
  add([](MachineFacts& machine, BitnessFacts& x64) {
    machine.code_page = 1252;
    machine.book_setting.clear();
    machine.trusts = {{.version = u"16.0", .macros = 4, .is_macros_policy = true}};
    machine.excels.push_back({{.path = u"C:\\Nera\\EXCEL.EXE"}});
    machine.excels.push_back({GoodFile(u"C:\\Office32\\EXCEL.EXE")});
    machine.excels.back().file.machine = kMachineX86;
    x64.files[0].zone = 3;
    x64.hives[0] = Users(kUnpacked);
    x64.files[0].version = u"1.1";
  });
  add([](MachineFacts& machine, BitnessFacts& x64) {
    machine.excels.clear();
    machine.trusts[0].macros = 3;
    machine.bitnesses[1].start_code = 2;
    x64.hives.clear();
  });
  add([](MachineFacts&, BitnessFacts& x64) {
    x64.hives[0] = Users(kInstalled);
    x64.hives[1].present = 5;
    x64.hives[1].foreign = 2;
    x64.hives[1].servers = {u"a\\1", u"a\\2", u"a\\3", u"a\\4", u"a\\5"};
    for (const std::u16string& server : x64.hives[1].servers) x64.files.push_back(GoodFile(server));
    x64.files[2].has_folder = false;
    x64.files[3].is_there = false;
    x64.files[4].machine = 0;
    x64.files[5].machine = kMachineX86;
    x64.files[6].load_code = 5;
    x64.creations[0].code = 0x80070005;
    x64.creations[1].code = 0x800A01AD;
    x64.host_classes[0].server.clear();
    x64.host_classes[1].code = 0x80004005;
    x64.book.error = 5;
    x64.archive.error = 5;
    x64.is_complete = false;
    x64.doing = u"something";
  });
  add([](MachineFacts&, BitnessFacts& x64) {
    for (HostClass& host : x64.host_classes) host.server.clear();
    x64.hives[0] = Users(kInstalled);
    x64.archive.text.clear();
  });
  add([](MachineFacts&, BitnessFacts& x64) {
    for (HostClass& host : x64.host_classes) {
      host.server.clear();
      host.is_for_other = true;
    }
    x64.archive_folder.is_there = false;
  });
  add([](MachineFacts&, BitnessFacts& x64) {
    for (HostClass& host : x64.host_classes) host.server = u"D:\\" + std::u16string(kDemoHostFile);
    x64.host_classes[0].is_behind_demo = true;
    x64.archive_folder.write_code = 5;
  });
  add([](MachineFacts& machine, BitnessFacts&) { machine.excels[0].file.machine = kMachineX86; });
  add([](MachineFacts&, BitnessFacts&) {});
  return machines;
}

TEST(CodeText, IsWhatPeopleLookUp) {
  EXPECT_EQ(CodeText(0x80040154), u"0x80040154");
  EXPECT_EQ(CodeText(126), u"126");
}

}  // namespace
}  // namespace qva::doctor
