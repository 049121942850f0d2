#include "tools/report-runner/OutputFolder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kProfilePrefix = "qva-report-";

/// A descriptor that has locked a folder; −1 when it cannot be opened. `is_taken` tells whether somebody else
/// has the lock. A file system that knows no locks gives them.
int LockFolder(const fs::path& path, bool& is_taken) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  is_taken = folder >= 0 && flock(folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  return folder;
}

/// Whether a lock file is one of a LibreOffice that this program started and that is dead. It names who
/// locked: user, host, time and the profile's URL.
bool IsDeadLock(const fs::path& file) {
  const std::string name = file.filename().string();
  if (!name.starts_with(".~lock.") || !name.ends_with('#')) return false;
  std::ostringstream contents;
  contents << std::ifstream(file).rdbuf();
  const std::string text = contents.str();
  const std::string profiles = "file://" + (fs::temp_directory_path() / kProfilePrefix).string();
  const std::size_t start = text.find(profiles);
  if (start == text.npos) return false;
  const std::size_t folder_start = start + std::string_view("file://").size();
  const fs::path folder = text.substr(folder_start, text.find('/', start + profiles.size()) - folder_start);
  bool is_taken = false;
  const int lock = LockFolder(folder, is_taken);
  if (lock >= 0) close(lock);
  return !is_taken;
}

}  // namespace

void RemoveDeadLocks(const fs::path& folder) {
  std::error_code error;
  std::vector<fs::path> dead;
  constexpr auto kOptions = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(folder, kOptions, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_regular_file(ignored) && IsDeadLock(entry->path())) dead.push_back(entry->path());
  }
  for (const fs::path& file : dead) fs::remove(file, error);
}

ProfileFolder::ProfileFolder() {
  std::string pattern = (fs::temp_directory_path() / kProfilePrefix).string() + "XXXXXX";
  if (!mkdtemp(pattern.data()))
    throw std::runtime_error("cannot make a folder in " + fs::temp_directory_path().string());
  path_ = pattern;
  bool is_taken = false;
  lock_ = LockFolder(path_, is_taken);
}

ProfileFolder::~ProfileFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
  if (lock_ >= 0) close(lock_);
}

OutputFolder::OutputFolder(const fs::path& path) : path_(path) {
  fs::create_directories(path_);
  bool is_taken = false;
  lock_ = LockFolder(path_, is_taken);
  is_ours_ = !is_taken;
}

OutputFolder::~OutputFolder() {
  if (lock_ >= 0) close(lock_);
}

std::optional<OutputFolder::State> OutputFolder::StateOf(const fs::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return State{status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void OutputFolder::Remember() {
  before_.clear();
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_)) {
    if (const auto state = StateOf(entry.path())) before_[entry.path().lexically_relative(path_)] = *state;
  }
}

bool OutputFolder::IsNew(const fs::path& file) const {
  const auto state = StateOf(path_ / file);
  const auto old = before_.find(file.lexically_normal());
  return state && (old == before_.end() || old->second != *state);
}

std::map<std::string, std::uintmax_t> OutputFolder::NewFiles() const {
  std::map<std::string, std::uintmax_t> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_)) {
    const fs::path name = entry.path().lexically_relative(path_);
    if (IsNew(name)) files[name.string()] = entry.file_size();
  }
  return files;
}

}  // namespace qva
