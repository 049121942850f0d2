// Single values of the registry.
#pragma once

#include <cstdint>
#include <string>

#include "platform/registry.h"

namespace qva {

/// Reads, writes and deletes registry values, one at a time, as text in the ANSI code page. Private to the
/// library. `hive` is the handle of a predefined key; value types are RegistryType's. Keeps nothing between
/// calls, never raises and shows no message: a failure is the empty text or false.
class CWinRegistry {
 public:
  /// The value's bytes as text, without the last one, the terminating zero of a text. `value_type` receives
  /// the stored type, whatever it is. Empty on any failure, and for a value of more than 255 bytes: a text of
  /// more than 254 characters is not read, on purpose, as the buffer has always been that small.
  std::u16string GetRegSetting(RegistryKey hive, const std::u16string& key_path,
                               const std::u16string& value_name, std::int32_t& value_type) const;

  /// True when the value was deleted and the key closed. A key whose value could not be deleted stays open,
  /// on purpose: each call follows only on the success of the one before.
  bool DeleteRegSetting(RegistryKey hive, const std::u16string& key_path,
                        const std::u16string& value_name) const;

  /// Writes a text without its terminating zero, creating the key where it is missing. True when the value
  /// was written and the key closed. A key whose value could not be written stays open, on purpose, as above.
  bool SaveRegSetting(RegistryKey hive, const std::u16string& key_path, const std::u16string& value_name,
                      const std::u16string& value, std::int32_t value_type) const;
};

}  // namespace qva
