// Dispatch ids: the numbers by which late-bound callers address members and arguments.
#pragma once

#include <string_view>

#include "platform/member_table.h"
#include "platform/windows/WindowsApi.h"

namespace qva::com {

/// Ids of one class. A class with a member table numbers its names from 1 in their published order - the ids
/// of the type library - and the arguments of each member from 0. A class without one (a stand-in of another
/// server's objects) takes every name and hands out a number that stands for the same name in all such
/// classes.
class MemberIds {
 public:
  /// `table` may be null.
  explicit MemberIds(const ClassDescription* table) : table_(table) {}

  /// The id of a member's name in any letter case; DISPID_UNKNOWN when there is none.
  DISPID OfMember(std::u16string_view name) const;
  /// The id of an argument's name of the member; DISPID_UNKNOWN when it has none such.
  DISPID OfArgument(DISPID member, std::u16string_view name) const;

  /// Whether the id stands for a member. DISPID_VALUE does, as the default member.
  bool IsMember(DISPID id) const;
  /// The name of a member's id; empty for DISPID_VALUE.
  std::u16string_view MemberName(DISPID id) const;
  /// The name of an argument's id; empty when the member has none such.
  std::u16string_view ArgumentName(DISPID member, DISPID id) const;

 private:
  const ClassDescription* table_;
};

}  // namespace qva::com
