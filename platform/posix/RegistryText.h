// The text format in which the registry is kept on disk: REGEDIT's, in UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qva {

/// The data of a registry value. Those of the text types (IsRegistryText) are text with its terminating zero,
/// which the empty one may lack; those of every other type are bytes.
struct RegistryData {
  std::uint32_t type = 0;
  std::u16string text;
  std::string bytes;
  friend bool operator==(const RegistryData&, const RegistryData&) = default;
};

/// Gives a text its terminating zero, as the registry does: the empty one none.
void AddTerminatingZero(std::u16string& text);

/// The content of a registry file:
///
///   Windows Registry Editor Version 5.00
///
///   [HKEY_CURRENT_USER\Environment]
///   "PATH"="C:\\Host\\Varnholt"       REG_SZ; a backslash and a quotation mark are escaped by a backslash
///   @="…"                             the key's default value, whose name is empty
///   "a"=dword:0000002a                REG_DWORD
///   "b"=hex:01,02,\                   REG_BINARY, hex(2): REG_EXPAND_SZ in UTF-16, hex(n): type n;
///     03                              a backslash at the end of the line continues it
///   ; a comment
///
/// Whatever the format does not know is kept as it stands, and so is the spelling of everything that is not
/// changed. Keys and names are compared without regard to letter case. A key that stands in several
/// sections, and a value that stands several times, count as one: the last value wins, as in an import. A key
/// is there as soon as one below it is.
class RegistryText {
 public:
  /// An empty registry.
  RegistryText();

  /// Nothing when the text is malformed: it is not UTF-8, lacks the header, or a section or value cannot be
  /// read. Deletions ("[-key]", "name"=-), which only an import can carry out, count as malformed too.
  /// An empty text is an empty registry. `wrong_line` gets the line of the first mistake, from 1.
  static std::optional<RegistryText> Parse(std::string_view utf8, int* wrong_line = nullptr);

  std::string Utf8() const;

  /// Paths are whole, "HKEY_CURRENT_USER\Environment", and free of control characters.
  bool HasKey(std::u16string_view path) const;
  void AddKey(std::u16string_view path);

  /// The value's data; null when there is none. Valid until the next change.
  const RegistryData* Find(std::u16string_view path, std::u16string_view name) const;
  /// Writes the value, adding its key where needed. The name is free of control characters.
  void Set(std::u16string_view path, std::u16string_view name, RegistryData data);
  /// Removes the value; false when there is none.
  bool Delete(std::u16string_view path, std::u16string_view name);

 private:
  struct Entry {
    enum class Kind { Other, Section, Value };
    Kind kind = Kind::Other;
    std::u16string key;   ///< of a section and of the value in it, in lower case
    std::u16string name;  ///< of a value
    RegistryData data;    ///< of a value
    std::string raw;      ///< the lines in the file, with their ends
  };

  struct Lines;
  /// Reads the value whose first line is the entry's, with the lines that continue it; false when it cannot
  /// be read, with the mistake's line in `lines`.
  static bool ReadValue(Lines& lines, Entry& entry);
  bool IsValue(const Entry& entry, std::u16string_view lower_key, std::u16string_view name) const;
  void AddSection(std::u16string_view path);

  std::string line_end_ = "\n";
  std::vector<Entry> entries_;
};

}  // namespace qva
