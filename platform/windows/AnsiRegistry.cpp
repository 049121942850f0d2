#include "platform/windows/AnsiRegistry.h"

#include <string>

#include "platform/windows/AnsiText.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {
namespace {

HKEY HandleOf(RegistryKey key) {
  // The predefined handles are 32-bit numbers, which Windows' own headers extend with their sign.
  const bool is_predefined = key >= 0x80000000u && key <= 0xFFFFFFFFu;
  const auto number =
      is_predefined ? static_cast<LONG_PTR>(static_cast<std::int32_t>(key)) : static_cast<LONG_PTR>(key);
  return reinterpret_cast<HKEY>(number);
}

RegistryKey KeyOf(HKEY handle) {
  return reinterpret_cast<ULONG_PTR>(handle);
}

/// Runs an operation; a lack of memory for its texts is an answer like any other.
template <class Operation>
std::int32_t StatusOf(Operation&& operation) {
  try {
    return operation();
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  }
}

}  // namespace

std::int32_t AnsiRegistry::OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                   RegistryKey& key) {
  return StatusOf([&] {
    HKEY handle = nullptr;
    const LSTATUS status = RegOpenKeyExA(HandleOf(parent), ToAnsi(path).c_str(), 0, access, &handle);
    if (status == ERROR_SUCCESS) key = KeyOf(handle);
    return status;
  });
}

std::int32_t AnsiRegistry::CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                                     const RegistrySecurity& security, RegistryKey& key) {
  return StatusOf([&] {
    SECURITY_ATTRIBUTES attributes{.nLength = security.length,
                                   .lpSecurityDescriptor = nullptr,
                                   .bInheritHandle = security.inherit_handle ? -1 : 0};
    std::string class_name;
    HKEY handle = nullptr;
    DWORD disposition = 0;
    const LSTATUS status = RegCreateKeyExA(HandleOf(parent), ToAnsi(path).c_str(), 0, class_name.data(), 0,
                                           access, &attributes, &handle, &disposition);
    if (status == ERROR_SUCCESS) key = KeyOf(handle);
    return status;
  });
}

std::int32_t AnsiRegistry::QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                                      std::span<char> data, std::uint32_t& size) {
  return StatusOf([&] {
    DWORD stored_type = type;
    auto stored_size = static_cast<DWORD>(data.size());
    auto* buffer = data.empty() ? nullptr : reinterpret_cast<BYTE*>(data.data());
    const LSTATUS status =
        RegQueryValueExA(HandleOf(key), ToAnsi(name).c_str(), nullptr, &stored_type, buffer, &stored_size);
    if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
      type = stored_type;
      size = stored_size;
    }
    return status;
  });
}

std::int32_t AnsiRegistry::SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                                    std::span<const char> data) {
  return StatusOf([&] {
    // Windows looks behind a text that comes without its terminating zero, to add it: there must be one.
    const std::string terminated(data.begin(), data.end());
    return RegSetValueExA(HandleOf(key), ToAnsi(name).c_str(), 0, type,
                          reinterpret_cast<const BYTE*>(terminated.c_str()), static_cast<DWORD>(data.size()));
  });
}

std::int32_t AnsiRegistry::QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) {
  return StatusOf([&]() -> std::int32_t {
    const std::wstring wide_name = WideText(name);
    RegistryValue stored;
    for (;;) {
      DWORD type = 0;
      auto size = static_cast<DWORD>(stored.bytes.size());
      auto* buffer = stored.bytes.empty() ? nullptr : reinterpret_cast<BYTE*>(stored.bytes.data());
      const LSTATUS status =
          RegQueryValueExW(HandleOf(key), wide_name.c_str(), nullptr, &type, buffer, &size);
      if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return status;
      const bool is_whole = status == ERROR_SUCCESS && size <= stored.bytes.size();
      stored.type = type;
      stored.bytes.resize(size);
      if (!is_whole) continue;  // asked for the size, or another program has made it longer since
      value = std::move(stored);
      return ERROR_SUCCESS;
    }
  });
}

std::int32_t AnsiRegistry::SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) {
  return StatusOf([&]() -> std::int32_t {
    // Windows looks behind a text that has no terminating zero: there must be one.
    const std::string terminated = value.bytes + '\0';
    return RegSetValueExW(HandleOf(key), WideText(name).c_str(), 0, value.type,
                          reinterpret_cast<const BYTE*>(terminated.c_str()),
                          static_cast<DWORD>(value.bytes.size()));
  });
}

std::int32_t AnsiRegistry::DeleteValue(RegistryKey key, std::u16string_view name) {
  return StatusOf([&] { return RegDeleteValueA(HandleOf(key), ToAnsi(name).c_str()); });
}

std::int32_t AnsiRegistry::CloseKey(RegistryKey key) {
  return RegCloseKey(HandleOf(key));
}

}  // namespace qva::windows
