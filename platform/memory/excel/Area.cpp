#include "platform/memory/excel/Area.h"

#include <algorithm>

#include "platform/text.h"

namespace qva::memory {
namespace {

/// One end of an address: a row of 0 stands for a whole column, a column of 0 for a whole row.
struct Corner {
  std::int32_t row = 0;
  std::int32_t column = 0;
};

std::optional<Corner> ParseCorner(std::u16string_view text) {
  std::size_t i = 0;
  const auto skip_dollar = [&] {
    if (i < text.size() && text[i] == u'$') ++i;
  };
  Corner corner;
  skip_dollar();
  const std::size_t letters = i;
  while (i < text.size() && IsBasicLetter(text[i])) ++i;
  if (i > letters) {
    const auto column = ParseColumn(text.substr(letters, i - letters));
    if (!column) return std::nullopt;
    corner.column = *column;
    if (i == text.size()) return corner;
    skip_dollar();
  }
  const std::size_t digits = i;
  while (i < text.size() && IsDigit(text[i]) && corner.row <= kRowCount) {
    corner.row = corner.row * 10 + (text[i++] - u'0');
  }
  if (i == digits || i != text.size() || corner.row < 1 || corner.row > kRowCount) return std::nullopt;
  return corner;
}

}  // namespace

std::optional<std::int32_t> ParseColumn(std::u16string_view letters) {
  if (letters.empty() || letters.size() > 2) return std::nullopt;
  std::int32_t column = 0;
  for (const char16_t c : letters) {
    if (!IsBasicLetter(c)) return std::nullopt;
    column = column * 26 + ((c | 0x20) - u'a' + 1);
  }
  if (column > kColumnCount) return std::nullopt;
  return column;
}

std::optional<Area> AreaInGrid(std::int64_t row, std::int64_t column, std::int64_t rows,
                               std::int64_t columns) {
  if (row < 1 || column < 1 || rows < 1 || columns < 1) return std::nullopt;
  if (row + rows - 1 > kRowCount || column + columns - 1 > kColumnCount) return std::nullopt;
  return Area{static_cast<std::int32_t>(row), static_cast<std::int32_t>(column),
              static_cast<std::int32_t>(rows), static_cast<std::int32_t>(columns)};
}

Area Around(const Area& a, const Area& b) {
  const std::int32_t row = std::min(a.row, b.row);
  const std::int32_t column = std::min(a.column, b.column);
  return {row, column, std::max(a.last_row(), b.last_row()) - row + 1,
          std::max(a.last_column(), b.last_column()) - column + 1};
}

Area Around(const std::vector<Area>& areas) {
  Area all = areas.front();
  for (const Area& area : areas) all = Around(all, area);
  return all;
}

std::optional<Area> ParseArea(std::u16string_view text) {
  const std::size_t colon = text.find(u':');
  const auto first = ParseCorner(text.substr(0, colon));
  if (!first) return std::nullopt;
  if (colon == text.npos) {
    if (first->row == 0 || first->column == 0) return std::nullopt;
    return Area{first->row, first->column, 1, 1};
  }
  const auto second = ParseCorner(text.substr(colon + 1));
  // Both ends are of one kind: two cells, two columns or two rows.
  if (!second || (first->row == 0) != (second->row == 0) || (first->column == 0) != (second->column == 0)) {
    return std::nullopt;
  }
  const auto whole = [](const Corner& c) {
    return Area{std::max(c.row, 1), std::max(c.column, 1), c.row == 0 ? kRowCount : 1,
                c.column == 0 ? kColumnCount : 1};
  };
  return Around(whole(*first), whole(*second));
}

std::u16string AreaText(const Area& area, bool row_absolute, bool column_absolute) {
  const auto column = [&](std::int32_t c) { return (column_absolute ? u"$" : u"") + ColumnLetters(c); };
  const auto row = [&](std::int32_t r) { return (row_absolute ? u"$" : u"") + NumberText(r); };
  if (area.IsWholeRows()) return row(area.row) + u":" + row(area.last_row());
  if (area.IsWholeColumns()) return column(area.column) + u":" + column(area.last_column());
  const std::u16string first = column(area.column) + row(area.row);
  if (area.count() == 1) return first;
  return first + u":" + column(area.last_column()) + row(area.last_row());
}

std::u16string AreasText(const std::vector<Area>& areas, bool row_absolute, bool column_absolute) {
  std::u16string text;
  for (const Area& area : areas) {
    if (!text.empty()) text += u',';
    text += AreaText(area, row_absolute, column_absolute);
  }
  return text;
}

}  // namespace qva::memory
