#include "server/demo/HostClasses.h"

#include "platform/host.h"
#include "platform/windows/WideText.h"

namespace qva::demo {
namespace {

/// One family of identifiers, told apart by its last byte.
constexpr CLSID ClassId(BYTE number) {
  return {0x7c3f9e14, 0x2b86, 0x4a57, {0x9d, 0x1e, 0x4f, 0x60, 0xb8, 0x25, 0xd3, number}};
}

constexpr HostClass kClasses[] = {
    {host::kCommonObjects, ClassId(1)},
    {host::kPlant, ClassId(2)},
    {host::kClientTools, ClassId(3)},
    {host::kSettingsCollection, ClassId(4)},
    {host::kCompanyAttributes, ClassId(5)},
    {host::kDataAccess, ClassId(6)},
    {host::kQuery, ClassId(7)},
    {host::kConditionBuilder, ClassId(8)},
    {host::kDocumentSelection, ClassId(9)},
    {host::kMessage, ClassId(10)},
    {host::kMessageResource, ClassId(11)},
};

std::wstring IdentifierKey(const HostClass& host_class) {
  return windows::WideText(host_class.programmatic_identifier) + L"\\CLSID";
}

}  // namespace

std::span<const HostClass> HostClasses() {
  return kClasses;
}

const HostClass* FindHostClass(REFCLSID class_id) {
  for (const HostClass& host_class : kClasses) {
    if (host_class.class_id == class_id) return &host_class;
  }
  return nullptr;
}

std::optional<CLSID> ForeignClass(const HostClass& host_class, com::Scope scope) {
  const std::wstring key = L"Software\\Classes\\" + IdentifierKey(host_class);
  wchar_t text[64] = {};
  DWORD bytes = sizeof text;
  if (RegGetValueW(scope == com::Scope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, key.c_str(),
                   nullptr, RRF_RT_REG_SZ, nullptr, text, &bytes) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  CLSID class_id = {};
  if (FAILED(CLSIDFromString(text, &class_id)) || class_id == host_class.class_id) return std::nullopt;
  return class_id;
}

std::optional<std::wstring> ForeignRegistration() {
  for (const com::Scope scope : {com::Scope::Machine, com::Scope::User}) {
    for (const HostClass& host_class : kClasses) {
      if (!ForeignClass(host_class, scope)) continue;
      return std::wstring(scope == com::Scope::Machine ? L"HKEY_LOCAL_MACHINE" : L"HKEY_CURRENT_USER") +
             L"\\Software\\Classes\\" + IdentifierKey(host_class);
    }
  }
  return std::nullopt;
}

com::Registration DescribeRegistration(const std::wstring& library_path) {
  com::Registration result{.record = L"Software\\QVA_Varnholt\\DemoHost"};
  auto add = [&](const std::wstring& key, const wchar_t* name, std::optional<std::wstring> text) {
    result.values.push_back({key, name, std::move(text)});
  };
  for (const HostClass& host_class : kClasses) {
    const std::wstring identifier = windows::WideText(host_class.programmatic_identifier);
    const std::wstring class_id = com::GuidText(host_class.class_id);
    add(identifier, L"", L"QVA_Varnholt demo host");
    add(IdentifierKey(host_class), L"", class_id);
    if (!ForeignClass(host_class, com::Scope::User)) result.shared_trees.push_back(identifier);

    const std::wstring class_key = L"CLSID\\" + class_id;
    add(class_key, L"", identifier);
    add(class_key + L"\\InprocServer32", L"", library_path);
    add(class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(class_key + L"\\ProgID", L"", identifier);
    result.own_trees.push_back(class_key);
  }
  // Classes' own keys are not seen by the other bitness.
  const std::wstring mark = L"QVA_DemoHost\\";
  add(mark + com::kBitness, L"", library_path);
  result.own_trees.push_back(mark + com::kBitness);
  result.shared_trees.emplace_back(L"QVA_DemoHost");
  result.other_bitness = mark + com::kOtherBitness;
  return result;
}

}  // namespace qva::demo
