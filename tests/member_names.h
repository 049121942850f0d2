// What tests call members.
#pragma once

#include <string>

#include "platform/member_table.h"
#include "platform/text.h"

namespace qva {

/// "get_Caption" and the like; methods have no prefix.
inline std::string NameOf(const Member& member) {
  constexpr const char* kPrefixes[] = {"", "get_", "put_", "putref_"};
  return kPrefixes[static_cast<int>(member.kind)] + ToUtf8(member.name);
}

}  // namespace qva
