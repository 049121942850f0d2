// The doctor's command line.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tools/doctor/FindingKinds.h"

namespace qva::doctor {

enum class Command : std::uint8_t {
  Check,
  Repair,
  LogOn,
  LogOff,
  DemoOn,
  DemoOff,
  Help,
  // What the doctor asks its parts for, a process of either bitness.
  Probe,
  Register,
  Remove,
  RegisterDemo,
  RemoveDemo
};

// How the doctor asks its parts.
inline constexpr std::u16string_view kProbe = u"/probe";
inline constexpr std::u16string_view kRegister = u"/register";  ///< and the library
inline constexpr std::u16string_view kRemove = u"/remove";
inline constexpr std::u16string_view kRegisterDemo = u"/register-demo";
inline constexpr std::u16string_view kRemoveDemo = u"/remove-demo";
inline constexpr std::u16string_view kAnswer = u"/answer";  ///< and the file that it goes to

struct CommandLine {
  Command command = Command::Check;
  std::u16string file;               ///< of the log, empty: the usual one; of the library to register
  std::u16string report;             ///< the page to write; empty: none
  std::optional<Language> language;  ///< otherwise the user's
  std::u16string answer;             ///< of a part: the file that its answer goes to
};

/// Reads the arguments, without the program's name. Options begin with "/", "-" or "--"; letter case does not
/// matter. Nothing when they make no sense.
std::optional<CommandLine> ReadCommandLine(std::span<const std::u16string> arguments);

/// The exit status of a command line that makes no sense.
inline constexpr int kWrongCommandLine = 3;

/// What can be asked for.
std::u16string_view Usage(Language language);

}  // namespace qva::doctor
