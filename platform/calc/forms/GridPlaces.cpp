#include "platform/calc/forms/GridPlaces.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qva::calc {

using css::awt::Rectangle;

namespace {

// At 100 %.
constexpr int kHeaderHeight = 36;
constexpr int kRowHeight = 22;
constexpr int kCellButtonWidth = 22;

}  // namespace

void GridPlaces::SetColumns(const std::vector<ShownColumn>& columns) {
  widths_.clear();
  for (const ShownColumn& column : columns) widths_.push_back(column.description.width);
}

void GridPlaces::SetArea(int width, int height, double scale, int bar) {
  width_ = width;
  height_ = height;
  scale_ = scale;
  bar_ = bar;
  SetFirst(first_);
}

void GridPlaces::SetLines(std::size_t lines) {
  lines_ = lines;
  SetFirst(first_);
}

void GridPlaces::SetFirst(std::size_t line) {
  first_ = std::min(line, lines_ - std::min(lines_, visible_lines()));
}

void GridPlaces::Show(std::size_t line) {
  if (line < first_) SetFirst(line);
  if (line >= first_ + visible_lines()) SetFirst(line + 1 - visible_lines());
}

std::size_t GridPlaces::visible_lines() const {
  return static_cast<std::size_t>(std::max(1, (height_ - 2 - header_height()) / row_height()));
}

int GridPlaces::header_height() const {
  return static_cast<int>(std::lround(kHeaderHeight * scale_));
}

int GridPlaces::row_height() const {
  return static_cast<int>(std::lround(kRowHeight * scale_));
}

/// The right edge of a column.
int GridPlaces::Right(std::size_t column) const {
  const int all = std::max(1, std::accumulate(widths_.begin(), widths_.end(), 0));
  const int until =
      std::accumulate(widths_.begin(), widths_.begin() + static_cast<std::ptrdiff_t>(column) + 1, 0);
  const int available = width_ - 2 - (scrolls() ? bar_ : 0);
  return 1 + static_cast<int>(static_cast<long long>(available) * until / all);
}

Rectangle GridPlaces::HeaderPlace(std::size_t column) const {
  const int left = column == 0 ? 1 : Right(column - 1);
  return {left, 1, Right(column) - left, header_height()};
}

Rectangle GridPlaces::CellPlace(const GridCell& cell) const {
  Rectangle place = HeaderPlace(cell.column);
  place.Y += header_height() + (static_cast<int>(cell.line) - static_cast<int>(first_)) * row_height();
  place.Height = row_height();
  return place;
}

Rectangle GridPlaces::ButtonPlace(const GridCell& cell) const {
  Rectangle place = CellPlace(cell);
  const int width = std::min(static_cast<int>(std::lround(kCellButtonWidth * scale_)), place.Width / 2);
  place.X += place.Width - width;
  place.Width = width - 1;
  place.Height -= 1;
  return place;
}

Rectangle GridPlaces::BarPlace() const {
  return {width_ - 1 - bar_, 1 + header_height(), bar_, height_ - 2 - header_height()};
}

std::optional<GridCell> GridPlaces::CellAt(int x, int y) const {
  if (y < 1 + header_height()) return std::nullopt;
  const std::size_t line = first_ + static_cast<std::size_t>((y - 1 - header_height()) / row_height());
  if (line >= lines_) return std::nullopt;
  for (std::size_t column = 0; column < widths_.size(); ++column) {
    const Rectangle place = HeaderPlace(column);
    if (x >= place.X && x < place.X + place.Width) return GridCell{line, column};
  }
  return std::nullopt;
}

}  // namespace qva::calc
