#include "platform/posix/RegistryFile.h"

#include <algorithm>

#include "platform/filesystem/native_file.h"
#include "platform/lithuanian/code_page.h"
#include "platform/posix/FileAccess.h"
#include "platform/posix/OwnersFolders.h"
#include "platform/posix/UserFolder.h"
#include "platform/text.h"
#include "platform/variables.h"

namespace qva {
namespace {

constexpr std::u16string_view kCurrentUser = u"HKEY_CURRENT_USER";
constexpr std::uint32_t kAllAccess = ~0u;
constexpr std::chrono::seconds kLockPatience(2);
// Handles of opened keys lie above the 32 bits in which the predefined ones are.
constexpr RegistryKey kBeforeFirstKey = 0x1'0000'0000;

/// The path of the key `path` below `parent`. Backslashes too many are passed over.
std::u16string Join(std::u16string parent, std::u16string_view path) {
  while (!path.empty()) {
    const std::u16string_view part = path.substr(0, path.find(u'\\'));
    if (!part.empty()) parent.append(1, u'\\').append(part);
    path.remove_prefix(std::min(part.size() + 1, path.size()));
  }
  return parent;
}

/// Whether a key path or value name can stand in a file of lines.
bool IsWritable(std::u16string_view name) {
  return std::ranges::none_of(name, [](char16_t c) { return c < 0x20 || c == 0x7F; });
}

bool IsThere(const RegistryText& registry, std::u16string_view path) {
  return path == kCurrentUser || registry.HasKey(path);
}

}  // namespace

std::filesystem::path UserRegistryPath() {
  if (std::filesystem::path file = EnvironmentVariable(variables::kRegistry); !file.empty()) return file;
  const std::filesystem::path folder = UserFolder("XDG_CONFIG_HOME", ".config");
  return folder.empty() ? folder : folder / "registry.reg";
}

RegistryFile::RegistryFile(std::filesystem::path path, std::function<void(const std::u16string&)> tell)
    : path_(std::move(path)), tell_(std::move(tell)), last_key_(kBeforeFirstKey) {
}

std::int32_t RegistryFile::OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                   RegistryKey& key) {
  const auto from = Find(parent);
  if (!from) return kRegistryInvalidHandle;
  std::u16string whole = Join(from->path, path);
  const auto registry = Read();
  if (!registry || !IsThere(*registry, whole)) return kRegistryFileNotFound;
  key = Keep(std::move(whole), access);
  return kRegistrySuccess;
}

std::int32_t RegistryFile::CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                     const RegistrySecurity&, RegistryKey& key) {
  const auto from = Find(parent);
  if (!from) return kRegistryInvalidHandle;
  std::u16string whole = Join(from->path, path);
  const auto registry = Read();
  if (!registry) return kRegistryWriteFault;
  if (!IsThere(*registry, whole)) {
    if (!IsWritable(whole)) return kRegistryWriteFault;
    const std::int32_t status = Change([&](RegistryText& current) {
      current.AddKey(whole);
      return kRegistrySuccess;
    });
    if (status != kRegistrySuccess) return status;
  }
  key = Keep(std::move(whole), access);
  return kRegistrySuccess;
}

std::int32_t RegistryFile::QueryData(RegistryKey key, std::u16string_view name, RegistryData& data) const {
  const auto opened = Find(key);
  if (!opened) return kRegistryInvalidHandle;
  if (!(opened->access & kKeyQueryValue)) return kRegistryAccessDenied;
  const auto registry = Read();
  const RegistryData* value = registry ? registry->Find(opened->path, name) : nullptr;
  if (!value) return kRegistryFileNotFound;
  data = *value;
  return kRegistrySuccess;
}

std::int32_t RegistryFile::QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                                      std::span<char> data, std::uint32_t& size) {
  RegistryData value;
  const std::int32_t status = QueryData(key, name, value);
  if (status != kRegistrySuccess) return status;
  const std::string bytes = IsRegistryText(value.type) ? ToCodePage1257(value.text) : value.bytes;
  type = value.type;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data.empty()) return kRegistrySuccess;
  if (data.size() < bytes.size()) return kRegistryMoreData;
  std::ranges::copy(bytes, data.begin());
  return kRegistrySuccess;
}

std::int32_t RegistryFile::QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) {
  RegistryData data;
  const std::int32_t status = QueryData(key, name, data);
  if (status != kRegistrySuccess) return status;
  value = {data.type, IsRegistryText(data.type) ? ToUtf16Bytes(data.text) : data.bytes};
  return kRegistrySuccess;
}

std::int32_t RegistryFile::SetData(RegistryKey key, std::u16string_view name, RegistryData data) {
  const auto opened = Find(key);
  if (!opened) return kRegistryInvalidHandle;
  if (!(opened->access & kKeySetValue)) return kRegistryAccessDenied;
  if (!IsWritable(name)) return kRegistryWriteFault;
  AddTerminatingZero(data.text);
  return Change([&](RegistryText& current) -> std::int32_t {
    // Another process may have removed the key since it was opened.
    if (!IsThere(current, opened->path)) return kRegistryFileNotFound;
    current.Set(opened->path, name, std::move(data));
    return kRegistrySuccess;
  });
}

std::int32_t RegistryFile::SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                    std::span<const char> data) {
  const std::string_view bytes(data.data(), data.size());
  if (IsRegistryText(type)) return SetData(key, name, {.type = type, .text = FromCodePage1257(bytes)});
  return SetData(key, name, {.type = type, .bytes = std::string(bytes)});
}

std::int32_t RegistryFile::SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) {
  if (IsRegistryText(value.type)) {
    return SetData(key, name, {.type = value.type, .text = FromUtf16Bytes(value.bytes)});
  }
  return SetData(key, name, {.type = value.type, .bytes = value.bytes});
}

std::int32_t RegistryFile::DeleteValue(RegistryKey key, std::u16string_view name) {
  const auto opened = Find(key);
  if (!opened) return kRegistryInvalidHandle;
  if (!(opened->access & kKeySetValue)) return kRegistryAccessDenied;
  return Change([&](RegistryText& current) {
    return current.Delete(opened->path, name) ? kRegistrySuccess : kRegistryFileNotFound;
  });
}

std::int32_t RegistryFile::CloseKey(RegistryKey key) {
  if (key == HKEY_CURRENT_USER_VALUE) return kRegistrySuccess;
  return opened_.erase(key) > 0 ? kRegistrySuccess : kRegistryInvalidHandle;
}

std::optional<RegistryFile::OpenedKey> RegistryFile::Find(RegistryKey key) const {
  if (key == HKEY_CURRENT_USER_VALUE) return OpenedKey{std::u16string(kCurrentUser), kAllAccess};
  const auto found = opened_.find(key);
  return found == opened_.end() ? std::nullopt : std::optional(found->second);
}

RegistryKey RegistryFile::Keep(std::u16string path, std::uint32_t access) {
  opened_.emplace(++last_key_, OpenedKey{std::move(path), access});
  return last_key_;
}

std::optional<RegistryText> RegistryFile::Read() const {
  int wrong_line = 0;
  const auto content = ReadFileOrEmpty(path_);
  auto registry = content ? RegistryText::Parse(*content, &wrong_line) : std::nullopt;
  if (!registry && !is_told_) {
    is_told_ = true;  // before the user is told: who looks at the message may set off another reading
    const std::u16string file = u"\u201E" + FromUtf8(path_.string()) + u"\u201C";
    tell_(content ? u"Registro failo " + file + u" eilut\u0117je " + NumberText(wrong_line) +
                        u" yra klaida. Kol ji nei\u0161taisyta, nustatymai neskaitomi ir nekei\u010Diami."
                  : u"Registro failas " + file + u" neskaitomas. Nustatymai nekei\u010Diami.");
  }
  if (registry) is_told_ = false;
  return registry;
}

std::int32_t RegistryFile::Change(const std::function<std::int32_t(RegistryText&)>& change) {
  // Looked at before anything is created: what cannot be changed leaves no trace beside it.
  if (path_.empty() || !Read()) return kRegistryWriteFault;
  CreateOwnersFolders(path_.parent_path());
  const FileDescriptor lock = LockFile(path_.string() + ".lock", kLockPatience);
  if (!lock) return kRegistryWriteFault;
  auto registry = Read();
  if (!registry) return kRegistryWriteFault;
  const std::int32_t status = change(*registry);
  if (status != kRegistrySuccess) return status;
  return ReplaceWholeFile(path_, registry->Utf8()) ? kRegistrySuccess : kRegistryWriteFault;
}

}  // namespace qva
