#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/filesystem/encoded_text_stream.h"
#include "platform/filesystem/native_file.h"
#include "platform/posix/FileAccess.h"
#include "platform/posix/OwnersFolders.h"
#include "platform/posix/UserFolder.h"
#include "platform/text.h"
#include "platform/variables.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kSystemRoot = u"/";
constexpr mode_t kNewFileMode = 0666;  // less what the user's mask takes
constexpr mode_t kNewFolderMode = 0777;

/// The platform's error for a system's error code that an operation on `path` met.
AutomationError ErrorFor(int code, const fs::path& path) {
  switch (code) {
    case ENOENT: {
      std::error_code error;
      const bool has_parent = fs::is_directory(path.parent_path(), error);
      return AutomationError(has_parent ? kFileNotFound : kPathNotFound);
    }
    case ENOTDIR:
      return AutomationError(kPathNotFound);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return AutomationError(kPathFileAccess);
    case EBUSY:
    case ETXTBSY:
      return AutomationError(kPermissionDenied);
    case EEXIST:
      return AutomationError(kFileAlreadyExists);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return AutomationError(kDiskFull);
    case EMFILE:
    case ENFILE:
      return AutomationError(kTooManyFiles);
    case EXDEV:
      return AutomationError(kOtherDrive);
    case EINVAL:
    case ENAMETOOLONG:
      return AutomationError(kBadFileNameOrNumber);
    default:
      return AutomationError(kDeviceError);
  }
}

struct stat StatusOf(const fs::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) throw ErrorFor(errno, path);
  return status;
}

FileDescriptor OpenFile(const fs::path& path, int flags) {
  FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC, kNewFileMode));
  if (!file) throw ErrorFor(errno, path);
  // A folder can be opened for reading like a file.
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) throw ErrorFor(errno, path);
  if (S_ISDIR(status.st_mode)) throw AutomationError(kPathFileAccess);
  return file;
}

/// The bytes of a file of the system.
class SystemFile : public ByteFile {
 public:
  SystemFile(FileDescriptor file, fs::path path) : file_(std::move(file)), path_(std::move(path)) {}

  std::size_t Read(std::span<char> buffer) override {
    for (;;) {
      const ssize_t count = ::read(file_.get(), buffer.data(), buffer.size());
      if (count >= 0) return static_cast<std::size_t>(count);
      if (errno != EINTR) throw AutomationError(kDeviceError);
    }
  }

  void Append(std::string_view bytes) override {
    struct stat before {};
    if (::fstat(file_.get(), &before) != 0) throw ErrorFor(errno, path_);
    if (WriteWhole(file_.get(), bytes)) return;
    const AutomationError failure = ErrorFor(errno, path_);
    // What got into the file of a line that did not fit is no line. A device, which holds nothing, refuses.
    if (S_ISREG(before.st_mode) && ::ftruncate(file_.get(), before.st_size) != 0) {
      throw AutomationError(kDeviceError);
    }
    throw failure;
  }

 private:
  FileDescriptor file_;
  fs::path path_;
};

std::unique_ptr<ByteFile> OpenBytes(const fs::path& path, int flags) {
  return std::make_unique<SystemFile>(OpenFile(path, flags), path);
}

/// What a folder has under a name in any letter case; the name itself when there is nothing.
fs::path FindName(const fs::path& folder, const std::u16string& name) {
  const fs::path exact = folder / ToUtf8(name);
  std::error_code error;
  if (fs::exists(fs::symlink_status(exact, error))) return exact;
  fs::path found;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path& path = entry->path();
    if (EqualIgnoringCase(FromUtf8(path.filename().string()), name) && (found.empty() || path < found)) {
      found = path;
    }
  }
  return found.empty() ? exact : found;
}

/// How a channel's file is opened. All writing goes to the end, wherever a line that failed left off.
int FlagsOf(ChannelMode mode) {
  switch (mode) {
    case ChannelMode::Input:
      return O_RDONLY;
    case ChannelMode::Output:
      return O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
    case ChannelMode::Append:
      break;
  }
  return O_WRONLY | O_CREAT | O_APPEND;
}

std::u16string KeyOf(const fs::path& path) {
  return FromUtf8(path.string());
}

void RequireFile(const fs::path& path) {
  if (S_ISDIR(StatusOf(path).st_mode)) throw AutomationError(kPathFileAccess);
}

/// Gives a file another name unless that is taken; false, with the reason in errno, when it does not.
bool RenameToFree(const fs::path& from, const fs::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system without that kind of renaming.
  struct stat status {};
  if (::lstat(to.c_str(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.c_str(), to.c_str()) == 0;
}

/// Copies what a file holds, its time of last change and, where possible, its permissions; false, with the
/// reason in errno, when that fails.
bool CopyContent(int from, int to) {
  struct stat status {};
  if (::fstat(from, &status) != 0) return false;
  char block[65536];
  for (;;) {
    const ssize_t count = ::read(from, block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    if (!WriteWhole(to, {block, static_cast<std::size_t>(count)})) return false;
  }
  const timespec times[] = {status.st_atim, status.st_mtim};
  // Folders of other systems may have no permissions to set.
  ::fchmod(to, status.st_mode & 07777);
  return ::futimens(to, times) == 0;
}

std::vector<std::u16string> NamesOf(const fs::path& relative) {
  std::vector<std::u16string> names;
  for (const fs::path& name : relative) {
    if (name != ".") names.push_back(FromUtf8(name.string()));
  }
  return names;
}

}  // namespace

fs::path UserDrivesPath() {
  if (fs::path drives = EnvironmentVariable(variables::kDrives); !drives.empty()) return drives;
  const fs::path folder = UserFolder("XDG_DATA_HOME", ".local/share");
  return folder.empty() ? folder : folder / "drives";
}

PosixFiles::PosixFiles(fs::path drives, const Locale& locale) : drives_(std::move(drives)), locale_(locale) {
}

std::int16_t PosixFiles::FreeNumber() const {
  return open_.FreeNumber();
}

std::unique_ptr<TextChannel> PosixFiles::OpenChannel(std::int16_t number, std::u16string_view path,
                                                     ChannelMode mode) {
  const fs::path file = FilePath(path);
  open_.RequireChannel(number, KeyOf(file), mode);
  return open_.OpenChannel(number, KeyOf(file), mode, OpenBytes(file, FlagsOf(mode)), locale_);
}

std::unique_ptr<TextStream> PosixFiles::CreateTextStream(std::u16string_view path) {
  const fs::path file = FilePath(path);
  open_.RequireStream(KeyOf(file), false);
  auto bytes = OpenBytes(file, FlagsOf(ChannelMode::Output));
  return WriteTextStream(open_.OpenStream(KeyOf(file), false, std::move(bytes)), StreamEncoding::Utf16,
                         locale_);
}

std::unique_ptr<TextStream> PosixFiles::OpenTextStream(std::u16string_view path, StreamMode mode) {
  const fs::path file = FilePath(path);
  const bool is_for_reading = mode == StreamMode::ForReading;
  open_.RequireStream(KeyOf(file), is_for_reading);
  auto bytes = OpenBytes(file, is_for_reading ? O_RDONLY | O_CREAT : FlagsOf(ChannelMode::Append));
  bytes = open_.OpenStream(KeyOf(file), is_for_reading, std::move(bytes));
  return is_for_reading ? ReadTextStream(std::move(bytes))
                        : WriteTextStream(std::move(bytes), StreamEncoding::Ansi, locale_);
}

std::u16string PosixFiles::CurrentFolder() const {
  std::error_code error;
  const fs::path folder = fs::current_path(error);
  if (error) throw AutomationError(kPathNotFound);
  return DrivePath(folder);
}

void PosixFiles::Delete(std::u16string_view path) {
  const fs::path file = FilePath(path);
  open_.RequireClosed(KeyOf(file));
  RequireFile(file);
  if (::unlink(file.c_str()) != 0) throw ErrorFor(errno, file);
}

void PosixFiles::Rename(std::u16string_view from, std::u16string_view to) {
  const fs::path source = FilePath(from);
  open_.RequireClosed(KeyOf(source));
  RequireFile(source);
  fs::path target = FilePath(to);
  // A change of nothing but letter case finds the file itself.
  if (target == source) target.replace_filename(ToUtf8(Parse(to).names.back()));
  if (!RenameToFree(source, target)) throw ErrorFor(errno, target);
}

void PosixFiles::Copy(std::u16string_view from, std::u16string_view to) {
  const fs::path source = FilePath(from);
  fs::path target = FilePath(to);
  open_.RequireCopyable(KeyOf(source));
  open_.RequireCopyable(KeyOf(target));
  const FileDescriptor original = OpenFile(source, O_RDONLY);
  std::error_code error;
  if (fs::equivalent(source, target, error)) throw AutomationError(kPermissionDenied);
  if (fs::is_directory(target, error)) throw AutomationError(kPathFileAccess);
  if (::access(target.c_str(), W_OK) != 0 && errno != ENOENT) throw ErrorFor(errno, target);
  // A symbolic link stays one.
  if (const fs::path real = fs::canonical(target, error); !error) target = real;

  TemporaryFile copy(target);
  if (!copy || !CopyContent(original.get(), copy.get()) || !copy.Replace()) throw ErrorFor(errno, target);
}

void PosixFiles::CreateFolder(std::u16string_view path) {
  const fs::path folder = SystemPath(path);
  if (::mkdir(folder.c_str(), kNewFolderMode) == 0) return;
  if (errno == EEXIST) throw AutomationError(kPathFileAccess);
  throw ErrorFor(errno, folder);
}

bool PosixFiles::FolderExists(std::u16string_view path) const {
  std::error_code error;
  bool exists = false;
  IgnoreErrors([&] { exists = fs::is_directory(SystemPath(path), error); });
  return exists;
}

std::vector<std::u16string> PosixFiles::Find(std::u16string_view folder, std::u16string_view name) const {
  std::vector<std::u16string> names;
  fs::path path;
  if (!IgnoreErrors([&] { path = SystemPath(folder); })) return names;
  std::error_code error;
  for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
    std::u16string found = FromUtf8(entry->path().filename().string());
    std::error_code is_gone;
    if (FitsPattern(found, name) && !entry->is_directory(is_gone)) names.push_back(std::move(found));
  }
  return names;
}

Date PosixFiles::LastModified(std::u16string_view path) const {
  const std::time_t time = StatusOf(SystemPath(path)).st_mtime;
  std::tm local{};
  ::localtime_r(&time, &local);
  const int seconds = local.tm_hour * 3600 + local.tm_min * 60 + std::min(local.tm_sec, 59);
  return {DateFromParts(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).serial + seconds / 86400.0};
}

double PosixFiles::Length(std::u16string_view path) const {
  const fs::path file = FilePath(path);
  RequireFile(file);
  return static_cast<double>(StatusOf(file).st_size);
}

fs::path PosixFiles::SystemPath(std::u16string_view path) const {
  return Locate(Parse(path));
}

WindowsPath PosixFiles::Parse(std::u16string_view path) const {
  const bool is_of_system = path.starts_with(u'/') && !path.starts_with(u"//");
  return ParseWindowsPath(path, is_of_system ? WindowsPath{.root = std::u16string(kSystemRoot)} : Current());
}

std::u16string PosixFiles::DrivePath(const fs::path& path) const {
  const WindowsPath on_drive = OnDrive(path);
  return on_drive.root == kSystemRoot ? FromUtf8(path.string()) : on_drive.Text();
}

WindowsPath PosixFiles::Current() const {
  std::error_code error;
  const fs::path folder = fs::current_path(error);
  return error ? WindowsPath() : OnDrive(folder);
}

WindowsPath PosixFiles::OnDrive(const fs::path& path) const {
  // Whoever follows links, as the system does for the current folder, comes to the drives' real place.
  std::error_code error;
  for (const fs::path& drives : {drives_, fs::canonical(drives_, error)}) {
    const fs::path on_drive = path.lexically_relative(drives);
    const std::string drive = on_drive.empty() ? "" : on_drive.begin()->string();
    if (drive.size() == 1 && drive != ".") {
      return {.root = FromUtf8(drive) + u":", .names = NamesOf(on_drive.lexically_relative(drive))};
    }
  }
  return {.root = std::u16string(kSystemRoot), .names = NamesOf(path.relative_path())};
}

fs::path PosixFiles::RootPath(const std::u16string& root) const {
  if (root == kSystemRoot) return "/";
  if (root.empty() || drives_.empty()) throw AutomationError(kPathNotFound);
  if (root.ends_with(u':')) {
    const fs::path drive = FindName(drives_, root.substr(0, 1));
    std::error_code error;
    if (EqualIgnoringCase(root, u"C:")) {
      CreateOwnersFolders(drives_);
      fs::create_directories(drive, error);
    }
    return drive;
  }
  const std::size_t share = root.find(u'\\', 2);
  return FindName(FindName(FindName(drives_, u"UNC"), root.substr(2, share - 2)), root.substr(share + 1));
}

fs::path PosixFiles::Locate(const WindowsPath& path) const {
  fs::path located = RootPath(path.root);
  for (const std::u16string& name : path.names) located = FindName(located, name);
  return located;
}

fs::path PosixFiles::FilePath(std::u16string_view path) const {
  const WindowsPath whole = Parse(path);
  fs::path located = Locate(whole);
  if (whole.ends_in_separator || whole.names.empty()) {
    std::error_code error;
    throw AutomationError(fs::is_directory(located, error) ? kPathFileAccess : kPathNotFound);
  }
  return located;
}

}  // namespace qva
