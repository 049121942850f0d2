#include "server/com/LibraryRegistration.h"

#include "platform/windows/Bitness.h"
#include "platform/windows/WideText.h"
#include "server/com/ServerClasses.h"

namespace qva::com {
namespace {

/// The system's marshaller for interfaces that a type library describes.
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
constexpr wchar_t kVersion[] = L"1.0";

}  // namespace

Registration DescribeRegistration(const std::wstring& library_path) {
  Registration result{.record = std::wstring(kOwnKey) + L"\\Registration"};
  auto add = [&](const std::wstring& key, const wchar_t* name, std::optional<std::wstring> text) {
    result.values.push_back({key, name, std::move(text)});
  };

  const std::wstring library = GuidText(kLibraryId);
  for (const ServerClass& server_class : ServerClasses()) {
    const ClassDescription& description = server_class.public_class->description();
    const std::wstring name = windows::WideText(description.name());
    const std::wstring help(description.help().begin(), description.help().end());
    const std::wstring identifier = windows::WideText(kLibraryName) + L"." + name;
    const std::wstring class_id = GuidText(server_class.class_id);

    add(identifier, L"", help);
    add(identifier + L"\\CLSID", L"", class_id);
    result.shared_trees.push_back(identifier);

    const std::wstring class_key = L"CLSID\\" + class_id;
    add(class_key, L"", help);
    add(class_key + L"\\InprocServer32", L"", library_path);
    add(class_key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    add(class_key + L"\\ProgID", L"", identifier);
    add(class_key + L"\\Programmable", L"", std::nullopt);
    add(class_key + L"\\TypeLib", L"", library);
    add(class_key + L"\\Version", L"", kVersion);
    result.own_trees.push_back(class_key);

    const std::wstring interface_key = L"Interface\\" + GuidText(server_class.interface_id);
    add(interface_key, L"", L"_" + name);
    add(interface_key + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaller);
    add(interface_key + L"\\TypeLib", L"", library);
    add(interface_key + L"\\TypeLib", L"Version", kVersion);
    result.own_trees.push_back(interface_key);
  }

  const std::wstring library_key = L"TypeLib\\" + library;
  const std::wstring version_key = library_key + L"\\" + kVersion;
  add(version_key, L"", windows::WideText(kLibraryName) + L" " + kVersion + L" report library");
  add(version_key + L"\\0\\" + windows::kBitnessKey, L"", library_path);
  add(version_key + L"\\FLAGS", L"", L"0");
  result.own_trees.push_back(version_key + L"\\0\\" + windows::kBitnessKey);
  result.shared_trees.push_back(library_key);
  result.other_bitness = version_key + L"\\0\\" + windows::kOtherBitnessKey;
  return result;
}

}  // namespace qva::com
