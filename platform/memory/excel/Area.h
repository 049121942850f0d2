// Rectangles of cells and how they are written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qva::memory {

/// The grid of Excel 97 to 2003.
inline constexpr std::int32_t kRowCount = 65536;
inline constexpr std::int32_t kColumnCount = 256;

/// A rectangle of cells, rows and columns counted from 1.
struct Area {
  std::int32_t row = 1;
  std::int32_t column = 1;
  std::int32_t rows = 1;
  std::int32_t columns = 1;

  std::int32_t last_row() const { return row + rows - 1; }
  std::int32_t last_column() const { return column + columns - 1; }
  /// Number of cells; the whole sheet has 16 777 216.
  std::int32_t count() const { return rows * columns; }
  bool Contains(std::int32_t r, std::int32_t c) const {
    return r >= row && r <= last_row() && c >= column && c <= last_column();
  }
  bool Meets(const Area& other) const {
    return row <= other.last_row() && other.row <= last_row() && column <= other.last_column() &&
           other.column <= last_column();
  }
  bool IsWholeColumns() const { return rows == kRowCount; }
  bool IsWholeRows() const { return columns == kColumnCount; }

  friend bool operator==(const Area&, const Area&) = default;
};

inline constexpr Area kWholeSheet{1, 1, kRowCount, kColumnCount};

/// The rectangle; nothing when it does not lie inside the grid.
std::optional<Area> AreaInGrid(std::int64_t row, std::int64_t column, std::int64_t rows,
                               std::int64_t columns);

/// The smallest rectangle around both.
Area Around(const Area& a, const Area& b);

/// The smallest rectangle around all of them, which are at least one.
Area Around(const std::vector<Area>& areas);

/// "B2", "$B$2", "A1:B2", "A:C", "1:3" in any letter case; nothing for any other text.
std::optional<Area> ParseArea(std::u16string_view text);

/// "$A$1:$B$2", "$A$1", "$A:$C" for whole columns and "$1:$3" for whole rows.
std::u16string AreaText(const Area& area, bool row_absolute = true, bool column_absolute = true);
/// The same of each, with commas between.
std::u16string AreasText(const std::vector<Area>& areas, bool row_absolute = true,
                         bool column_absolute = true);

/// 1 for "A" to 256 for "IV", in any letter case; nothing for any other text.
std::optional<std::int32_t> ParseColumn(std::u16string_view letters);

}  // namespace qva::memory
