#include "server/com/Registration.h"

#include <algorithm>
#include <utility>

#include "platform/error.h"
#include "platform/windows/Bitness.h"
#include "platform/windows/Error.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace qva::com {
namespace {

HKEY Hive(Scope scope) {
  return scope == Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring FullName(Scope scope, const std::wstring& path) {
  return (scope == Scope::Machine ? L"HKEY_LOCAL_MACHINE\\" : L"HKEY_CURRENT_USER\\") + path;
}

using windows::RegistryHandle;

/// Writes into one hive and remembers what was there before.
class Writer {
 public:
  explicit Writer(Scope scope) : scope_(scope) {}

  LSTATUS Write(const std::wstring& path, const std::wstring& name, const std::optional<std::wstring>& text) {
    // One level at a time, so that a failure can take back exactly the levels that are new.
    for (std::size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
      if (const LSTATUS code = Create(path.substr(0, end), nullptr)) return code;
    }
    RegistryHandle key;
    if (const LSTATUS code = Create(path, &key)) return code;
    if (!text) return ERROR_SUCCESS;
    replaced_.push_back(Read(key, path, name));
    return RegSetValueExW(key.get(), name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text->c_str()),
                          static_cast<DWORD>((text->size() + 1) * sizeof(wchar_t)));
  }

  void TakeBack() {
    for (auto value = replaced_.rbegin(); value != replaced_.rend(); ++value) {
      if (value->was_there) {
        RegSetKeyValueW(Hive(scope_), value->path.c_str(), value->name.c_str(), value->type,
                        value->data.data(), static_cast<DWORD>(value->data.size()));
      } else {
        RegDeleteKeyValueW(Hive(scope_), value->path.c_str(), value->name.c_str());
      }
    }
    for (auto path = created_.rbegin(); path != created_.rend(); ++path) {
      RegDeleteTreeW(Hive(scope_), path->c_str());
    }
    replaced_.clear();
    created_.clear();
  }

 private:
  /// A value as it was before it was written.
  struct Replaced {
    std::wstring path;
    std::wstring name;
    bool was_there = false;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
  };

  static Replaced Read(const RegistryHandle& key, const std::wstring& path, const std::wstring& name) {
    Replaced value{.path = path, .name = name};
    DWORD size = 0;
    if (RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS)
      return value;
    value.data.resize(size);
    value.was_there = RegQueryValueExW(key.get(), name.c_str(), nullptr, &value.type, value.data.data(),
                                       &size) == ERROR_SUCCESS;
    return value;
  }

  LSTATUS Create(const std::wstring& path, RegistryHandle* result) {
    // Predefined levels need no rights of ours: an existing key is opened with as few as will do.
    RegistryHandle existing;
    const REGSAM rights = result ? KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY : KEY_QUERY_VALUE;
    RegistryHandle& key = result ? *result : existing;
    const LSTATUS opened = windows::OpenKey(Hive(scope_), path, rights, key);
    if (opened != ERROR_FILE_NOT_FOUND) return opened;
    HKEY made = nullptr;
    const LSTATUS code =
        RegCreateKeyExW(Hive(scope_), path.c_str(), 0, nullptr, 0, rights, nullptr, &made, nullptr);
    key.reset(made);
    if (code == ERROR_SUCCESS) created_.push_back(path);
    return code;
  }

  Scope scope_;
  std::vector<std::wstring> created_;
  std::vector<Replaced> replaced_;
};

bool KeyExists(Scope scope, const std::wstring& path) {
  RegistryHandle key;
  return windows::OpenKey(Hive(scope), path, KEY_QUERY_VALUE, key) == ERROR_SUCCESS;
}

bool IsRemembered(const Registration& registration, Scope scope) {
  return RegGetValueW(Hive(scope), registration.record.c_str(), windows::kBitnessKey, RRF_RT_REG_SZ, nullptr,
                      nullptr, nullptr) == ERROR_SUCCESS;
}

LSTATUS DeleteTree(Scope scope, const std::wstring& path) {
  LSTATUS code = RegDeleteTreeW(Hive(scope), path.c_str());
  return code == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : code;
}

/// Removes a key that holds nothing any more. One that cannot be removed is in somebody else's use.
void DeleteIfEmpty(Scope scope, const std::wstring& path) {
  RegistryHandle key;
  DWORD subkeys = 0;
  DWORD values = 0;
  if (windows::OpenKey(Hive(scope), path, KEY_QUERY_VALUE, key) != ERROR_SUCCESS) return;
  if (RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr,
                       nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
    return;
  }
  if (subkeys == 0 && values == 0) RegDeleteKeyW(Hive(scope), path.c_str());
}

std::optional<RegistrationFailure> UnregisterFrom(const Registration& registration, Scope scope) {
  std::optional<RegistrationFailure> failure;
  auto check = [&](LSTATUS code, const std::wstring& path) {
    if (code != ERROR_SUCCESS && !failure) failure = {code, scope, FullName(scope, path)};
  };
  auto remove = [&](const std::wstring& tree) {
    check(DeleteTree(scope, kBelowClasses + tree), kBelowClasses + tree);
  };
  std::ranges::for_each(registration.own_trees, remove);
  if (!KeyExists(scope, kBelowClasses + registration.other_bitness)) {
    std::ranges::for_each(registration.shared_trees, remove);
  }
  // A new account's own classes have none of these, perhaps not even a place; the machine's are never empty.
  for (const wchar_t* group : {L"\\CLSID", L"\\Interface", L"\\TypeLib", L""}) {
    DeleteIfEmpty(scope, std::wstring(kClasses) + group);
  }

  if (failure) return failure;
  const LSTATUS forgotten =
      RegDeleteKeyValueW(Hive(scope), registration.record.c_str(), windows::kBitnessKey);
  check(forgotten == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : forgotten, registration.record);
  DeleteIfEmpty(scope, registration.record);
  DeleteIfEmpty(scope, kOwnKey);
  return failure;
}

std::wstring Quoted(const std::wstring& text) {
  std::wstring result = L"\"";
  for (const wchar_t c : text) {
    if (c == L'"' || c == L'\\') result += L'\\';
    result += c;
  }
  return result + L'"';
}

}  // namespace

std::wstring GuidText(const GUID& guid) {
  wchar_t text[39];
  StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
  return text;
}

std::wstring RegistrationFailure::Message() const {
  const std::wstring reason = windows::WideText(windows::SystemWords(static_cast<DWORD>(code)));
  return windows::WideText(kLibraryName) + L": the registry key " + key + L" could not be changed: " +
         reason + L" (" + std::to_wstring(code) + L")";
}

Scope ProbeScope() {
  RegistryHandle key;
  const LSTATUS code =
      windows::OpenKey(HKEY_LOCAL_MACHINE, kClasses, KEY_CREATE_SUB_KEY | KEY_SET_VALUE | DELETE, key);
  return code == ERROR_SUCCESS ? Scope::Machine : Scope::User;
}

std::optional<RegistrationFailure> Register(const Registration& registration, Scope scope) {
  Writer writer(scope);
  std::optional<RegistrationFailure> failure;
  auto write = [&](const std::wstring& path, const std::wstring& name,
                   const std::optional<std::wstring>& text) {
    if (failure) return;
    if (const LSTATUS code = writer.Write(path, name, text)) failure = {code, scope, FullName(scope, path)};
  };
  for (const RegistrationValue& value : registration.values)
    write(kBelowClasses + value.key, value.name, value.text);
  write(registration.record, windows::kBitnessKey, scope == Scope::Machine ? L"machine" : L"user");
  if (!failure && scope == Scope::Machine && IsRemembered(registration, Scope::User)) {
    failure = UnregisterFrom(registration, Scope::User);
  }
  if (failure) writer.TakeBack();
  return failure;
}

std::optional<RegistrationFailure> RegisterWherePermitted(const Registration& registration) {
  if (ProbeScope() == Scope::Machine) {
    std::optional<RegistrationFailure> failure = Register(registration, Scope::Machine);
    // A failure about the user's own hive would only come again.
    if (!failure || failure->code != ERROR_ACCESS_DENIED || failure->scope == Scope::User) return failure;
  }
  return Register(registration, Scope::User);
}

std::optional<RegistrationFailure> Unregister(const Registration& registration, Scope scope) {
  return IsRemembered(registration, scope) ? UnregisterFrom(registration, scope) : std::nullopt;
}

std::optional<RegistrationFailure> Unregister(const Registration& registration) {
  std::optional<RegistrationFailure> failure;
  for (const Scope scope : {Scope::Machine, Scope::User}) {
    std::optional<RegistrationFailure> here = Unregister(registration, scope);
    if (!failure) failure = std::move(here);
  }
  return failure;
}

std::optional<RegistrationFailure> Remove(const Registration& registration, Scope scope) {
  return UnregisterFrom(registration, scope);
}

std::wstring RegistryScript(const Registration& registration, Scope scope) {
  std::wstring script = L"Windows Registry Editor Version 5.00\r\n";
  std::wstring current;
  for (const RegistrationValue& value : registration.values) {
    if (value.key != current) script += L"\r\n[" + FullName(scope, kBelowClasses + value.key) + L"]\r\n";
    current = value.key;
    if (value.text)
      script += (value.name.empty() ? L"@" : Quoted(value.name)) + L"=" + Quoted(*value.text) + L"\r\n";
  }
  script += L"\r\n[" + FullName(scope, registration.record) + L"]\r\n" + Quoted(windows::kBitnessKey) + L"=" +
            Quoted(scope == Scope::Machine ? L"machine" : L"user") + L"\r\n";
  return script;
}

}  // namespace qva::com
