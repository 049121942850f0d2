// DISPIDs of members and arguments, resolved once.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/automation.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// The DISPIDs of one type's members, or of one object's where the type cannot be told or its objects may
/// have members of their own. Filled as members are used.
class DispatchNames {
 public:
  /// What the object's type information says; never null. Objects of one type share one DispatchNames, for
  /// the life of the process.
  static std::shared_ptr<DispatchNames> Of(IDispatch& dispatch);

  struct Ids {
    DISPID member = DISPID_VALUE;
    std::vector<DISPID> arguments;  ///< of the named arguments, in their order
  };

  /// The DISPIDs of a member and of the arguments that are named for it, all in any letter case; the empty
  /// name is the default member. Raises 438 for an unknown member, 448 for an unknown argument, and other
  /// failures of the object as Error.h has them.
  Ids Resolve(IDispatch& dispatch, std::u16string_view member, std::span<const NamedArgument> named);

  /// The type's name, "Object" when nothing tells it.
  const std::u16string& type_name() const { return type_name_; }

  /// How often this process has asked objects for DISPIDs (IDispatch::GetIDsOfNames).
  static std::uint64_t LookupCount();

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
  };
  struct MemberIds {
    DISPID member = DISPID_UNKNOWN;
    std::unordered_map<std::u16string, DISPID> arguments;  // by lower-case name
  };

  std::u16string type_name_ = u"Object";
  std::unordered_map<std::u16string, MemberIds> members_;  // by lower-case name
  /// The members themselves once more, as they are spelled by who calls: what most calls need.
  std::unordered_map<std::u16string, DISPID, TextHash, std::equal_to<>> spelled_;
  struct Recent {
    std::u16string member;
    DISPID id = DISPID_UNKNOWN;
  };
  /// Some of these again, in the place that the address of the caller's text gives: callers name members by
  /// literals.
  std::array<Recent, 16> recent_;

  Recent& RecentAt(std::u16string_view member) {
    return recent_[reinterpret_cast<std::uintptr_t>(member.data()) / sizeof(char16_t) % recent_.size()];
  }
};

}  // namespace qva::windows
