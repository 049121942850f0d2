#include "tools/doctor/RepairPlan.h"

#include "tests/doctor/doctor_test.h"

namespace qva::doctor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Plan(const MachineFacts& machine) {
  std::vector<std::string> steps;
  for (const RepairStep& step : PlanRepair(machine)) {
    const char* kind = step.kind == RepairKind::Unblock          ? "unblock "
                       : step.kind == RepairKind::RemoveFromUser ? "remove "
                       : step.kind == RepairKind::RemoveDemo     ? "demo off "
                                                                 : "register ";
    steps.push_back(kind + std::to_string(static_cast<int>(step.bitness)) + " " + ToUtf8(step.file));
  }
  return steps;
}

template <class Change>
std::vector<std::string> PlanWith(Change&& change) {
  MachineFacts machine = GoodMachine();
  change(machine.bitnesses[0]);
  return Plan(machine);
}

constexpr char kRegister[] = "register 64 D:\\Paketas\\x64\\QVA_Varnholt.dll";

HiveFacts UsersHive(std::u16string_view file) {
  return {.hive = Hive::User, .expected = 10, .present = 10, .servers = {std::u16string(file)}};
}

TEST(PlanRepair, LeavesARegistrationThatServes) {
  EXPECT_THAT(Plan(GoodMachine()), IsEmpty());
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.hives[0] = UsersHive(kUnpacked); }), IsEmpty());
}

TEST(PlanRepair, RegistersWhatLiesBesideWhereNothingServes) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.hives[1] = {.expected = 10}; }), ElementsAre(kRegister));
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.hives[1].present = 9; }), ElementsAre(kRegister));
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.hives[1].foreign = 1; }), ElementsAre(kRegister));
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.files[1].is_there = false; }), ElementsAre(kRegister));
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.files[1].load_code = 5; }), ElementsAre(kRegister));
}

TEST(PlanRepair, RegistersNothingThatDoesNotServeItself) {
  for (const auto& spoil : {+[](BitnessFacts& x64) { x64.beside.clear(); },
                            +[](BitnessFacts& x64) { x64.files[0].load_code = 126; },
                            +[](BitnessFacts& x64) { x64.files[0].machine = kMachineX86; }}) {
    EXPECT_THAT(PlanWith([&](BitnessFacts& x64) {
                  x64.hives[1] = {.expected = 10};
                  spoil(x64);
                }),
                IsEmpty());
  }
}

TEST(PlanRepair, RemovesAUsersRegistrationThatDoesNotServe) {
  const auto stale = [](BitnessFacts& x64) {
    x64.hives[0] = UsersHive(u"C:\\Nera\\QVA_Varnholt.dll");
    x64.files.push_back({.path = u"C:\\Nera\\QVA_Varnholt.dll"});
  };
  EXPECT_THAT(PlanWith(stale), ElementsAre("remove 64 "));
  EXPECT_THAT(PlanWith([&](BitnessFacts& x64) {
                stale(x64);
                x64.hives[1] = {.expected = 10};
              }),
              ElementsAre("remove 64 ", kRegister));
}

TEST(PlanRepair, RemovesAUsersRegistrationThatHidesANewerOne) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) {
                x64.hives[0] = UsersHive(kUnpacked);
                x64.files[0].version = u"0.9.0.0";
              }),
              ElementsAre("remove 64 "));
}

TEST(PlanRepair, TakesTheNewerLibraryBesideForTheUsersOlderOne) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) {
                x64.hives[0] = UsersHive(kInstalled);
                x64.hives[1].present = 0;
                x64.files[0].version = u"1.0.10.0";
                x64.files[1].version = u"1.0.9.0";
              }),
              ElementsAre(kRegister));
}

TEST(PlanRepair, UnblocksMarkedFiles) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.files[0].zone = 3; }),
              ElementsAre("unblock 64 D:\\Paketas\\x64\\QVA_Varnholt.dll"));
}

TEST(PlanRepair, SwitchesADemoHostOffThatStandsBeforeAnother) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) { x64.host_classes[1].is_behind_demo = true; }),
              ElementsAre("demo off 64 "));
}

TEST(PlanRepair, TouchesNothingThatWasNotCheckedToItsEnd) {
  EXPECT_THAT(PlanWith([](BitnessFacts& x64) {
                x64.hives[1] = {.expected = 10};
                x64.is_complete = false;
              }),
              IsEmpty());
}

TEST(IsNewer, ComparesNumbersAndNotTexts) {
  EXPECT_TRUE(IsNewer(u"1.10.0.0", u"1.9.9.9"));
  EXPECT_FALSE(IsNewer(u"1.0.0.0", u"1.0.0.0"));
  EXPECT_FALSE(IsNewer(u"1.0", u"1.0.0.0"));
  EXPECT_TRUE(IsNewer(u"0.1", u""));
}

}  // namespace
}  // namespace qva::doctor
