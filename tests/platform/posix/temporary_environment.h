// Environment variables that go back.
#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace qva {

/// Sets environment variables, and puts their old values back when it goes.
class TemporaryEnvironment {
 public:
  TemporaryEnvironment() = default;
  ~TemporaryEnvironment() {
    for (const auto& [name, value] : before_) Apply(name, value);
  }
  TemporaryEnvironment(const TemporaryEnvironment&) = delete;
  TemporaryEnvironment& operator=(const TemporaryEnvironment&) = delete;

  /// No value removes the variable.
  void Set(const std::string& name, const std::optional<std::string>& value) {
    const char* before = std::getenv(name.c_str());
    before_.emplace(name, before ? std::optional<std::string>(before) : std::nullopt);
    Apply(name, value);
  }

 private:
  static void Apply(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name.c_str());
    }
  }

  std::map<std::string, std::optional<std::string>> before_;
};

}  // namespace qva
