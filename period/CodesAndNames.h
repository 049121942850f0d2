// What a list of choices shows of a host's table.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace qva {

/// The captions of the two.
inline constexpr char16_t kCodeCaption[] = u"Kodas";
inline constexpr char16_t kNameCaption[] = u"Pavadinimas";

struct CodeAndName {
  std::u16string code;
  std::u16string name;
};

/// The code and name of each record, in the table's order. Raises what the host raises.
std::vector<CodeAndName> CodesAndNames(const host::Table& table);

}  // namespace qva
