// The gaps of LibreOffice's Excel object model, filled: one table of members, by type.
#pragma once

#include <span>
#include <string_view>

#include "platform/automation.h"

namespace qva::calc {

/// Does what Excel's member does on an object of LibreOffice's model, by that model's other members.
using MemberOverride = Value (*)(const ObjectPtr& object, const Arguments& arguments);

/// What a member is asked for: to give something, or to take a new value.
enum class Use { Read, Write };

struct Override {
  std::u16string_view type;
  std::u16string_view member;
  Use use;
  MemberOverride function;
};

/// Adds overrides of a part that is built upon this one, for the rest of the process; in place of what was
/// added before.
void AddOverrides(std::span<const Override> overrides);

/// What stands in for a member that is got or called, or (the new value is the last argument) put, by its
/// name in any letter case; null where LibreOffice's own member serves. `object` is asked for its type where
/// there is a member of that name.
MemberOverride FindOverride(const Object& object, Access access, std::u16string_view member);

/// What a member that was got or called should have given, made from what LibreOffice's own member gave.
Value Complete(const ObjectPtr& object, std::u16string_view member, Value result);

}  // namespace qva::calc
