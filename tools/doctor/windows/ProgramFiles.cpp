#include "tools/doctor/windows/ProgramFiles.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/text.h"
#include "platform/windows/Handle.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::doctor {
namespace {

using windows::TextOf;
using windows::WideText;

constexpr std::u16string_view kMark = u":Zone.Identifier";

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}
bool IsFile(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

DWORD AttributesOf(const std::u16string& path) {
  return GetFileAttributesW(WideText(path).c_str());
}

/// Null, and the reason in GetLastError, when it cannot be.
windows::Handle OpenToRead(const std::u16string& path) {
  return windows::OwnFileHandle(CreateFileW(WideText(path).c_str(), GENERIC_READ,
                                            FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0,
                                            nullptr));
}

/// Windows' code for reading a file.
DWORD ReadingCode(const std::u16string& path) {
  return OpenToRead(path) ? ERROR_SUCCESS : GetLastError();
}

/// A part of a file; shorter, or empty, where the file ends.
std::string BytesOf(const std::u16string& path, std::int64_t from, DWORD count) {
  const windows::Handle file = OpenToRead(path);
  if (!file) return {};
  std::string bytes(count, '\0');
  DWORD read = 0;
  LARGE_INTEGER position;
  position.QuadPart = from;
  if (!SetFilePointerEx(file.get(), position, nullptr, FILE_BEGIN) ||
      !ReadFile(file.get(), bytes.data(), count, &read, nullptr)) {
    read = 0;
  }
  bytes.resize(read);
  return bytes;
}

/// The processor in a program's header; 0 for what is no program.
std::uint16_t MachineIn(const std::u16string& path) {
  const std::string dos = BytesOf(path, 0, sizeof(IMAGE_DOS_HEADER));
  IMAGE_DOS_HEADER header;
  if (dos.size() < sizeof header) return 0;
  std::memcpy(&header, dos.data(), sizeof header);
  if (header.e_magic != IMAGE_DOS_SIGNATURE) return 0;
  struct Begin {
    DWORD signature;
    WORD machine;
  } begin;
  const std::string bytes = BytesOf(path, header.e_lfanew, sizeof begin);
  if (bytes.size() < sizeof begin) return 0;
  std::memcpy(&begin, bytes.data(), sizeof begin);
  return begin.signature == IMAGE_NT_SIGNATURE ? begin.machine : std::uint16_t{0};
}

std::u16string VersionIn(const std::u16string& path) {
  const std::wstring wide = WideText(path);
  std::vector<char> data(GetFileVersionInfoSizeW(wide.c_str(), nullptr));
  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT size = 0;
  if (data.empty() || !GetFileVersionInfoW(wide.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
      !VerQueryValueW(data.data(), L"\\", reinterpret_cast<void**>(&fixed), &size) || size < sizeof *fixed) {
    return {};
  }
  std::u16string version;
  for (const WORD part : {HIWORD(fixed->dwFileVersionMS), LOWORD(fixed->dwFileVersionMS),
                          HIWORD(fixed->dwFileVersionLS), LOWORD(fixed->dwFileVersionLS)}) {
    version += (version.empty() ? u"" : u".") + NumberText(part);
  }
  return version;
}

std::int32_t ZoneOf(const std::u16string& path) {
  constexpr std::string_view kName = "ZoneId=";
  constexpr DWORD kEnough = 4096;
  const std::string mark = BytesOf(path + std::u16string(kMark), 0, kEnough);
  const std::size_t at = mark.find(kName);
  if (at == mark.npos || at + kName.size() >= mark.size()) return FileFacts::kNoZone;
  const char digit = mark[at + kName.size()];
  return digit >= '0' && digit <= '9' ? digit - '0' : FileFacts::kNoZone;
}

}  // namespace

FileFacts LookAt(const std::u16string& path) {
  FileFacts facts{.path = path};
  facts.is_there = IsFile(AttributesOf(path));
  facts.has_folder = facts.is_there || IsFolder(AttributesOf(FolderOf(path)));
  const DWORD code = ReadingCode(path);
  if (code == ERROR_ACCESS_DENIED && !IsFolder(AttributesOf(path))) facts.is_there = facts.has_folder = true;
  if (!facts.is_there) return facts;
  if (code != ERROR_SUCCESS) facts.load_code = static_cast<std::int32_t>(code);
  facts.machine = MachineIn(path);
  facts.version = VersionIn(path);
  facts.zone = ZoneOf(path);
  return facts;
}

std::int32_t TryToLoad(const std::u16string& path) {
  const windows::Module module(
      LoadLibraryExW(WideText(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
  if (!module) return static_cast<std::int32_t>(GetLastError());
  const bool is_server = GetProcAddress(module.get(), "DllGetClassObject") != nullptr;
  return is_server ? ERROR_SUCCESS : ERROR_PROC_NOT_FOUND;
}

std::uint32_t TakeMark(const std::u16string& path) {
  if (DeleteFileW(WideText(path + std::u16string(kMark)).c_str())) return ERROR_SUCCESS;
  const DWORD code = GetLastError();
  return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND ? ERROR_SUCCESS : code;
}

std::uint32_t TakeMarks(const std::u16string& folder) {
  std::uint32_t code = ERROR_SUCCESS;
  WIN32_FIND_DATAW entry;
  const auto search = windows::OwnFileHandle<windows::SearchHandle>(
      FindFirstFileW((WideText(folder) + L"\\*").c_str(), &entry));
  if (!search) return GetLastError();
  do {
    const std::u16string path = folder + u"\\" + TextOf(entry.cFileName);
    if (IsFile(entry.dwFileAttributes) && ZoneOf(path) != FileFacts::kNoZone) {
      if (const std::uint32_t here = TakeMark(path); code == ERROR_SUCCESS) code = here;
    }
  } while (FindNextFileW(search.get(), &entry));
  return code;
}

FolderFacts TryFolder(const std::u16string& folder) {
  FolderFacts facts;
  facts.is_there = IsFolder(AttributesOf(folder));
  if (!facts.is_there) return facts;
  const std::wstring path = WideText(folder) + L"\\qva-doctor-" + std::to_wstring(GetCurrentProcessId());
  const windows::Handle made =
      windows::OwnFileHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                         FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  if (!made) facts.write_code = GetLastError();
  return facts;
}

std::u16string FolderOf(const std::u16string& path) {
  return path.substr(0, std::min(path.rfind(u'\\'), path.size()));
}

std::optional<std::u16string> FindInPackage(std::u16string_view name, Bitness bitness) {
  const auto folder_of_bitness = [](Bitness which) { return which == Bitness::x64 ? u"\\x64" : u"\\x86"; };
  const std::u16string own = windows::OwnFolder();
  // This program itself lies at the top of the package or in the folder of its bitness.
  const std::u16string top = own.ends_with(folder_of_bitness(kOwnBitness)) ? FolderOf(own) : own;
  for (const std::u16string& folder : {top + folder_of_bitness(bitness), top, own}) {
    std::u16string path = folder + u"\\" + std::u16string(name);
    if (MachineIn(path) == MachineOf(bitness)) return path;
  }
  return std::nullopt;
}

}  // namespace qva::doctor
