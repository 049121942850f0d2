// The gaps of LibreOffice's Excel object model, filled: one table of members, by type.
#pragma once

#include <string_view>

#include "platform/automation.h"

namespace qva::calc {

/// Does what Excel's member does on an object of LibreOffice's model, by that model's other members.
using MemberOverride = Value (*)(const ObjectPtr& object, const Arguments& arguments);

/// What stands in for a member that is got or called, or (the new value is the last argument) put, by its
/// name in any letter case; null where LibreOffice's own member serves. `object` is asked for its type where
/// there is a member of that name.
MemberOverride FindOverride(const Object& object, Access access, std::u16string_view member);

/// What a member that was got or called should have given, made from what LibreOffice's own member gave.
Value Complete(const ObjectPtr& object, std::u16string_view member, Value result);

}  // namespace qva::calc
