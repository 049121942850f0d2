#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// The cells that the arguments of a Range property mean, seen from a sheet: an address, name or Range
/// object, or the area around two of them. Nothing when one of them means no cells.
std::optional<Reference> FindCells(const WorkbookData& workbook, const std::shared_ptr<SheetData>& sheet,
                                   const Value& cell1, const Value& cell2);

/// The areas of two Range objects of one sheet; nothing for anything else.
std::optional<Reference> UnionOf(const Value& first, const Value& second);

/// Range: one rectangle of cells, or several. What reads one place or one block (Value, Formula, Row, Rows,
/// Cells …) does so from the first one, what tells about all cells or changes them goes over all. Made anew
/// each time it is asked for, so two of the same cells are two objects, as Excel's own are. Every member
/// raises kObjectGone once the workbook was closed.
class Range : public Described<Range> {
 public:
  /// What Count and Item count.
  enum class Unit { Cells, Rows, Columns };

  Range(std::shared_ptr<ApplicationData> application, Reference reference, Unit unit = Unit::Cells)
      : application_(std::move(application)), reference_(std::move(reference)), unit_(unit) {}
  static ClassBuilder Describe();

  const Reference& reference() const { return reference_; }

  /// The cell of a row and column counted from the first cell, also beyond the range; a column may be
  /// letters. With one index the cells are counted along the rows (of Rows and Columns: the rows, the
  /// columns). Outside of the sheet 1004.
  ObjectPtr Item(const Value& row, const Value& column);
  ObjectPtr Rows(const Value& index);
  ObjectPtr Columns(const Value& index);

 private:
  const Area& area() const { return reference_.first(); }
  /// Of all areas; what is in two of them counts twice.
  std::int64_t CellCount() const;
  /// The sheet, whose workbook must be open.
  SheetData& Open() const;
  /// Raises 1004 when the protection keeps macros from changing one of the cells of the sheet.
  void RequireUnprotected(const Area& changed) const;
  /// Raises 1004 when the protection or an array formula keeps the contents from being changed.
  void RequireChangeable() const;
  ObjectPtr Part(const Area& part, Unit unit = Unit::Cells) const;
  /// `read(row, column)` of the one cell, or of all as a block with both indexes from 1.
  template <class Read>
  qva::Value ReadBlock(Read read) const;
  /// A format that all cells have, or Null.
  qva::Value Format(FormatProperty property) const;
  /// Both raise 1004 with a text when the protection keeps macros from changing formats, be it of cells that
  /// are not locked.
  void RequireFormattable(const std::u16string& refusal) const;
  void SetFormat(FormatProperty property, const qva::Value& value, const std::u16string& refusal);

  /// Of one cell its value: Empty, Double, text, Boolean, error, or what the format makes of a number
  /// (NumberFormats.h). Of several a block.
  qva::Value Value();
  /// The same, but every number as Double.
  qva::Value Value2();
  /// Raises 1004, as whatever changes cells does, when only a part of an array formula's cells would change.
  /// One value for all cells, or an array: rows by columns, or one row for all rows. What lies outside of the
  /// array gets #N/A, unless the array has one row or column only, which is repeated.
  void SetValue(const qva::Value& value);
  /// A formula that is one cell's address, in a cell of the general format, brings that cell's format along.
  void TakeFormat(std::int32_t row, std::int32_t column) const;
  /// Formulas as they were entered, constants as text in the notation of the United States. FormulaLocal is
  /// the same: this Excel's own language is that of the United States.
  qva::Value Formula();
  /// Makes one array formula of all cells. Raises 1004 for several areas, merged cells, and more than 255
  /// characters.
  void SetFormulaArray(const std::u16string& formula);
  /// Whether all cells are parts of array formulas; Null where only some are.
  qva::Value HasArray();
  /// All cells of the array formula that the first cell is part of. Raises 1004 when it is part of none.
  ObjectPtr CurrentArray();
  /// What the cell shows: dates by the user's settings, other numbers in the general format; of several cells
  /// Null unless all show the same.
  qva::Value Text();
  qva::Value Default(const qva::Value& row, const qva::Value& column);
  void SetDefault(const qva::Value& row, const qva::Value& column, const qva::Value& value);

  std::u16string Address(bool row_absolute, bool column_absolute);
  std::int32_t Row();
  std::int32_t Column();
  std::int32_t Count();
  ObjectPtr Areas();
  ObjectPtr Cells(const qva::Value& row, const qva::Value& column);
  /// The cells of an address that is counted from the first cell. Raises 1004 for anything but the address of
  /// one rectangle, and when that is not wholly on the sheet.
  ObjectPtr RangeWithin(const std::u16string& address);
  /// Raises 1004 when the result is not wholly on the sheet.
  ObjectPtr Offset(std::int32_t rows, std::int32_t columns);
  /// The area from the same first cell; a number that is left out stays as it is. Raises 1004 for less than
  /// one row or column and when the result is not wholly on the sheet.
  ObjectPtr Resize(const qva::Value& rows, const qva::Value& columns);
  /// Where Ctrl+arrow goes from the first cell. `direction` is an XlDirection.
  ObjectPtr End(std::int32_t direction);
  ObjectPtr Application();
  ObjectPtr Worksheet();
  /// The name that refers to exactly these cells; raises 1004 when there is none.
  ObjectPtr Name();
  /// Defines a name of the workbook for the cells.
  void SetName(const std::u16string& name);

  /// Makes one cell of each area, or of each of its rows. Raises 1004 where there is an array formula.
  void Merge(bool across);
  void UnMerge();
  /// Whether all cells are parts of merged ones; Null where only some are.
  qva::Value MergeCells();
  void SetMergeCells(bool merge);
  /// All of the merged cell that this cell is part of, otherwise the cell. Raises 1004 for several cells.
  ObjectPtr MergeArea();

  ObjectPtr Font();
  ObjectPtr Interior();
  qva::Value Locked();
  /// Raises 1004 for a part of a merged cell.
  void SetLocked(bool locked);
  /// "General" and "@" (text) make a difference to what is entered, dates and amounts to what Value gives.
  qva::Value NumberFormat();
  void SetNumberFormat(const std::u16string& format);

  /// Computes the formulas of each area while the application calculates manually. What is entered is
  /// computed in any case.
  void Calculate();
  /// Raises 1004 for a part of a merged cell; the empty Value empties the part.
  bool ClearContents();
  /// Writes the records of a recordset, from its current one to its end, into the rows from the first cell
  /// on: values only, texts as they are, Null as an empty cell. What does not fit on the sheet is left out.
  /// The recordset stands at its end afterwards. Result: the number of records written, 0 where it stood at
  /// its end already. Raises 1004 where cells are protected, and what the recordset raises.
  std::int32_t CopyFromRecordset(const ObjectPtr& data);
  /// The areas with all of the merged cells that they hold a part of.
  std::vector<Area> Selectable() const;
  /// Both take merged cells as a whole, and raise 1004 unless the sheet is the active one of the active
  /// workbook.
  bool Activate();
  bool Select();

  std::shared_ptr<ApplicationData> application_;
  Reference reference_;
  Unit unit_;

  friend class RangeColor;
};

}  // namespace qva::memory
