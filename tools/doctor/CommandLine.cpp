#include "tools/doctor/CommandLine.h"

#include <algorithm>
#include <string_view>

#include "platform/text.h"

namespace qva::doctor {
namespace {

struct NamedCommand {
  std::u16string_view name;
  Command command;
};

/// Those that stand alone; the marked ones are for the doctor itself.
constexpr NamedCommand kCommands[] = {
    {u"check", Command::Check},
    {u"repair", Command::Repair},
    {u"help", Command::Help},
    {u"/help", Command::Help},
    {u"/h", Command::Help},
    {u"/?", Command::Help},
    {kProbe, Command::Probe},
    {kRegister, Command::Register},
    {kRemove, Command::Remove},
    {kRegisterDemo, Command::RegisterDemo},
    {kRemoveDemo, Command::RemoveDemo},
};

/// The name of an option in lower case; empty for what is none.
std::u16string OptionName(std::u16string_view argument) {
  for (const std::u16string_view mark : {u"--", u"-", u"/"}) {
    if (argument.starts_with(mark)) return ToLower(argument.substr(mark.size()));
  }
  return {};
}

/// Arguments that are taken from left to right.
class Reader {
 public:
  explicit Reader(std::span<const std::u16string> arguments) : rest_(arguments) {}

  std::optional<CommandLine> Read() {
    CommandLine line;
    bool has_command = false;
    while (!rest_.empty()) {
      const std::u16string argument = Next();
      const std::u16string option = OptionName(argument);
      if (option == u"report") {
        if (!TakeValue(line.report)) return std::nullopt;
      } else if (option == OptionName(kAnswer)) {
        if (!TakeValue(line.answer)) return std::nullopt;
      } else if (option == u"lang") {
        std::u16string language;
        if (!TakeValue(language)) return std::nullopt;
        if (EqualIgnoringCase(language, u"lt")) {
          line.language = Language::Lithuanian;
        } else if (EqualIgnoringCase(language, u"en")) {
          line.language = Language::English;
        } else {
          return std::nullopt;
        }
      } else if (has_command || !TakeCommand(option.empty() ? ToLower(argument) : u"/" + option, line)) {
        return std::nullopt;
      } else {
        has_command = true;
      }
    }
    const bool writes_report = line.command == Command::Check || line.command == Command::Repair;
    if (!line.report.empty() && !writes_report) return std::nullopt;
    return line;
  }

 private:
  std::u16string Next() {
    const std::u16string& next = rest_.front();
    rest_ = rest_.subspan(1);
    return next;
  }
  bool TakeValue(std::u16string& value) {
    if (rest_.empty() || rest_.front().empty() || !OptionName(rest_.front()).empty()) return false;
    value = Next();
    return true;
  }

  bool TakeCommand(std::u16string_view name, CommandLine& line) {
    if (name == u"log") {
      if (!TakeSwitch(line, Command::LogOn, Command::LogOff)) return false;
      if (line.command == Command::LogOn) TakeValue(line.file);
      return true;
    }
    if (name == u"demo") return TakeSwitch(line, Command::DemoOn, Command::DemoOff);
    const auto* found = std::ranges::find(kCommands, name, &NamedCommand::name);
    if (found == std::end(kCommands)) return false;
    line.command = found->command;
    return line.command != Command::Register || TakeValue(line.file);
  }

  bool TakeSwitch(CommandLine& line, Command on, Command off) {
    std::u16string value;
    if (!TakeValue(value)) return false;
    const bool is_on = EqualIgnoringCase(value, u"on");
    line.command = is_on ? on : off;
    return is_on || EqualIgnoringCase(value, u"off");
  }

  std::span<const std::u16string> rest_;
};

}  // namespace

std::optional<CommandLine> ReadCommandLine(std::span<const std::u16string> arguments) {
  return Reader(arguments).Read();
}

std::u16string_view Usage(Language language) {
  return language == Language::Lithuanian
             ? u"qva-doctor [check] [/report failas.html] [/lang lt|en]   patikrina šį kompiuterį\n"
               u"qva-doctor repair                                        pataiso, ką galima pataisyti "
               u"naudotojui\n"
               u"qva-doctor log on [failas] | log off                     įjungia ar išjungia kvietimų "
               u"žurnalą\n"
               u"qva-doctor demo on | off                                 įjungia ar išjungia bandomąją "
               u"sistemą\n"
               u"Būsena baigus: 0 – gerai, 1 – įspėjimai, 2 – klaidos, 3 – netinkama komanda\n"
             : u"qva-doctor [check] [/report file.html] [/lang lt|en]   checks this computer\n"
               u"qva-doctor repair                                      puts right what can be put right for "
               u"the user\n"
               u"qva-doctor log on [file] | log off                     switches the log of calls\n"
               u"qva-doctor demo on | off                               switches the demo host\n"
               u"Exit status: 0 all is well, 1 warnings, 2 errors, 3 wrong command line\n";
}

}  // namespace qva::doctor
