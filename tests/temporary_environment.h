// Environment variables that go back.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>

#ifdef _WIN32
#include "platform/windows/WindowsApi.h"
#endif

namespace qva {

/// Sets environment variables, and puts back what was there when it goes. Under Windows they are the
/// system's, of which the C library has a copy of its own.
class TemporaryEnvironment {
 public:
  /// Of the system's characters, to which a path converts whatever it is made of.
  using Text = std::filesystem::path;

  TemporaryEnvironment() = default;
  ~TemporaryEnvironment() {
    for (const auto& [name, value] : before_) Apply(name, value);
  }
  TemporaryEnvironment(const TemporaryEnvironment&) = delete;
  TemporaryEnvironment& operator=(const TemporaryEnvironment&) = delete;

  /// No value removes the variable.
  void Set(const Text& name, const std::optional<Text>& value) {
    before_.emplace(name, ValueOf(name));
    Apply(name, value);
  }

 private:
#ifdef _WIN32
  static std::optional<Text> ValueOf(const Text& name) {
    std::wstring value(32767, L'\0');
    SetLastError(ERROR_SUCCESS);
    value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size())));
    if (GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
    return value;
  }
  static void Apply(const Text& name, const std::optional<Text>& value) {
    SetEnvironmentVariableW(name.c_str(), value ? value->c_str() : nullptr);
  }
#else
  static std::optional<Text> ValueOf(const Text& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<Text>(value) : std::nullopt;
  }
  static void Apply(const Text& name, const std::optional<Text>& value) {
    if (value) {
      ::setenv(name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name.c_str());
    }
  }
#endif

  std::map<Text, std::optional<Text>> before_;
};

}  // namespace qva
