#include "platform/forms/list_filter.h"

#include <algorithm>

#include "platform/text.h"

namespace qva {
namespace {

// Letters with a mark in lower case, and those letters without it.
constexpr std::u16string_view kMarked = u"ąčęėįšųūž";
constexpr std::u16string_view kPlain = u"aceeisuuz";
static_assert(kMarked.size() == kPlain.size());

}  // namespace

std::u16string SearchKey(std::u16string_view text) {
  std::u16string key = ToLower(text);
  for (char16_t& character : key) {
    const std::size_t letter = kMarked.find(character);
    if (letter != kMarked.npos) character = kPlain[letter];
  }
  return key;
}

ListFilter::ListFilter(const ChoiceList& list) : list_(list) {
  keys_.reserve(list.rows.size());
  for (const std::vector<std::u16string>& row : list.rows) {
    std::u16string& key = keys_.emplace_back();
    for (const std::u16string& text : row) key += SearchKey(text) + u'\n';
  }
  Filter({});
}

void ListFilter::Filter(std::u16string_view text) {
  const std::u16string key = SearchKey(text);
  rows_.clear();
  for (std::size_t row = 0; row < keys_.size(); ++row) {
    if (keys_[row].find(key) != keys_[row].npos) rows_.push_back(row);
  }
}

std::size_t ListFilter::LineOf(std::size_t row) const {
  const auto found = std::ranges::find(rows_, row);
  return found == rows_.end() ? 0 : static_cast<std::size_t>(found - rows_.begin());
}

std::size_t ListFilter::RowOf(std::u16string_view code) const {
  const auto row = std::ranges::find_if(list_.rows, [&](const std::vector<std::u16string>& cells) {
    return !cells.empty() && cells.front() == code;
  });
  return row == list_.rows.end() ? 0 : static_cast<std::size_t>(row - list_.rows.begin());
}

std::u16string_view ListFilter::TextAt(std::size_t line, std::size_t column) const {
  if (line >= rows_.size()) return {};
  const std::vector<std::u16string>& cells = list_.rows[rows_[line]];
  return column < cells.size() ? cells[column] : std::u16string_view();
}

}  // namespace qva
