#include "platform/forms/list_filter.h"

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

ListFilter::ListFilter(const std::vector<std::vector<std::u16string>>& rows) {
  keys_.reserve(rows.size());
  for (const std::vector<std::u16string>& row : rows) {
    std::u16string& key = keys_.emplace_back();
    for (const std::u16string& text : row) key += SearchKey(text) + u'\n';
  }
}

std::vector<std::size_t> ListFilter::RowsWith(std::u16string_view text) const {
  const std::u16string key = SearchKey(text);
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < keys_.size(); ++row) {
    if (keys_[row].find(key) != keys_[row].npos) rows.push_back(row);
  }
  return rows;
}

}  // namespace qva
