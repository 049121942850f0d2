#include "platform/windows/WindowsFiles.h"

#include <utility>

#include "platform/automation.h"
#include "platform/date.h"
#include "platform/filesystem/temporary_name.h"
#include "platform/text.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {
namespace {

constexpr std::u16string_view kFileSystemObject = u"Scripting.FileSystemObject";

ErrorNumber ErrorNumberFor(DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      return kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return kPathNotFound;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return kBadFileNameOrNumber;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return kPathFileAccess;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
      return kPermissionDenied;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return kFileAlreadyExists;
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_DISK_FULL:
      return kDiskFull;
    case ERROR_TOO_MANY_OPEN_FILES:
      return kTooManyFiles;
    case ERROR_NOT_SAME_DEVICE:
      return kOtherDrive;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return kOutOfMemory;
    default:
      return kDeviceError;
  }
}

AutomationError LastError() {
  return AutomationError(ErrorNumberFor(GetLastError()));
}

/// A whole path, as Windows understands the one given.
std::u16string WholePath(std::u16string_view path) {
  if (path.empty()) throw AutomationError(kPathNotFound);
  const std::wstring asked = WideText(path);
  std::wstring whole(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(asked.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    if (length == 0) throw LastError();
    if (length < whole.size()) return TextOf(whole.data(), length);
    whole.resize(length);
  }
}

DWORD AttributesOf(std::u16string_view path) {
  return GetFileAttributesW(WideText(path).c_str());
}

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

/// WholePath of what is to be a file; a path that can only be a folder's raises 75 or 76.
std::u16string FilePath(std::u16string_view path) {
  std::u16string whole = WholePath(path);
  if (IsFolder(AttributesOf(whole))) throw AutomationError(kPathFileAccess);
  if (whole.ends_with(u'\\')) throw AutomationError(kPathNotFound);
  return whole;
}

std::u16string FolderOf(std::u16string_view whole_path) {
  return std::u16string(whole_path.substr(0, whole_path.rfind(u'\\') + 1));
}

/// The bytes of an open file, written at its end.
class OpenFile : public ByteFile {
 public:
  OpenFile(const std::u16string& path, ChannelMode mode)
      : file_(OwnFileHandle(mode == ChannelMode::Input
                                ? CreateFileW(WideText(path).c_str(), GENERIC_READ,
                                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                              FILE_ATTRIBUTE_NORMAL, nullptr)
                                : CreateFileW(WideText(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                              mode == ChannelMode::Output ? CREATE_ALWAYS : OPEN_ALWAYS,
                                              FILE_ATTRIBUTE_NORMAL, nullptr))) {
    if (!file_) throw LastError();
  }

  std::size_t Read(std::span<char> buffer) override {
    DWORD count = 0;
    if (!ReadFile(file_.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) {
      throw AutomationError(kDeviceError);
    }
    return count;
  }

  void Append(std::string_view bytes) override {
    LARGE_INTEGER end;
    if (!SetFilePointerEx(file_.get(), {}, &end, FILE_END)) throw LastError();
    DWORD written = 0;
    const bool is_done =
        WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (is_done && written == bytes.size()) return;
    const AutomationError failure = is_done ? AutomationError(kDiskFull) : LastError();
    // What got into the file of a line that did not fit is no line.
    if (!SetFilePointerEx(file_.get(), end, nullptr, FILE_BEGIN) || !SetEndOfFile(file_.get())) {
      throw AutomationError(kDeviceError);
    }
    throw failure;
  }

 private:
  Handle file_;
};

/// A stream of the automation object.
class AutomationTextStream : public TextStream {
 public:
  AutomationTextStream(ObjectPtr stream, std::shared_ptr<const void> mark)
      : stream_(std::move(stream)), mark_(std::move(mark)) {}
  AutomationTextStream(const AutomationTextStream&) = delete;
  AutomationTextStream& operator=(const AutomationTextStream&) = delete;
  ~AutomationTextStream() override {
    IgnoreFailures([this] { Call(stream_, u"Close"); });
  }

  void WriteLine(std::u16string_view text) override { Call(stream_, u"WriteLine", {text}); }

 private:
  ObjectPtr stream_;
  std::shared_ptr<const void> mark_;
};

std::unique_ptr<TextStream> StreamOf(const Value& result, std::shared_ptr<const void> mark) {
  const ObjectPtr& stream = result.ToObject();
  return stream ? std::make_unique<AutomationTextStream>(stream, std::move(mark)) : nullptr;
}

/// Sees to it that what was written is on the disk; false when it may not be.
bool Flush(const std::wstring& path, DWORD flags) {
  const Handle file = OwnFileHandle(CreateFileW(path.c_str(), GENERIC_WRITE,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                nullptr, OPEN_EXISTING, flags, nullptr));
  return file && FlushFileBuffers(file.get());
}

/// A copy of a file beside the one that it is to replace, deleted again unless it did.
class TemporaryCopy {
 public:
  TemporaryCopy(const std::u16string& source, const std::u16string& target)
      : target_(WideText(target)), folder_(WideText(FolderOf(target))) {
    for (int i = 0; i < kTemporaryNameTries; ++i) {
      const std::string name = TemporaryName(target_.size() - folder_.size());
      path_ = folder_ + std::wstring(name.begin(), name.end());
      if (CopyFileW(WideText(source).c_str(), path_.c_str(), TRUE)) return;
      const DWORD code = GetLastError();
      const bool is_taken = code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS;
      if (!is_taken || i + 1 == kTemporaryNameTries) throw AutomationError(ErrorNumberFor(code));
    }
  }
  TemporaryCopy(const TemporaryCopy&) = delete;
  TemporaryCopy& operator=(const TemporaryCopy&) = delete;
  ~TemporaryCopy() {
    if (path_.empty()) return;
    SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);  // it may have become read-only as its original
    DeleteFileW(path_.c_str());
  }

  /// Takes the target's place, on the disk too: what it holds first, then its name.
  void Replace() {
    const DWORD attributes = GetFileAttributesW(path_.c_str());
    // A read-only file cannot be flushed.
    SetFileAttributesW(path_.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    if (!Flush(path_, FILE_ATTRIBUTE_NORMAL)) throw LastError();
    SetFileAttributesW(path_.c_str(), attributes);
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (!MoveFileExW(path_.c_str(), target_.c_str(), kFlags)) throw LastError();
    path_.clear();
    // Not every file system lets a folder be flushed; the new file stands all the same.
    Flush(folder_, FILE_FLAG_BACKUP_SEMANTICS);
  }

 private:
  std::wstring target_;
  std::wstring folder_;  ///< ends in "\"
  std::wstring path_;    ///< empty once it is gone
};

WIN32_FILE_ATTRIBUTE_DATA DataOf(std::u16string_view path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  const std::wstring whole = WideText(WholePath(path));
  if (!GetFileAttributesExW(whole.c_str(), GetFileExInfoStandard, &data)) throw LastError();
  return data;
}

}  // namespace

std::int16_t WindowsFiles::FreeNumber() const {
  return open_.FreeNumber();
}

std::unique_ptr<TextChannel> WindowsFiles::OpenChannel(std::int16_t number, std::u16string_view path,
                                                       ChannelMode mode) {
  const std::u16string file = FilePath(path);
  open_.RequireChannel(number, file, mode);
  return open_.OpenChannel(number, file, mode, std::make_unique<OpenFile>(file, mode), locale_);
}

std::unique_ptr<TextStream> WindowsFiles::CreateTextStream(std::u16string_view path) {
  const std::u16string file = WholePath(path);
  open_.RequireStream(file, false);
  auto mark = open_.MarkStream(file, false);
  const ObjectPtr files = factory_.Create(kFileSystemObject);
  return StreamOf(Call(files, u"CreateTextFile", Arguments{path}.Named(u"Unicode", true)), std::move(mark));
}

std::unique_ptr<TextStream> WindowsFiles::OpenTextStream(std::u16string_view path, StreamMode mode) {
  const std::u16string file = WholePath(path);
  const bool is_for_reading = mode == StreamMode::ForReading;
  open_.RequireStream(file, is_for_reading);
  auto mark = open_.MarkStream(file, is_for_reading);
  const ObjectPtr files = factory_.Create(kFileSystemObject);
  return StreamOf(Call(files, u"OpenTextFile", {path, static_cast<std::int32_t>(mode), true}),
                  std::move(mark));
}

std::u16string WindowsFiles::CurrentFolder() const {
  return WholePath(u".");
}

void WindowsFiles::Delete(std::u16string_view path) {
  const std::u16string file = FilePath(path);
  open_.RequireClosed(file);
  if (!DeleteFileW(WideText(file).c_str())) throw LastError();
}

void WindowsFiles::Rename(std::u16string_view from, std::u16string_view to) {
  const std::u16string source = FilePath(from);
  open_.RequireClosed(source);
  if (!MoveFileExW(WideText(source).c_str(), WideText(WholePath(to)).c_str(), 0)) throw LastError();
}

void WindowsFiles::Copy(std::u16string_view from, std::u16string_view to) {
  const std::u16string source = FilePath(from);
  const std::u16string target = FilePath(to);
  open_.RequireCopyable(source);
  open_.RequireCopyable(target);
  if (EqualIgnoringCase(source, target)) throw AutomationError(kPermissionDenied);
  if (AttributesOf(source) == INVALID_FILE_ATTRIBUTES) throw LastError();
  const DWORD replaced = AttributesOf(target);
  if (replaced != INVALID_FILE_ATTRIBUTES && (replaced & FILE_ATTRIBUTE_READONLY)) {
    throw AutomationError(kPathFileAccess);
  }
  // Under another name first, so that a copy that breaks off does not stand in the old one's place.
  TemporaryCopy(source, target).Replace();
}

void WindowsFiles::CreateFolder(std::u16string_view path) {
  if (CreateDirectoryW(WideText(WholePath(path)).c_str(), nullptr)) return;
  const ErrorNumber number = ErrorNumberFor(GetLastError());
  throw AutomationError(number == kFileAlreadyExists ? kPathFileAccess : number);
}

bool WindowsFiles::FolderExists(std::u16string_view path) const {
  return !path.empty() && IsFolder(AttributesOf(path));
}

std::vector<std::u16string> WindowsFiles::Find(std::u16string_view folder, std::u16string_view name) const {
  std::vector<std::u16string> names;
  if (!FolderExists(folder)) return names;
  WIN32_FIND_DATAW entry;
  // All of them: Windows' own patterns also look at the short names of files, which nobody sees.
  const auto search =
      OwnFileHandle<SearchHandle>(FindFirstFileW((WideText(folder) + L"\\*").c_str(), &entry));
  if (!search) return names;
  do {
    std::u16string found = TextOf(entry.cFileName);
    if (!IsFolder(entry.dwFileAttributes) && FitsPattern(found, name)) names.push_back(std::move(found));
  } while (FindNextFileW(search.get(), &entry));
  return names;
}

Date WindowsFiles::LastModified(std::u16string_view path) const {
  const WIN32_FILE_ATTRIBUTE_DATA data = DataOf(path);
  SYSTEMTIME universal;
  SYSTEMTIME local;
  if (!FileTimeToSystemTime(&data.ftLastWriteTime, &universal) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) {
    throw LastError();
  }
  const int seconds = local.wHour * 3600 + local.wMinute * 60 + local.wSecond;
  return {DateFromParts(local.wYear, local.wMonth, local.wDay).serial + seconds / 86400.0};
}

double WindowsFiles::Length(std::u16string_view path) const {
  const WIN32_FILE_ATTRIBUTE_DATA data = DataOf(path);
  if (IsFolder(data.dwFileAttributes)) throw AutomationError(kPathFileAccess);
  return data.nFileSizeHigh * 4294967296.0 + data.nFileSizeLow;
}

}  // namespace qva::windows
