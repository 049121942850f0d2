#include "tools/doctor/windows/RegistryReader.h"

#include <cstring>

#include "platform/text.h"
#include "platform/windows/AnsiRegistry.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::doctor {
namespace {

bool Open(OpenedKey& key, Root root, std::u16string_view path, View view) {
  return key.Open(static_cast<RegistryKey>(root), path, kKeyQueryValue | static_cast<std::uint32_t>(view)) ==
         kRegistrySuccess;
}

std::optional<RegistryValue> ReadStored(Root root, std::u16string_view path, std::u16string_view name,
                                        View view) {
  windows::AnsiRegistry registry;
  OpenedKey key(registry);
  RegistryValue value;
  if (!Open(key, root, path, view) || registry.QueryStored(key.get(), name, value) != kRegistrySuccess)
    return std::nullopt;
  return value;
}

std::u16string Resolved(const std::u16string& text) {
  const std::wstring wide = windows::WideText(text);
  std::wstring resolved(ExpandEnvironmentStringsW(wide.c_str(), nullptr, 0), L'\0');
  const DWORD size =
      ExpandEnvironmentStringsW(wide.c_str(), resolved.data(), static_cast<DWORD>(resolved.size()));
  return size == 0 || size > resolved.size() ? text : windows::TextOf(resolved.c_str());
}

}  // namespace

std::optional<std::u16string> ReadText(Root root, std::u16string_view path, std::u16string_view name,
                                       View view) {
  const std::optional<RegistryValue> value = ReadStored(root, path, name, view);
  if (!value || (value->type != kRegSz && value->type != kRegExpandSz)) return std::nullopt;
  const std::u16string text = FromUtf16Bytes(value->bytes);
  return Resolved(text.substr(0, text.find(u'\0')));
}

std::optional<std::uint32_t> ReadNumber(Root root, std::u16string_view path, std::u16string_view name,
                                        View view) {
  const std::optional<RegistryValue> value = ReadStored(root, path, name, view);
  std::uint32_t number = 0;
  if (!value || value->type != kRegDword || value->bytes.size() != sizeof number) return std::nullopt;
  std::memcpy(&number, value->bytes.data(), sizeof number);
  return number;
}

bool HasKey(Root root, std::u16string_view path, View view) {
  windows::AnsiRegistry registry;
  OpenedKey key(registry);
  return Open(key, root, path, view);
}

}  // namespace qva::doctor
