#include "server/com/MemberIds.h"

#include <deque>
#include <map>
#include <string>
#include <unordered_map>

#include "platform/text.h"

namespace qva::com {
namespace {

/// Names numbered from 1 in the order of their arrival.
class Names {
 public:
  /// The number of a name in any letter case, 0 when it has none yet.
  DISPID Find(std::u16string_view name) const {
    const auto found = numbers_.find(ToLower(name));
    return found == numbers_.end() ? 0 : found->second;
  }
  DISPID FindOrAdd(std::u16string_view name) {
    if (const DISPID number = Find(name)) return number;
    names_.emplace_back(name);
    const auto number = static_cast<DISPID>(names_.size());
    numbers_.emplace(ToLower(name), number);
    return number;
  }
  bool Has(DISPID number) const { return number >= 1 && number <= static_cast<DISPID>(names_.size()); }
  std::u16string_view Name(DISPID number) const {
    return Has(number) ? std::u16string_view(names_[static_cast<std::size_t>(number - 1)]) : u"";
  }

 private:
  std::deque<std::u16string> names_;
  std::unordered_map<std::u16string, DISPID> numbers_;
};

const Names& NamesOf(const ClassDescription& table) {
  static std::map<const ClassDescription*, Names>& names = *new std::map<const ClassDescription*, Names>;
  const auto [entry, is_new] = names.try_emplace(&table);
  if (is_new) {
    for (const Member& member : table.members()) entry->second.FindOrAdd(member.name);
  }
  return entry->second;
}

Names& SharedNames() {
  static Names& names = *new Names;
  return names;
}

}  // namespace

DISPID MemberIds::OfMember(std::u16string_view name) const {
  const DISPID id = table_ ? NamesOf(*table_).Find(name) : SharedNames().FindOrAdd(name);
  return id ? id : DISPID_UNKNOWN;
}

DISPID MemberIds::OfArgument(DISPID member, std::u16string_view name) const {
  if (!table_) return SharedNames().FindOrAdd(name);
  const std::u16string_view member_name = MemberName(member);
  for (const Member& candidate : table_->members()) {
    if (candidate.name != member_name) continue;
    for (std::size_t i = 0; i < candidate.parameters.size(); ++i) {
      if (EqualIgnoringCase(candidate.parameters[i].name, name)) return static_cast<DISPID>(i);
    }
  }
  return DISPID_UNKNOWN;
}

bool MemberIds::IsMember(DISPID id) const {
  if (id == DISPID_VALUE) return !table_ || !table_->default_member().empty();
  return table_ ? NamesOf(*table_).Has(id) : SharedNames().Has(id);
}

std::u16string_view MemberIds::MemberName(DISPID id) const {
  if (id == DISPID_VALUE) return u"";
  return table_ ? NamesOf(*table_).Name(id) : SharedNames().Name(id);
}

std::u16string_view MemberIds::ArgumentName(DISPID member, DISPID id) const {
  if (!table_) return SharedNames().Name(id);
  const std::u16string_view member_name = MemberName(member);
  for (const Member& candidate : table_->members()) {
    if (candidate.name != member_name || id < 0) continue;
    const auto index = static_cast<std::size_t>(id);
    if (index < candidate.parameters.size()) return candidate.parameters[index].name;
  }
  return u"";
}

}  // namespace qva::com
