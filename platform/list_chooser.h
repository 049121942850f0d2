// A list from which the user picks one row: lookups of codes, selections of documents.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qva {

/// What is offered. Each row has a text for each column; the first column holds the codes.
struct ChoiceList {
  std::u16string title;
  std::vector<std::u16string> captions;  ///< of the columns
  std::vector<std::vector<std::u16string>> rows;
};

class ListChooser {
 public:
  virtual ~ListChooser() = default;

  /// Shows the list, which is borrowed until this returns, until the user picks a row or leaves it.
  /// `selected` is the code of the row that is marked at first, if there is one. Result: the number of the
  /// row from 0, nothing when the user left or when no one can answer. An empty list is shown, too. Does not
  /// raise.
  virtual std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) = 0;
};

}  // namespace qva
