// Where the rows and columns of a grid stand.
#pragma once

#include <com/sun/star/awt/Rectangle.hpp>
#include <cstddef>
#include <optional>
#include <vector>

#include "platform/forms/grid_state.h"

namespace qva::calc {

/// Places in a grid's pixels. Columns share the width by their own widths.
class GridPlaces {
 public:
  void SetColumns(const std::vector<ShownColumn>& columns);
  /// `scale` as in Theme; the bar for scrolling is `bar` pixels wide when it is shown.
  void SetArea(int width, int height, double scale, int bar);
  /// How many lines there are, the empty last one among them.
  void SetLines(std::size_t lines);

  std::size_t first() const { return first_; }
  void SetFirst(std::size_t line);
  /// Scrolls so that a line can be seen.
  void Show(std::size_t line);
  std::size_t lines() const { return lines_; }
  /// How many lines can be seen at once, at least one.
  std::size_t visible_lines() const;
  bool scrolls() const { return lines_ > visible_lines(); }

  css::awt::Rectangle HeaderPlace(std::size_t column) const;
  css::awt::Rectangle CellPlace(const GridCell& cell) const;
  css::awt::Rectangle ButtonPlace(const GridCell& cell) const;
  css::awt::Rectangle BarPlace() const;
  std::optional<GridCell> CellAt(int x, int y) const;
  int header_height() const;
  int row_height() const;

 private:
  int Right(std::size_t column) const;

  std::vector<int> widths_;
  int width_ = 0;
  int height_ = 0;
  double scale_ = 1;
  int bar_ = 0;
  std::size_t lines_ = 0;
  std::size_t first_ = 0;
};

}  // namespace qva::calc
