// What stands in the grids of tests.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/controls.h"

namespace qva {

/// Rows of texts. Takes what is typed, but for "bloga", and tells the grid of each change, as models do.
struct TextRows : ui::GridModel {
  explicit TextRows(std::size_t columns) : width(columns) {}

  std::size_t RowCount() const override { return rows.size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override {
    return rows.at(row).at(column);
  }
  bool SetCellText(std::size_t row, std::size_t column, std::u16string_view text) override {
    if (text == u"bloga") return false;
    rows.at(row).at(column) = text;
    changed();
    return true;
  }
  void AppendRow() override {
    if (takes_rows) rows.emplace_back(width);
    changed();
  }
  void DeleteRow(std::size_t row) override {
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    changed();
  }
  void PressCellButton(std::size_t row, std::size_t column) override {
    if (pressed) pressed(rows.at(row).at(column));
    changed();
  }

  std::size_t width;
  std::vector<std::vector<std::u16string>> rows;
  bool takes_rows = true;
  std::function<void()> changed;                      ///< refreshes the grid
  std::function<void(std::u16string& text)> pressed;  ///< given the text beside the button that is pressed
};

}  // namespace qva
