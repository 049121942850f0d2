#include "tools/report-runner/OutputFolder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kProfilePrefix = "qva-report-";

/// A descriptor that has locked a folder; none when it cannot be opened. `is_taken` tells whether somebody
/// else has the lock. A file system that knows no locks gives them.
FileDescriptor LockFolder(const fs::path& path, bool& is_taken) {
  FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  is_taken = folder && flock(folder.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  return folder;
}

/// A text of a URL as it was before it was put into one.
std::string Decoded(std::string_view url) {
  std::string text;
  for (std::size_t n = 0; n < url.size(); ++n) {
    unsigned char code = 0;
    const char* const digits = url.data() + n + 1;
    if (url[n] == '%' && n + 2 < url.size() &&
        std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      text += static_cast<char>(code);
      n += 2;
    } else {
      text += url[n];
    }
  }
  return text;
}

/// Whether a host is this one; either name may have its domain.
bool IsThisHost(std::string_view host) {
  char name[256] = {};
  if (gethostname(name, sizeof name - 1) != 0) return false;
  const std::string_view own = name;
  return host.substr(0, host.find('.')) == own.substr(0, own.find('.'));
}

/// Whether a lock file is one of a LibreOffice that this program started and that is dead. It names who
/// locked: user twice, host, time and the profile's URL, with commas between. The profile may stand in
/// another folder for temporary files than today's.
bool IsDeadLock(const fs::path& file) {
  const std::string name = file.filename().string();
  if (!name.starts_with(".~lock.") || !name.ends_with('#')) return false;
  std::ostringstream contents;
  contents << std::ifstream(file).rdbuf();
  const std::string text = contents.str();
  std::istringstream fields(text);
  std::string user, login, host, time, profile;
  for (std::string* field : {&user, &login, &host, &time, &profile}) std::getline(fields, *field, ',');
  constexpr std::string_view kScheme = "file://";
  const std::size_t name_start = profile.rfind("/" + std::string(kProfilePrefix));
  if (!IsThisHost(host) || !profile.starts_with(kScheme) || name_start == profile.npos) return false;
  const std::size_t length = profile.find_first_of("/;", name_start + 1) - kScheme.size();
  const fs::path folder = Decoded(std::string_view(profile).substr(kScheme.size(), length));
  bool is_taken = false;
  LockFolder(folder, is_taken);
  return !is_taken;
}

/// Calls `look` with all that is below a folder, but for what may not be looked into.
template <class Look>
void ForEachEntry(const fs::path& folder, Look look) {
  std::error_code error;
  constexpr auto kOptions = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(folder, kOptions, error), end; !error && entry != end;
       entry.increment(error)) {
    look(*entry);
  }
}

}  // namespace

bool IsInFolder(const fs::path& path) {
  const fs::path normal = path.lexically_normal();
  return path.is_relative() && path.has_filename() && normal != "." && *normal.begin() != "..";
}

void RemoveDeadLocks(const fs::path& folder) {
  std::vector<fs::path> dead;
  ForEachEntry(folder, [&](const fs::directory_entry& entry) {
    std::error_code ignored;
    if (entry.is_regular_file(ignored) && IsDeadLock(entry.path())) dead.push_back(entry.path());
  });
  std::error_code ignored;
  for (const fs::path& file : dead) fs::remove(file, ignored);
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
}

OutputFolder::OutputFolder(const fs::path& path) : path_(path) {
  fs::create_directories(path_);
  bool is_taken = false;
  lock_ = LockFolder(path_, is_taken);
  is_ours_ = !is_taken;
}

std::optional<OutputFolder::State> OutputFolder::StateOf(const fs::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  return State{status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void OutputFolder::Remember() {
  before_.clear();
  ForEachEntry(path_, [&](const fs::directory_entry& entry) {
    if (const auto state = StateOf(entry.path())) before_[entry.path().lexically_relative(path_)] = *state;
  });
}

bool OutputFolder::IsNew(const fs::path& file) const {
  const auto state = StateOf(path_ / file);
  const auto old = before_.find(file.lexically_normal());
  return state && (old == before_.end() || old->second != *state);
}

bool OutputFolder::IsChanged(const fs::path& except) const {
  std::size_t old_files = 0;
  bool has_new = false;
  ForEachEntry(path_, [&](const fs::directory_entry& entry) {
    const fs::path name = entry.path().lexically_relative(path_);
    if (!StateOf(entry.path()) || name == except) return;
    has_new = has_new || IsNew(name);
    ++old_files;
  });
  return has_new || old_files + before_.count(except) != before_.size();
}

std::map<std::string, std::uintmax_t> OutputFolder::NewFiles() const {
  std::map<std::string, std::uintmax_t> files;
  ForEachEntry(path_, [&](const fs::directory_entry& entry) {
    const fs::path name = entry.path().lexically_relative(path_);
    std::error_code error;
    const std::uintmax_t length = entry.file_size(error);
    if (!error && IsNew(name)) files[name.string()] = length;
  });
  return files;
}

}  // namespace qva
