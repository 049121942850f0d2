#include "tools/doctor/windows/Actions.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

#include "platform/filesystem/native_file.h"
#include "platform/text.h"
#include "platform/windows/AnsiRegistry.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "server/com/CallLog.h"
#include "server/com/LibraryRegistration.h"
#include "tools/doctor/Judgement.h"
#include "tools/doctor/RepairPlan.h"
#include "tools/doctor/windows/Console.h"
#include "tools/doctor/windows/MachineReader.h"
#include "tools/doctor/windows/Parts.h"
#include "tools/doctor/windows/Prober.h"
#include "tools/doctor/windows/ProgramFiles.h"

namespace qva::doctor {
namespace {

using windows::TextOf;
using windows::WideText;

constexpr int kDone = 0;
constexpr int kNotDone = 2;

std::vector<Bitness> Bitnesses(bool is_64bit) {
  return is_64bit ? std::vector{Bitness::x64, Bitness::x86} : std::vector{Bitness::x86};
}

/// Tells the outcome of a step: what it was about and, when it failed, why.
int Tell(const Words& what, std::u16string_view about, std::uint32_t code, std::u16string_view reason,
         Language language) {
  std::u16string line = what.in[static_cast<std::size_t>(language)];
  if (!about.empty()) line.append(u": ").append(about);
  if (code != 0) {
    line += language == Language::Lithuanian ? u": nepavyko: " : u": failed: ";
    line += reason.empty() ? SystemWords(code) : std::u16string(reason);
    line += u" (" + CodeText(code) + u")";
  }
  Write(line + u"\n");
  return code == 0 ? kDone : kNotDone;
}

Words OfBitness(std::u16string_view english, std::u16string_view lithuanian, Bitness bitness) {
  const Words words = BitnessWords(bitness);
  return {words.in[0] + u": " + std::u16string(english), words.in[1] + u": " + std::u16string(lithuanian)};
}

/// How a part that carried out a step tells the outcome: Windows' code, and the reason of a failure. A part
/// that could not run may well end with the exit status 0.
std::string OutcomeText(std::uint32_t code, std::string_view reason) {
  return std::to_string(code) + "\t" + std::string(reason);
}

Words DemoOff(Bitness bitness) {
  return OfBitness(u"the demo host is off", u"bandomoji sistema išjungta", bitness);
}

/// A step that its part carries out.
int RunStep(Bitness bitness, std::initializer_list<std::u16string_view> command, const Words& what,
            std::u16string_view about, Language language) {
  const PartResult result = Part(bitness, command).Wait();
  if (result.start_code != 0) return Tell(what, about, result.start_code, u"", language);
  const std::size_t end = result.answer.find('\t');
  if (end == result.answer.npos) {
    return Tell(what, about, ERROR_PROCESS_ABORTED, EndedAtOnce().in[static_cast<std::size_t>(language)],
                language);
  }
  const auto code = static_cast<std::uint32_t>(std::strtoul(result.answer.c_str(), nullptr, 10));
  return Tell(what, about, code, FromUtf8(result.answer).substr(end + 1), language);
}

/// The description that the last failed call left, if any.
std::string LastDescription() {
  windows::ComPtr<IErrorInfo> info;
  if (info.Obtain([](IErrorInfo** received) { return GetErrorInfo(0, received); }) != S_OK) return {};
  windows::Bstr text;
  info->GetDescription(text.Receive());
  return ToUtf8(text.Text());
}

/// Calls the installation entry of a library for the user. The library stays: what it says of a failure is
/// read after the call, and the doctor ends soon.
std::uint32_t Install(const std::u16string& path, bool install, std::string& answer) {
  const HMODULE module = LoadLibraryExW(WideText(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  using Entry = HRESULT(WINAPI*)(BOOL, LPCWSTR);
  const auto entry = reinterpret_cast<Entry>(
      reinterpret_cast<void*>(module ? GetProcAddress(module, "DllInstall") : nullptr));
  if (!entry) return static_cast<std::uint32_t>(HRESULT_FROM_WIN32(GetLastError()));
  const HRESULT code = entry(install ? TRUE : FALSE, L"user");
  if (FAILED(code)) answer = LastDescription();
  return FAILED(code) ? static_cast<std::uint32_t>(code) : 0;
}

std::uint32_t InstallDemo(bool install, std::string& answer) {
  const std::optional<std::u16string> path = FindInPackage(kDemoHostFile, kOwnBitness);
  if (!path) return static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  return Install(*path, install, answer);
}

std::uint32_t RemoveFromUser(std::string& answer) {
  const auto failure = com::Remove(com::DescribeRegistration(L""), com::Scope::User);
  if (!failure) return 0;
  answer = ToUtf8(TextOf(failure->Message().c_str()));
  return static_cast<std::uint32_t>(HRESULT_FROM_WIN32(static_cast<DWORD>(failure->code)));
}

std::u16string UsualLog() {
  const std::wstring folder = EnvironmentVariable("LOCALAPPDATA") + L"\\" + WideText(kLibraryName);
  CreateDirectoryW(folder.c_str(), nullptr);
  return TextOf((folder + L"\\calls.log").c_str());
}

/// The whole path of a file that is named from the current folder.
std::u16string WholePath(const std::u16string& file) {
  std::wstring path(MAX_PATH, L'\0');
  const DWORD length =
      GetFullPathNameW(WideText(file).c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
  return length == 0 || length > path.size() ? file : TextOf(path.data(), length);
}

/// Sets the file of the log, or deletes the value. Windows' code.
std::int32_t SetCallLog(const std::u16string& file) {
  windows::AnsiRegistry registry;
  OpenedKey key(registry);
  if (const auto code = key.Create(HKEY_CURRENT_USER_VALUE, TextOf(com::kOwnKey), kKeySetValue, {}))
    return code;
  const std::u16string value = TextOf(com::kCallLogValue);
  if (!file.empty()) return registry.SetStored(key.get(), value, {kRegSz, ToUtf16Bytes(file + u'\0')});
  const std::int32_t code = registry.DeleteValue(key.get(), value);
  return code == kRegistryFileNotFound ? kRegistrySuccess : code;
}

}  // namespace

MachineFacts Examine() {
  MachineFacts facts = LookAtMachine();
  // All at once: each waits for other people's code.
  std::vector<std::unique_ptr<Part>> parts;
  const std::vector<Bitness> bitnesses = Bitnesses(facts.is_64bit);
  parts.reserve(bitnesses.size());
  for (const Bitness bitness : bitnesses) {
    parts.push_back(std::make_unique<Part>(bitness, std::initializer_list<std::u16string_view>{kProbe}));
  }
  for (std::size_t i = 0; i < bitnesses.size(); ++i) {
    BitnessFacts& found = facts.bitnesses.emplace_back();
    const PartResult result = parts[i]->Wait();
    ReadFacts(result.answer, found);
    found.bitness = bitnesses[i];
    found.start_code = result.start_code;
  }
  return facts;
}

int Repair(const MachineFacts& facts, Language language) {
  int result = kDone;
  const std::vector<RepairStep> steps = PlanRepair(facts);
  for (const RepairStep& step : steps) {
    int done = kDone;
    switch (step.kind) {
      case RepairKind::Unblock:
        done = Tell({u"Unblocked, with what lies beside it", u"Atblokuota kartu su tuo, kas greta"},
                    step.file, TakeMarks(FolderOf(step.file)), u"", language);
        break;
      case RepairKind::RemoveFromUser:
        done = RunStep(
            step.bitness, {kRemove},
            OfBitness(u"removed the user's registration", u"pašalinta naudotojo registracija", step.bitness),
            u"", language);
        break;
      case RepairKind::RegisterForUser:
        done = RunStep(step.bitness, {kRegister, step.file},
                       OfBitness(u"registered for the user", u"užregistruota naudotojui", step.bitness),
                       step.file, language);
        break;
      case RepairKind::RemoveDemo:
        done = RunStep(step.bitness, {kRemoveDemo}, DemoOff(step.bitness), u"", language);
        break;
    }
    result = std::max(result, done);
  }
  if (steps.empty()) {
    Write(language == Language::Lithuanian ? u"Nėra nieko, ką būtų galima pataisyti naudotojui.\n"
                                           : u"There is nothing that could be put right for the user.\n");
  }
  return result;
}

int SwitchLog(bool on, const std::u16string& file, Language language) {
  std::u16string path;
  if (on) path = file.empty() ? UsualLog() : WholePath(file);
  const auto code = static_cast<std::uint32_t>(SetCallLog(path));
  return Tell(on ? Words(u"The log of calls is on", u"Kvietimų žurnalas įjungtas")
                 : Words(u"The log of calls is off", u"Kvietimų žurnalas išjungtas"),
              path, code, u"", language);
}

int SwitchDemo(bool on, Language language) {
  int result = kDone;
  for (const Bitness bitness : Bitnesses(LookAtMachine().is_64bit)) {
    const Words what =
        on ? OfBitness(u"the demo host is on", u"bandomoji sistema įjungta", bitness) : DemoOff(bitness);
    result = std::max(result, RunStep(bitness, {on ? kRegisterDemo : kRemoveDemo}, what, u"", language));
  }
  return result;
}

void RunPart(const CommandLine& line) {
  // Nobody sees boxes here.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const auto keep = [&](const BitnessFacts& facts) { WriteAnswer(line.answer, FactsText(facts)); };
  std::string reason;
  std::uint32_t code = 0;
  switch (line.command) {
    case Command::Probe:
      return keep(Probe(keep));
    case Command::Register:
      code = Install(line.file, true, reason);
      break;
    case Command::Remove:
      code = RemoveFromUser(reason);
      break;
    case Command::RegisterDemo:
      code = InstallDemo(true, reason);
      break;
    case Command::RemoveDemo:
      code = InstallDemo(false, reason);
      break;
    default:
      return;
  }
  WriteAnswer(line.answer, OutcomeText(code, reason));
}

}  // namespace qva::doctor
