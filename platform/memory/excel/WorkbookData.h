// What a workbook is, below the automation objects (ownership: SheetData.h).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/excel_constants.h"
#include "platform/memory/excel/SheetData.h"
#include "platform/value.h"

namespace qva::memory {

struct ApplicationData;

/// A defined name of a workbook or of one sheet.
struct NameData {
  Object* automation = nullptr;  ///< the Name that is alive, not owned
  std::weak_ptr<WorkbookData> workbook;
  std::weak_ptr<SheetData> scope;  ///< the sheet whose own name it is; empty for a workbook's
  bool is_deleted = false;

  std::u16string name;       ///< without the sheet
  std::u16string refers_to;  ///< a formula with its "="
  bool visible = true;
};

/// The one window of a workbook. A property that a window gains is a field here and a line in Window.cpp.
struct WindowData {
  Object* automation = nullptr;  ///< the Window that is alive, not owned
  std::weak_ptr<WorkbookData> workbook;

  Value caption;  ///< Empty: the workbook's name
  std::int32_t zoom = 100;
  bool display_gridlines = true;
  bool display_headings = true;
  bool display_zeros = true;
  bool display_formulas = false;
  bool display_outline = true;
  bool display_workbook_tabs = true;
  bool display_horizontal_scroll_bar = true;
  bool display_vertical_scroll_bar = true;
  bool freeze_panes = false;
  std::int32_t scroll_row = 1;
  std::int32_t scroll_column = 1;
  std::int32_t window_state = xlMaximized;
};

struct WorkbookData {
  Object* automation = nullptr;  ///< the Workbook that is alive, not owned
  std::weak_ptr<ApplicationData> application;
  bool is_open = true;

  std::u16string name;  ///< "Book1", or the file name with its extension
  std::u16string path;  ///< the folder without a separator at its end; empty before the first save
  bool saved = true;
  std::u16string project_name = u"VBAProject";     ///< of its macros
  std::vector<std::shared_ptr<SheetData>> sheets;  ///< at least one
  std::shared_ptr<SheetData> active_sheet;         ///< one of them
  std::vector<std::shared_ptr<NameData>> names;    ///< those of the workbook's scope, sorted
  std::shared_ptr<WindowData> window;
  /// Counts the changes of cells and names; results that are older are out of date.
  std::uint64_t generation = 1;
  /// Counts the computations; tells a formula that is being computed now from one whose computation failed.
  std::uint64_t calculations = 0;

  /// Path and name with "\" between, as far as there is a path.
  std::u16string FullName() const;
  /// Null when there is none; names ignore letter case.
  std::shared_ptr<SheetData> FindSheet(std::u16string_view sheet_name) const;
  /// The name that formulas on `sheet` mean: the sheet's own one before the workbook's; null when there is
  /// none. `sheet` may be null.
  std::shared_ptr<NameData> FindName(std::u16string_view wanted, const SheetData* sheet) const;
  /// Cells or names changed.
  void Touch() {
    ++generation;
    saved = false;
  }
};

/// The workbook that a sheet, name or window belongs to. Raises kObjectGone when it was closed.
std::shared_ptr<WorkbookData> OpenWorkbook(const std::weak_ptr<WorkbookData>& workbook);

/// Raises kObjectGone when the window's workbook was closed.
inline void RequireAlive(const WindowData& window) {
  OpenWorkbook(window.workbook);
}

/// Raises kObjectGone when the shape's workbook was closed.
inline void RequireAlive(const ShapeData& shape) {
  OpenWorkbook(shape.workbook);
}

/// A workbook of empty sheets "Sheet1", "Sheet2" …, the first one active, with its window.
std::shared_ptr<WorkbookData> NewWorkbook(std::u16string name, int sheet_count);
/// Adds an empty sheet behind position `index` (0: in front of all).
std::shared_ptr<SheetData> AddSheet(const std::shared_ptr<WorkbookData>& workbook, std::size_t index,
                                    std::u16string name);
/// A deep copy that belongs to no application: what a file holds of a workbook.
std::shared_ptr<WorkbookData> CopyWorkbook(const WorkbookData& workbook);

/// Defines a name in place of an older one of the same scope. `scope` is null for a workbook's name.
/// Raises 1004 when the text is no name that Excel allows.
std::shared_ptr<NameData> DefineName(const std::shared_ptr<WorkbookData>& workbook,
                                     const std::shared_ptr<SheetData>& scope, std::u16string_view name,
                                     std::u16string refers_to);
/// Takes the name out of its scope.
void DeleteName(const std::shared_ptr<NameData>& name);

/// Gives a sheet another name, also in the formulas and names that mention it. Raises 1004 when the name is
/// empty, longer than 31 characters, holds one of \ / ? * [ ] : or is another sheet's.
void RenameSheet(WorkbookData& workbook, SheetData& sheet, std::u16string_view name);

/// "Sheet1", or "'My sheet'" where formulas need quotes.
std::u16string SheetPrefix(std::u16string_view sheet_name);

}  // namespace qva::memory
