// The process that the library runs in: its environment variables, and where the library itself lies.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qva {

class Environment {
 public:
  virtual ~Environment() = default;

  /// Reads a variable in the ANSI code page into `buffer`, as Windows' GetEnvironmentVariableA does.
  /// Result: the number of characters stored, without the terminating zero. When the buffer (which must also
  /// hold that zero) is too small, the needed size including the zero, and the buffer is left alone.
  /// 0 when there is no such variable. Does not raise.
  virtual std::uint32_t GetVariable(std::u16string_view name, std::span<char> buffer) const = 0;

  /// The folder of the library's own file, without a separator at its end; empty when it is not to be had.
  /// Does not raise.
  virtual std::u16string LibraryFolder() const = 0;
};

}  // namespace qva
