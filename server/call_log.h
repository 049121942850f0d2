// A log of what macros call, for whoever wants to see a report's steps or what went wrong. The front doors
// write it: one line for each call that reaches an object, when the call returned or failed.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/automation.h"
#include "platform/filesystem/native_file.h"
#include "platform/object.h"

namespace qva {

/// The columns of a line, with a tab between them; tabs and line ends in texts are blanks.
enum class CallLogColumn {
  Time,       ///< when the call came, as 2026-11-22 11:05:38
  Process,    ///< the number of the process
  Duration,   ///< "12 ms"
  Member,     ///< "CReports.Init", "CToolbar.Caption =" where it is set
  Arguments,  ///< "(<Application>, 7, sName:="x")", as they came
  Outcome,    ///< "-> True", "! 13 QVA_Varnholt: Type mismatch", or nothing
};

struct CallLogSettings {
  NativePath file;  ///< none: no log
  /// Whether the content of arrays, and what other servers' objects give and are given, stands in the log. It
  /// may be that of cells or records, and is otherwise told by type and size.
  bool with_content = false;
  /// Whether an object belongs to the library.
  bool (*is_own)(const Object&) = nullptr;
};

/// Switches the log on, or off when there is no file. Until then it is off.
void SetCallLog(CallLogSettings settings);

/// A file becomes <file>.1 when it reaches this size.
inline constexpr std::uint64_t kLargestCallLog = std::uint64_t{4} * 1024 * 1024;

/// One call. Nothing of it raises, and a line that cannot be written is no failure of the call. Costs one
/// comparison while the log is off.
class LoggedCall {
 public:
  LoggedCall() = default;
  LoggedCall(const LoggedCall&) = delete;
  LoggedCall& operator=(const LoggedCall&) = delete;
  /// Writes the line.
  ~LoggedCall() {
    if (call_) End();
  }

  /// The call begins.
  void Begins(const Object& object, Access access, std::u16string_view member) noexcept {
    if (is_on_) Begin(object, access, member);
  }
  /// The arguments, before the member changes them.
  void Takes(std::span<const Value> positional, std::span<const NamedArgument> named = {}) noexcept {
    if (call_) Describe(positional, named);
  }
  void Returned(const Value& result) noexcept {
    if (call_) EndWith(result);
  }
  /// The exception that is being handled.
  void Failed() noexcept {
    if (call_) EndWithError();
  }

 private:
  friend void SetCallLog(CallLogSettings settings);
  struct Call;

  void Begin(const Object& object, Access access, std::u16string_view member) noexcept;
  void Describe(std::span<const Value> positional, std::span<const NamedArgument> named) noexcept;
  void EndWith(const Value& result) noexcept;
  void EndWithError() noexcept;
  void End() noexcept;

  static inline bool is_on_ = false;
  Call* call_ = nullptr;
};

}  // namespace qva
