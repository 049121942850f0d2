// What a worksheet is, below the automation objects.
//
// Ownership of the whole model: an Application owns one ApplicationData, which owns the open workbooks, which
// own their sheets and names, all by shared_ptr; references upwards are weak, so there is no cycle. Nothing
// in the data owns an automation object. The automation objects (Application, Workbook, Range …) are thin:
// made on demand, each holds the application's data and its own part by shared_ptr. So a macro may keep a
// Range after it let go of the workbook, or even of the application; once the workbook was closed, its
// objects refuse with kObjectGone.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/excel_constants.h"
#include "platform/memory/excel/Area.h"
#include "platform/memory/excel/CellFormats.h"
#include "platform/value.h"

namespace qva::memory {

struct WorkbookData;
struct NameData;
struct CellEntry;

/// A cell that is not empty.
struct Cell {
  /// The constant, or the formula's last result.
  Value value;
  /// With its "="; empty for a constant.
  std::u16string formula;
  /// All cells of the array formula that this one is part of.
  std::optional<Area> array;

  // Recalculation (Calculation.h).
  std::uint64_t calculated_at = 0;   ///< WorkbookData::generation of the last result
  std::uint64_t calculating_in = 0;  ///< WorkbookData::calculations when its computation began
  std::uint64_t calculated_in = 0;   ///< and when it had a result
};

/// A picture or another shape that lies on a sheet.
struct ShapeData {
  Object* automation = nullptr;  ///< the Shape that is alive, not owned
  std::weak_ptr<WorkbookData> workbook;
  std::u16string name;
};

struct Protection {
  bool is_on = false;
  bool user_interface_only = false;
  std::u16string password;
};

struct SheetData {
  Object* automation = nullptr;  ///< the Worksheet that is alive, not owned
  std::weak_ptr<WorkbookData> workbook;

  std::u16string name;
  std::int32_t visible = xlSheetVisible;
  bool print_gridlines = false;
  bool display_page_breaks = false;
  Protection protection;
  std::vector<std::shared_ptr<NameData>> names;  ///< those of this sheet's own scope, sorted
  std::vector<std::shared_ptr<ShapeData>> shapes;

  std::vector<Area> selection{Area()};  ///< at least one
  std::int32_t active_row = 1;
  std::int32_t active_column = 1;

  CellFormats formats;
  std::vector<Area> merged;  ///< areas that are one cell each; none meets another

  /// Cells that are not empty; null for an empty one.
  Cell* Find(std::int32_t row, std::int32_t column);
  const Cell* Find(std::int32_t row, std::int32_t column) const;
  bool IsEmpty(std::int32_t row, std::int32_t column) const { return !Find(row, column); }

  /// Sets what a cell holds as the user's typing would: an Empty value or text clears it, a text may become a
  /// number, Boolean, error or formula (CellInput.h), and a general format the one that fits. Does not look
  /// at the protection. Raises 1004 for a formula that cannot be read or a value that no cell holds.
  void Enter(std::int32_t row, std::int32_t column, const Value& value);
  /// Sets what a cell holds as Enter, except that a text stays the text that it is.
  void EnterPlain(std::int32_t row, std::int32_t column, const Value& value);
  /// Gives all cells of the area one array formula. Raises 1004 when it cannot be read.
  void EnterArray(const Area& area, const std::u16string& formula);
  /// Raises 1004 when the area holds a part of an array formula's cells, but not all of them.
  void RequireWholeArrays(const Area& area);
  /// The area with all of each merged cell that it holds a part of.
  Area WithWholeMergedCells(const Area& area) const;
  /// Raises 1004 with a text when the area holds a part of a merged cell, but not all of it.
  void RequireWholeMergedCells(const Area& area, const std::u16string& refusal) const;
  /// Makes one cell of the area and of the merged cells that it meets. What stands first in it moves to its
  /// upper left corner, the rest is lost.
  void Merge(const Area& area);
  /// Parts every merged cell that the area meets.
  void Unmerge(const Area& area);
  /// Empties all cells of the area, at the cost of those that are not empty.
  void Clear(const Area& area);
  /// The smallest area around all cells that are not empty, merged or were given a format of their own, also
  /// when they have lost it again; A1 of a sheet without such cells.
  Area UsedArea() const;

  /// Calls `visit(row, column, cell)` for the cells of an area that are not empty, in no certain order.
  template <class Visit>
  void ForEachCell(const Area& area, Visit visit) {
    if (static_cast<std::size_t>(area.count()) <= cells_.size()) {
      for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
        for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
          if (Cell* cell = Find(row, column)) visit(row, column, *cell);
        }
      }
      return;
    }
    for (auto& [key, cell] : cells_) {
      if (area.Contains(RowOf(key), ColumnOf(key))) visit(RowOf(key), ColumnOf(key), cell);
    }
  }

 private:
  void Hold(std::int32_t row, std::int32_t column, CellEntry entry);
  static std::int32_t KeyOf(std::int32_t row, std::int32_t column) {
    return (row - 1) * kColumnCount + column - 1;
  }
  static std::int32_t RowOf(std::int32_t key) { return key / kColumnCount + 1; }
  static std::int32_t ColumnOf(std::int32_t key) { return key % kColumnCount + 1; }
  /// The results of all formulas of the workbook are out of date, and the workbook is unsaved.
  void Changed();

  std::unordered_map<std::int32_t, Cell> cells_;
};

}  // namespace qva::memory
