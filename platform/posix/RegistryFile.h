// The registry on Linux: one file in REGEDIT's text format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/posix/RegistryText.h"
#include "platform/registry.h"

namespace qva {

/// Where the user's registry is: the environment variable QVA_VARNHOLT_REGISTRY, else "registry.reg" in
/// "qva-varnholt" under $XDG_CONFIG_HOME or ~/.config. Empty when the user has no home folder; nothing can be
/// written then.
std::filesystem::path UserRegistryPath();

/// The registry in a file that the user may read and edit. HKEY_CURRENT_USER is the one predefined key.
///
/// The file is read anew by each operation, and changed under a lock (the file of the same name with ".lock"
/// added), so nothing that another process or the user writes is lost. It is replaced as a whole
/// (ReplaceWholeFile); with its folder it is created by the first change. A file that is malformed (see
/// RegistryText) or cannot be read holds nothing for a reader and is never written: a change answers
/// kRegistryWriteFault, as does a lock that is not to be had within two seconds. What is wrong with it is
/// told once, and once more when it goes wrong again after it was read.
///
/// An open key is a number and a path and holds no resource of the system, so one that is never closed costs
/// next to nothing. Single-threaded, as the library is.
class RegistryFile : public Registry {
 public:
  /// `tell` gets an account, for the user, of what is wrong with the file, a mistake's line with it.
  explicit RegistryFile(
      std::filesystem::path path,
      std::function<void(const std::u16string&)> tell = [](const std::u16string&) {});

  std::int32_t OpenKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                       RegistryKey& key) override;
  std::int32_t CreateKey(RegistryKey parent, std::u16string_view path, std::uint32_t access,
                         const RegistrySecurity& security, RegistryKey& key) override;
  std::int32_t QueryValue(RegistryKey key, std::u16string_view name, std::uint32_t& type,
                          std::span<char> data, std::uint32_t& size) override;
  std::int32_t SetValue(RegistryKey key, std::u16string_view name, std::uint32_t type,
                        std::span<const char> data) override;
  std::int32_t QueryStored(RegistryKey key, std::u16string_view name, RegistryValue& value) override;
  std::int32_t SetStored(RegistryKey key, std::u16string_view name, const RegistryValue& value) override;
  std::int32_t DeleteValue(RegistryKey key, std::u16string_view name) override;
  std::int32_t CloseKey(RegistryKey key) override;

 private:
  struct OpenedKey {
    std::u16string path;  ///< whole
    std::uint32_t access = 0;
  };

  std::optional<OpenedKey> Find(RegistryKey key) const;
  RegistryKey Keep(std::u16string path, std::uint32_t access);
  std::optional<RegistryText> Read() const;
  std::int32_t QueryData(RegistryKey key, std::u16string_view name, RegistryData& data) const;
  std::int32_t SetData(RegistryKey key, std::u16string_view name, RegistryData data);
  /// Applies `change` to what the file holds now; writes it back when that answers kRegistrySuccess.
  std::int32_t Change(const std::function<std::int32_t(RegistryText&)>& change);

  std::filesystem::path path_;
  std::function<void(const std::u16string&)> tell_;
  mutable bool is_told_ = false;
  std::unordered_map<RegistryKey, OpenedKey> opened_;
  RegistryKey last_key_;
};

}  // namespace qva
