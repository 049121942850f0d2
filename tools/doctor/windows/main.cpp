// qva-doctor.exe: tells why the library does or does not serve on this machine.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/text.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "tools/doctor/CommandLine.h"
#include "tools/doctor/Judgement.h"
#include "tools/doctor/Report.h"
#include "tools/doctor/windows/Actions.h"
#include "tools/doctor/windows/Console.h"
#include "tools/doctor/windows/Parts.h"

// After Windows' own header.
#include <shellapi.h>

namespace qva::doctor {
namespace {

std::vector<std::u16string> Arguments() {
  std::vector<std::u16string> arguments;
  int count = 0;
  const windows::LocalMemory<wchar_t*> texts(CommandLineToArgvW(GetCommandLineW(), &count));
  for (int i = 1; texts && i < count; ++i) arguments.push_back(windows::TextOf(texts.get()[i]));
  return arguments;
}

std::u16string Now() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  const auto two_digits = [](WORD number) { return (number < 10 ? u"0" : u"") + NumberText(number); };
  return NumberText(now.wYear) + u"-" + two_digits(now.wMonth) + u"-" + two_digits(now.wDay) + u" " +
         two_digits(now.wHour) + u":" + two_digits(now.wMinute);
}

/// Checks, tells, and writes the page that is asked for. Result: the worst level, or 2 when the page could
/// not be written.
int Check(const MachineFacts& facts, const std::u16string& page, Language language) {
  const std::vector<Finding> findings = Judge(facts, &SystemWords);
  const ReportHead head{facts.doctor_version, Now()};
  Write(TextReport(head, findings, language));
  int result = static_cast<int>(Worst(findings));
  if (!page.empty()) {
    if (const auto code = WriteAnswer(page, HtmlReport(head, findings, facts, language)); code != 0) {
      Write(page + u": " + SystemWords(code) + u"\n");
      result = static_cast<int>(Level::Error);
    }
  }
  return result;
}

int Run(const CommandLine& line) {
  const Language language = line.language.value_or(UsersLanguage());
  switch (line.command) {
    case Command::Help:
      Write(Usage(language));
      return 0;
    case Command::Check:
      return Check(Examine(), line.report, language);
    case Command::Repair: {
      const int repaired = Repair(Examine(), language);
      Write(u"\n");
      return std::max(repaired, Check(Examine(), line.report, language));
    }
    case Command::LogOn:
    case Command::LogOff:
      return SwitchLog(line.command == Command::LogOn, line.file, language);
    case Command::DemoOn:
    case Command::DemoOff:
      return SwitchDemo(line.command == Command::DemoOn, language);
    default:
      RunPart(line);
      // What was loaded on the way may not survive an orderly end.
      TerminateProcess(GetCurrentProcess(), 0);
      return 0;
  }
}

int Main() {
  const std::vector<std::u16string> arguments = Arguments();
  const std::optional<CommandLine> line = ReadCommandLine(arguments);
  if (!line) {
    Write(Usage(UsersLanguage()));
    WaitForReader(UsersLanguage());
    return kWrongCommandLine;
  }
  const int result = Run(*line);
  WaitForReader(line->language.value_or(UsersLanguage()));
  return result;
}

}  // namespace
}  // namespace qva::doctor

int main() {
  try {
    return qva::doctor::Main();
  } catch (const std::exception& error) {
    qva::doctor::Write(qva::FromUtf8(error.what()) + u"\n");
    return static_cast<int>(qva::doctor::Level::Error);
  }
}
