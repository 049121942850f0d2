// The doctor's parts: processes of either bitness that do what only their bitness can, and what may end a
// process.
#pragma once

#include <initializer_list>
#include <string>

#include "platform/windows/Handle.h"
#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// What a part left behind.
struct PartResult {
  std::uint32_t start_code = 0;  ///< Windows' code for starting it
  std::string answer;            ///< in UTF-8; empty when it died first
};

/// A part at work.
class Part {
 public:
  /// Starts the part of a bitness with a command and its values.
  Part(Bitness bitness, std::initializer_list<std::u16string_view> command);
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;
  ~Part();

  /// Waits for its end, which is brought about after a while.
  PartResult Wait();

 private:
  std::wstring answer_file_;
  windows::Handle process_;
  std::uint32_t start_code_ = 0;
};

/// The name of this program's file.
inline constexpr std::u16string_view kProgramFile = u"qva-doctor.exe";

/// Writes a part's answer in place of an earlier one. Windows' code.
std::uint32_t WriteAnswer(const std::u16string& path, std::string_view bytes);

}  // namespace qva::doctor
