// Machines for the doctor's tests.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/text.h"
#include "tools/doctor/Judgement.h"

namespace qva::doctor {

inline constexpr std::u16string_view kInstalled = u"C:\\Varnholt\\x64\\QVA_Varnholt.dll";
inline constexpr std::u16string_view kUnpacked = u"D:\\Paketas\\x64\\QVA_Varnholt.dll";

inline FileFacts GoodFile(std::u16string_view path, std::u16string_view version = u"1.0.0.0") {
  return {.path = std::u16string(path),
          .is_there = true,
          .has_folder = true,
          .machine = kMachineX64,
          .version = std::u16string(version),
          .load_code = 0};
}

/// A 64-bit Windows with a 64-bit Excel, on which the 64-bit library is registered for all users and
/// everything serves; no 32-bit one.
inline MachineFacts GoodMachine() {
  MachineFacts machine;
  machine.doctor_version = u"1.0.0";
  machine.windows_version = u"10.0.19045";
  machine.code_page = 1257;
  machine.book_setting = u"MEDVILNE";
  machine.excels.push_back({GoodFile(u"C:\\Office\\EXCEL.EXE", u"16.0.1.2")});
  machine.trusts.push_back({.version = u"16.0", .macros = 2, .project_access = 1});
  BitnessFacts x64;
  x64.bitness = Bitness::x64;
  x64.is_complete = true;
  x64.beside = kUnpacked;
  x64.files = {GoodFile(kUnpacked), GoodFile(kInstalled)};
  x64.hives = {
      {.hive = Hive::User, .expected = 10},
      {.hive = Hive::Machine, .expected = 10, .present = 10, .servers = {std::u16string(kInstalled)}}};
  x64.creations = {{.identifier = u"QVA_Varnholt.CReports"}, {.identifier = u"QVA_Varnholt.CTools"}};
  x64.host_classes = {
      {.identifier = u"Host.A", .class_id = u"{A}", .server = u"C:\\Host\\Host.dll"},
      {.identifier = u"Host.B", .class_id = u"{B}", .server = u"C:\\Host\\Host.dll"},
  };
  x64.book = {.is_asked = true, .text = u"MEDVILNE"};
  x64.archive = {.is_asked = true, .text = u"C:\\Ataskaitos"};
  x64.archive_folder = {.is_there = true};
  machine.bitnesses.push_back(x64);
  BitnessFacts x86;
  x86.bitness = Bitness::x86;
  x86.is_complete = true;
  x86.hives = {{.hive = Hive::User, .expected = 10}, {.hive = Hive::Machine, .expected = 10}};
  machine.bitnesses.push_back(x86);
  return machine;
}

inline std::u16string NoWords(std::uint32_t) {
  return u"Windows' words";
}

/// The findings that are not all right, as "code" or "64:code", warnings in parentheses.
inline std::vector<std::string> Problems(const MachineFacts& machine) {
  std::vector<std::string> problems;
  for (const Finding& finding : Judge(machine, &NoWords)) {
    if (finding.level == Level::Ok) continue;
    std::string problem = finding.bitness == 0 ? "" : std::to_string(finding.bitness) + ":";
    problem += finding.kind->code;
    problems.push_back(finding.level == Level::Warning ? "(" + problem + ")" : problem);
  }
  return problems;
}

}  // namespace qva::doctor
