// Nobody's process: without environment variables at first.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/environment.h"

namespace qva {

class MemoryEnvironment : public Environment {
 public:
  std::uint32_t GetVariable(std::u16string_view name, std::span<char> buffer) const override;
  std::u16string LibraryFolder() const override { return library_folder; }

  /// Names ignore letter case, as Windows' do. `value` is in the ANSI code page.
  void Set(std::u16string_view name, std::string value);
  void Remove(std::u16string_view name);

  std::u16string library_folder = u"C:\\Program Files\\Varnholt";

 private:
  std::map<std::u16string, std::string> variables_;  // by lower-case name
};

}  // namespace qva
