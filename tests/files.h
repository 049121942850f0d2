// Files of tests, and a folder of their own for them.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace qva {

/// A new folder among the temporary ones, removed with all its content.
class TemporaryFolder {
 public:
  /// `prefix` is what its name begins with.
  explicit TemporaryFolder(const std::filesystem::path& prefix = "qva-test-") {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / prefix;
      path_ += std::to_string(random());
    } while (!std::filesystem::create_directory(path_));
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

/// Goes to a folder and back.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& path) { std::filesystem::current_path(path); }
  ~CurrentFolder() { std::filesystem::current_path(before_); }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

/// Raises std::runtime_error where it cannot be written.
inline void WriteFile(const std::filesystem::path& file, std::string_view content) {
  std::ofstream stream(file, std::ios::binary);
  stream << content << std::flush;
  if (!stream) throw std::runtime_error("cannot write " + file.string());
}

/// All bytes of the file. Raises std::runtime_error where it cannot be opened, unless there is
/// something to take its place.
inline std::string FileContent(const std::filesystem::path& file, const char* otherwise = nullptr) {
  const std::ifstream stream(file, std::ios::binary);
  if (!stream && otherwise) return otherwise;
  if (!stream) throw std::runtime_error("cannot open " + file.string());
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

}  // namespace qva
