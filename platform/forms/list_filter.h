// What the windows of lists show: of the list the rows that have a text somewhere, and their captions.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/list_chooser.h"

namespace qva {

/// Letters without their case and without the marks of the Lithuanian alphabet: what is compared when the
/// user looks for something.
std::u16string SearchKey(std::u16string_view text);

/// The rows of a list in which a text stands in some column, one line for each. All of them at first.
class ListFilter {
 public:
  /// The list is borrowed; what is compared is copied.
  explicit ListFilter(const ChoiceList& list);

  /// Leaves the rows in which a column contains the text, in their order; all of them for an empty one.
  void Filter(std::u16string_view text);
  const std::vector<std::size_t>& rows() const { return rows_; }
  /// The line of a row, the first one where the row has none.
  std::size_t LineOf(std::size_t row) const;
  /// The row of a code, the first one where no row has it.
  std::size_t RowOf(std::u16string_view code) const;
  /// What stands in a line: the list's own text; nothing where it is no line, or has no such column.
  std::u16string_view TextAt(std::size_t line, std::size_t column) const;

 private:
  const ChoiceList& list_;
  std::vector<std::u16string> keys_;  ///< a row's columns one after another, kept apart by line ends
  std::vector<std::size_t> rows_;
};

}  // namespace qva
