// Makes the text of conditions.
#pragma once

#include "platform/member_table.h"

namespace qva::embedded {

/// Each member raises Failure::WrongParameters for what it cannot make a condition of.
class ConditionBuilder : public Described<ConditionBuilder> {
 public:
  static ClassBuilder Describe();

  /// "field = value". The field is a name with or without an alias ("Doc.IDC"); whatever characters the value
  /// has, it stays one value. SqlText.h says what values there are.
  std::u16string Equal(std::u16string field, Value value) const;
  /// "first AND second", where both are conditions that this object made.
  std::u16string And(std::u16string first, std::u16string second) const;
  /// "field IN sub-query", where the sub-query comes in parentheses.
  std::u16string In(std::u16string field, std::u16string sub_query) const;
};

}  // namespace qva::embedded
