#include "server/demo/HostClasses.h"

#include <array>

#include "platform/error.h"
#include "platform/host.h"
#include "platform/windows/Bitness.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"

namespace qva::demo {
namespace {

/// One family of identifiers, told apart by its last byte.
constexpr CLSID ClassId(BYTE number) {
  return {0x7c3f9e14, 0x2b86, 0x4a57, {0x9d, 0x1e, 0x4f, 0x60, 0xb8, 0x25, 0xd3, number}};
}

/// Numbered by their places in the host's table, from 1.
constexpr auto kClasses = [] {
  std::array<HostClass, std::size(host::kCreatableClasses)> classes{};
  for (std::size_t place = 0; place < classes.size(); ++place) {
    classes[place] = {host::kCreatableClasses[place], ClassId(static_cast<BYTE>(place + 1))};
  }
  return classes;
}();

std::wstring Identifier(const HostClass& host_class) {
  return windows::WideText(host_class.programmatic_identifier);
}

HKEY HiveOf(com::Scope scope) {
  return scope == com::Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

/// The class of the programmatic identifier in a hive; nothing where there is none.
std::optional<CLSID> ClassIn(const HostClass& host_class, com::Scope scope) {
  wchar_t text[64] = {};
  DWORD bytes = sizeof text;
  CLSID class_id = {};
  const LSTATUS code =
      RegGetValueW(HiveOf(scope), (com::kBelowClasses + Identifier(host_class) + L"\\CLSID").c_str(), nullptr,
                   RRF_RT_REG_SZ, nullptr, text, &bytes);
  if (code != ERROR_SUCCESS || FAILED(CLSIDFromString(text, &class_id))) return std::nullopt;
  return class_id;
}

/// Whether the identifier's key in a hive is someone else's. One that cannot be read is.
bool IsForeign(const HostClass& host_class, com::Scope scope) {
  windows::RegistryHandle key;
  const LSTATUS code =
      windows::OpenKey(HiveOf(scope), com::kBelowClasses + Identifier(host_class), KEY_QUERY_VALUE, key);
  return code != ERROR_FILE_NOT_FOUND && ClassIn(host_class, scope) != host_class.class_id;
}

}  // namespace

const HostClass* FindHostClass(REFCLSID class_id) {
  for (const HostClass& host_class : kClasses) {
    if (host_class.class_id == class_id) return &host_class;
  }
  return nullptr;
}

const HostClass* FindHostClass(std::u16string_view programmatic_identifier) {
  for (const HostClass& host_class : kClasses) {
    if (host_class.programmatic_identifier == programmatic_identifier) return &host_class;
  }
  return nullptr;
}

bool IsUsers(const HostClass& host_class) {
  return ClassIn(host_class, com::Scope::User) == host_class.class_id;
}

std::optional<CLSID> ForeignClass(const HostClass& host_class, com::Scope scope) {
  const std::optional<CLSID> class_id = ClassIn(host_class, scope);
  return class_id == host_class.class_id ? std::nullopt : class_id;
}

std::optional<std::wstring> ForeignKey() {
  for (const com::Scope scope : {com::Scope::Machine, com::Scope::User}) {
    for (const HostClass& host_class : kClasses) {
      if (!IsForeign(host_class, scope)) continue;
      return std::wstring(scope == com::Scope::Machine ? L"HKEY_LOCAL_MACHINE\\" : L"HKEY_CURRENT_USER\\") +
             com::kBelowClasses + Identifier(host_class);
    }
  }
  return std::nullopt;
}

com::Registration DescribeRegistration(const std::wstring& library_path) {
  com::Registration result{.record = std::wstring(com::kOwnKey) + L"\\DemoHost"};
  auto add = [&](const std::wstring& key, const wchar_t* name, std::optional<std::wstring> text) {
    result.values.push_back({key, name, std::move(text)});
  };
  for (const HostClass& host_class : kClasses) {
    const std::wstring identifier = Identifier(host_class);
    const std::wstring class_id = com::GuidText(host_class.class_id);
    add(identifier, L"", windows::WideText(kLibraryName) + L" demo host");
    add(identifier + L"\\CLSID", L"", class_id);
    if (!IsForeign(host_class, com::Scope::User)) result.shared_trees.push_back(identifier);

    const std::wstring class_key = L"CLSID\\" + class_id;
    add(class_key, L"", identifier);
    add(class_key + L"\\InprocServer32", L"", library_path);
    add(class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(class_key + L"\\ProgID", L"", identifier);
    result.own_trees.push_back(class_key);
  }
  // Classes' own keys are not seen by the other bitness.
  const std::wstring mark = L"QVA_DemoHost\\";
  add(mark + windows::kBitnessKey, L"", library_path);
  result.own_trees.push_back(mark + windows::kBitnessKey);
  result.shared_trees.emplace_back(L"QVA_DemoHost");
  result.other_bitness = mark + windows::kOtherBitnessKey;
  return result;
}

}  // namespace qva::demo
