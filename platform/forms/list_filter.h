// The rows of a list that have a text somewhere.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qva {

/// Letters without their case and without the marks of the Lithuanian alphabet: what is compared when the
/// user looks for something.
std::u16string SearchKey(std::u16string_view text);

/// Looks texts up in all columns of a table. It keeps its own copy of what it compares.
class ListFilter {
 public:
  explicit ListFilter(const std::vector<std::vector<std::u16string>>& rows);

  /// The numbers of the rows, in their order, in which a column contains the text; all of them for an empty
  /// one.
  std::vector<std::size_t> RowsWith(std::u16string_view text) const;

 private:
  std::vector<std::u16string> keys_;  ///< a row's columns one after another, kept apart by line ends
};

}  // namespace qva
