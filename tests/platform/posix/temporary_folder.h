// What tests of the Linux services share: a folder of their own, and environment variables that go back.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

namespace qva {

/// A new folder, removed with all its content.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "qva-test-XXXXXX").string();
    if (!::mkdtemp(name.data())) throw std::filesystem::filesystem_error("mkdtemp", name, {});
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

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

inline void WriteFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

/// The file's content; "(no file)" when it cannot be read.
inline std::string FileContent(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "(no file)";
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace qva
