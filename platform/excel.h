// Excel's object model as far as the library uses it: thin façades over the automation protocol, one method
// for each member, so that library code reads like the model. Each raises Excel's own AutomationError.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/automation.h"
#include "platform/excel_constants.h"

namespace qva::excel {

/// Base of what has settings of the user: plain properties that are read and written as they are. Which ones
/// the library touches, and with what values, stands in excelui/ExcelSettings.h.
class Settings : public Facade {
 public:
  using Facade::Facade;
  qva::Value Setting(std::u16string_view name) const { return Get(name); }
  void SetSetting(std::u16string_view name, qva::Value value) const { Put(name, std::move(value)); }
};

/// The text of cells.
class Font : public Facade {
 public:
  using Facade::Facade;
  /// The palette's colour 1 to 56 or an XlColorIndex; Null when the cells differ.
  Value ColorIndex() const { return Get(u"ColorIndex"); }
  void SetColorIndex(std::int32_t color) const { Put(u"ColorIndex", color); }
};

/// The ground of cells.
class Interior : public Facade {
 public:
  using Facade::Facade;
  /// The palette's colour 1 to 56 or an XlColorIndex.
  void SetColorIndex(std::int32_t color) const { Put(u"ColorIndex", color); }
};

class Areas;
class Worksheet;

/// One or more cells. What leads to other cells gives a new Range; Excel raises 1004 outside the sheet.
class Range : public Facade {
 public:
  using Facade::Facade;
  /// What a single cell holds, Empty for an empty one; of several cells, an array of rows by columns, both
  /// from 1.
  qva::Value Value() const { return Get(u"Value"); }
  /// One value for all cells, or an array of rows by columns with any bounds.
  void SetValue(qva::Value value) const { Put(u"Value", std::move(value)); }
  /// The same with dates and amounts as Double: of these, Value gives four decimals alone.
  qva::Value Value2() const { return Get(u"Value2"); }
  void SetValue2(qva::Value value) const { Put(u"Value2", std::move(value)); }
  /// Formulas as they were entered, constants as text; of a single cell a text, of several an array of rows
  /// by columns. Of several areas those of the first.
  qva::Value Formula() const { return Get(u"Formula"); }
  /// One formula for all cells, or an array as Formula gives it.
  void SetFormula(qva::Value formula) const { Put(u"Formula", std::move(formula)); }
  /// One formula for all cells together.
  void SetFormulaArray(std::u16string_view formula) const { Put(u"FormulaArray", formula); }
  /// A formula or constant in the user's own language; the empty text empties the cells.
  void SetFormulaLocal(std::u16string_view formula) const { Put(u"FormulaLocal", formula); }
  /// Whether the cells are parts of array formulas: True, False, or Null where they differ.
  qva::Value HasArray() const { return Get(u"HasArray"); }
  /// All cells of the array formula that the first cell is part of; Excel raises 1004 when there is none.
  Range CurrentArray() const { return Range(GetObject(u"CurrentArray")); }
  /// How the cells show what they hold, such as "General" or "@" (text); Null where they differ.
  qva::Value NumberFormat() const { return Get(u"NumberFormat"); }
  void SetNumberFormat(std::u16string_view format) const { Put(u"NumberFormat", format); }
  /// The rectangles that the range is made of.
  excel::Areas Areas() const;
  excel::Worksheet Worksheet() const;
  /// "$A$1" or "$A$1:$B$2".
  std::u16string Address() const { return Get(u"Address").ToText(); }
  /// The number of the first row and of the first column.
  std::int32_t Row() const { return Get(u"Row").ToInt32(); }
  std::int32_t Column() const { return Get(u"Column").ToInt32(); }
  /// Of cells; of whole columns where the range came from Columns.
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// The rows of the range as units of their own.
  Range Rows() const { return Range(GetObject(u"Rows")); }
  /// The columns of the range as units of their own.
  Range Columns() const { return Range(GetObject(u"Columns")); }
  /// The cell at a position from 1, counted along the rows.
  Range Cells(std::int32_t position) const { return Range(GetObject(u"Cells", {position})); }
  /// The cell at a row and a column of the range, both from 1.
  Range Cells(std::int32_t row, std::int32_t column) const {
    return Range(GetObject(u"Cells", {row, column}));
  }
  /// The cells of an address, such as "B2:C5", counted from the first cell of the range: Excel's Range.Range.
  Range Part(std::u16string_view address) const { return Range(GetObject(u"Range", {address})); }
  /// The range moved by rows down and columns to the right.
  Range Offset(std::int32_t rows, std::int32_t columns) const {
    return Range(GetObject(u"Offset", {rows, columns}));
  }
  /// The range from the same top left cell with another number of rows.
  Range Resize(std::int32_t rows) const { return Range(GetObject(u"Resize", {rows})); }
  /// The range from the same top left cell in another size.
  Range Resize(std::int32_t rows, std::int32_t columns) const {
    return Range(GetObject(u"Resize", {rows, columns}));
  }
  /// The cell at the end of the run of filled or empty cells, as the End key finds it.
  Range End(XlDirection direction) const { return Range(GetObject(u"End", {std::int32_t{direction}})); }
  excel::Font Font() const { return excel::Font(GetObject(u"Font")); }
  excel::Interior Interior() const { return excel::Interior(GetObject(u"Interior")); }
  /// Whether the cells cannot be changed while their sheet is protected.
  void SetLocked(bool locked) const { Put(u"Locked", locked); }
  /// Makes the cells the selection. Excel raises 1004 when the sheet is not the active one.
  void Select() const { Call(u"Select"); }
  /// Makes the range's first cell the active one. Excel raises 1004 when the sheet is not the active one.
  void Activate() const { Call(u"Activate"); }
  /// Empties the cells; formats stay.
  void ClearContents() const { Call(u"ClearContents"); }
  /// Writes the values of a recordset's records, from its current one to its end, from the top left cell on;
  /// gives their number.
  std::int32_t CopyFromRecordset(const Facade& recordset) const {
    return Call(u"CopyFromRecordset", {recordset.object()}).ToInt32();
  }
};

/// The rectangles of a range.
class Areas : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// By position from 1.
  Range Item(std::int32_t position) const { return Range(GetObject(u"Item", {position})); }
};

inline Areas Range::Areas() const {
  return excel::Areas(GetObject(u"Areas"));
}

/// A name that stands for cells or a constant.
class DefinedName : public Facade {
 public:
  using Facade::Facade;
  /// With "Sheet1!" in front when it is a sheet's own name.
  std::u16string Name() const { return Get(u"Name").ToText(); }
  /// The formula, such as "=Sheet1!$A$1"; "#REF!" stands in it for cells that are gone.
  std::u16string RefersTo() const { return Get(u"RefersTo").ToText(); }
  /// Excel raises 1004 when the name does not stand for cells.
  Range RefersToRange() const { return Range(GetObject(u"RefersToRange")); }
  /// Whether the user sees the name in Excel's lists.
  void SetVisible(bool visible) const { Put(u"Visible", visible); }
  /// Takes the name out of the workbook; what it stood for stays. Excel raises 1004 when it cannot.
  void Delete() const { Call(u"Delete"); }
};

/// A workbook's names, those of its sheets included; or the names of one sheet.
class Names : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// By position from 1; positions close up when a name is deleted.
  DefinedName Item(std::int32_t position) const { return DefinedName(GetObject(u"Item", {position})); }
  /// By name in any letter case. Excel raises 1004 when there is none.
  DefinedName Item(std::u16string_view name) const { return DefinedName(GetObject(u"Item", {name})); }
  /// Defines a name, in place of an older one. `refers_to` begins with "=".
  DefinedName Add(std::u16string_view name, std::u16string_view refers_to) const {
    return DefinedName(GetObject(u"Add", Arguments().Named(u"Name", name).Named(u"RefersTo", refers_to)));
  }
};

/// A window on a workbook.
class Window : public Settings {
 public:
  using Settings::Settings;
  void SetCaption(std::u16string_view caption) const { Put(u"Caption", caption); }
  /// The row on top of the window.
  std::int32_t ScrollRow() const { return Get(u"ScrollRow").ToInt32(); }
  void SetScrollRow(std::int32_t row) const { Put(u"ScrollRow", row); }
  /// Whether the rows and columns before the active cell stay where they are when the others scroll.
  void SetFreezePanes(bool frozen) const { Put(u"FreezePanes", frozen); }
};

/// A workbook's project of macros.
class VBProject : public Facade {
 public:
  using Facade::Facade;
  std::u16string Name() const { return Get(u"Name").ToText(); }
};

/// A workbook that is open in the application.
class Workbook : public Facade {
 public:
  using Facade::Facade;
  /// The file name without its folder; "Book1" before the first save.
  std::u16string Name() const { return Get(u"Name").ToText(); }
  /// The file name with its folder.
  std::u16string FullName() const { return Get(u"FullName").ToText(); }
  excel::Names Names() const { return excel::Names(GetObject(u"Names")); }
  /// Excel raises 1004 where macros may not look at their projects.
  excel::VBProject VBProject() const { return excel::VBProject(GetObject(u"VBProject")); }
  /// Whether it may be closed without asking about changes.
  void SetSaved(bool saved) const { Put(u"Saved", saved); }
  /// Saves under its own name, or into the current folder where it has none yet. Excel raises 1004 when it
  /// cannot.
  void Save() const { Call(u"Save"); }
  /// Saves under another name, in Excel's default format. Excel raises 1004 when it cannot.
  void SaveAs(std::u16string_view full_name) const { Call(u"SaveAs", {full_name}); }
};

/// The workbooks that are open.
class Workbooks : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// By position from 1 in the order of opening. Excel raises 9 when there is none.
  Workbook Item(std::int32_t position) const { return Workbook(GetObject(u"Item", {position})); }
  /// By file name in any letter case. Excel raises 9 when no such workbook is open.
  Workbook Item(std::u16string_view name) const { return Workbook(GetObject(u"Item", {name})); }
  /// Opens the file and makes it the active workbook. Excel raises 1004 when it cannot.
  Workbook Open(std::u16string_view full_name) const { return Workbook(GetObject(u"Open", {full_name})); }
};

/// How a sheet is printed.
class PageSetup : public Settings {
 public:
  using Settings::Settings;
  /// The address of the cells to print, which gives the sheet its name "Print_Area".
  void SetPrintArea(std::u16string_view address) const { Put(u"PrintArea", address); }
};

/// A picture or another shape that lies on a sheet.
class Shape : public Facade {
 public:
  using Facade::Facade;
  /// Puts it on the clipboard.
  void Copy() const { Call(u"Copy"); }
};

/// A sheet of cells.
class Worksheet : public Settings {
 public:
  using Settings::Settings;
  std::u16string Name() const { return Get(u"Name").ToText(); }
  /// The workbook that the sheet belongs to.
  Workbook Parent() const { return Workbook(GetObject(u"Parent")); }
  excel::PageSetup PageSetup() const { return excel::PageSetup(GetObject(u"PageSetup")); }
  /// The area around all cells that are filled or formatted; A1 of an untouched sheet.
  excel::Range UsedRange() const { return excel::Range(GetObject(u"UsedRange")); }
  /// Cells by their address or name.
  excel::Range Range(std::u16string_view address) const {
    return excel::Range(GetObject(u"Range", {address}));
  }
  /// The rectangle around two corners.
  excel::Range Range(const excel::Range& first, const excel::Range& last) const {
    return excel::Range(GetObject(u"Range", {first.object(), last.object()}));
  }
  /// The sheet's own names.
  excel::Names Names() const { return excel::Names(GetObject(u"Names")); }
  /// By name in any letter case. Raises when there is none.
  Shape Shapes(std::u16string_view name) const { return Shape(GetObject(u"Shapes", {name})); }
  /// One of XlSheetVisibility.
  std::int32_t Visible() const { return Get(u"Visible").ToInt32(); }
  void SetVisible(std::int32_t visibility) const { Put(u"Visible", visibility); }
  void SetDisplayPageBreaks(bool on) const { Put(u"DisplayPageBreaks", on); }
  /// Prints the print area on the user's printer.
  void PrintOut() const { Call(u"PrintOut"); }
  /// Prints one copy of one page, counted from 1.
  void PrintOut(std::int32_t page) const {
    Call(u"PrintOut", Arguments().Named(u"From", page).Named(u"To", page).Named(u"Copies", std::int32_t{1}));
  }
  /// Shows how the sheet will print, until the user closes the preview.
  void PrintPreview() const { Call(u"PrintPreview"); }
  /// Protects what Excel protects by default (objects, contents, scenarios) from the user, not from macros.
  void ProtectFromUser(std::u16string_view password) const {
    Call(u"Protect", Arguments{password}.Named(u"UserInterfaceOnly", true));
  }
  /// Excel raises 1004 for a wrong password (letter case counts).
  void Unprotect(std::u16string_view password) const { Call(u"Unprotect", {password}); }
};

inline Worksheet Range::Worksheet() const {
  return excel::Worksheet(GetObject(u"Worksheet"));
}

/// The sheets of a workbook.
class Sheets : public Facade {
 public:
  using Facade::Facade;
  /// By name in any letter case. Excel raises 9 when there is none.
  Worksheet Item(std::u16string_view name) const { return Worksheet(GetObject(u"Item", {name})); }
};

/// Excel's search for files, one for the whole application: what is set here stays set. Excel 2003 is the
/// last one that has it.
class FileSearch : public Facade {
 public:
  using Facade::Facade;
  /// The folder to search.
  void SetLookIn(std::u16string_view folder) const { Put(u"LookIn", folder); }
  /// A file name; "*" and "?" stand for any characters.
  void SetFileName(std::u16string_view pattern) const { Put(u"FileName", pattern); }
  /// The number of files found.
  std::int32_t Execute() const { return Call(u"Execute").ToInt32(); }
};

/// A button or box of a command bar. Captions, faces and the like are plain properties, which are set as
/// settings; a box has no face, style and state, and raises 438 for them.
class CommandBarControl : public Settings {
 public:
  using Settings::Settings;
  /// A text that macros may keep with a control; empty for Excel's own controls.
  std::u16string Parameter() const { return Get(u"Parameter").ToText(); }
  /// The position on its bar, from 1.
  std::int32_t Index() const { return Get(u"Index").ToInt32(); }
  bool Visible() const { return Get(u"Visible").ToBoolean(); }
  bool Enabled() const { return Get(u"Enabled").ToBoolean(); }
  /// The macro that it runs.
  std::u16string OnAction() const { return Get(u"OnAction").ToText(); }
  /// One of MsoButtonState.
  std::int32_t State() const { return Get(u"State").ToInt32(); }
  void SetState(std::int32_t state) const { Put(u"State", state); }
  /// Takes the picture on the clipboard as the button's face. Raises when there is none.
  void PasteFace() const { Call(u"PasteFace"); }
  /// Takes the control off its bar. Excel refuses when the bar may not be customised.
  void Delete() const { Call(u"Delete"); }
};

/// The controls of a command bar. Excel refuses to add one to a bar that may not be customised.
class CommandBarControls : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// By position from 1.
  CommandBarControl Item(std::int32_t position) const {
    return CommandBarControl(GetObject(u"Item", {position}));
  }
  /// A control that lives until Excel ends, in front of the one at position `before`. `type` is an
  /// MsoControlType, `id` one of Excel's built-in controls or 1 for an empty one of that type.
  CommandBarControl Add(std::int32_t type, std::int32_t id, std::u16string_view parameter,
                        std::int32_t before) const {
    return CommandBarControl(GetObject(u"Add", {type, id, parameter, before, true}));
  }
  /// An empty control at the end, which lives until Excel ends.
  CommandBarControl Add(std::int32_t type) const {
    return CommandBarControl(GetObject(u"Add", Arguments{type}.Named(u"Temporary", true)));
  }
};

/// A toolbar or menu bar.
class CommandBar : public Facade {
 public:
  using Facade::Facade;
  /// Excel's own bars have English names in every language.
  std::u16string Name() const { return Get(u"Name").ToText(); }
  void SetName(std::u16string_view name) const { Put(u"Name", name); }
  /// The position among all bars, from 1.
  std::int32_t Index() const { return Get(u"Index").ToInt32(); }
  /// False for every bar that is disabled.
  bool Visible() const { return Get(u"Visible").ToBoolean(); }
  /// Excel refuses to show a bar that is disabled.
  void SetVisible(bool visible) const { Put(u"Visible", visible); }
  bool Enabled() const { return Get(u"Enabled").ToBoolean(); }
  void SetEnabled(bool enabled) const { Put(u"Enabled", enabled); }
  /// One of MsoBarPosition.
  void SetPosition(std::int32_t position) const { Put(u"Position", position); }
  /// MsoBarProtection values added up.
  void SetProtection(std::int32_t protection) const { Put(u"Protection", protection); }
  CommandBarControls Controls() const { return CommandBarControls(GetObject(u"Controls")); }
  /// One control: by position from 1, or by caption in any letter case and without regard to "&".
  CommandBarControl Controls(qva::Value index) const {
    return CommandBarControl(GetObject(u"Controls", {std::move(index)}));
  }
  /// The first control whose `property` ("Tag" or "Id") has a value; Nothing when there is none.
  CommandBarControl FindControl(std::u16string_view property, qva::Value value) const {
    return CommandBarControl(GetObject(u"FindControl", Arguments().Named(property, std::move(value))));
  }
  /// Takes the bar out of Excel with its controls. Excel refuses to delete its own bars.
  void Delete() const { Call(u"Delete"); }
};

/// All toolbars and menu bars of Excel, Excel's own and those of macros.
class CommandBars : public Facade {
 public:
  using Facade::Facade;
  std::int32_t Count() const { return Get(u"Count").ToInt32(); }
  /// By position from 1.
  CommandBar Item(std::int32_t position) const { return CommandBar(GetObject(u"Item", {position})); }
  /// By name in any letter case. Raises when there is none.
  CommandBar Item(std::u16string_view name) const { return CommandBar(GetObject(u"Item", {name})); }
  /// An empty bar that lives until Excel ends. A menu bar takes the place of Excel's own while it is shown.
  /// Raises when there is a bar of the name.
  CommandBar Add(std::u16string_view name, bool is_menu_bar) const {
    return CommandBar(GetObject(
        u"Add", Arguments().Named(u"Name", name).Named(u"MenuBar", is_menu_bar).Named(u"Temporary", true)));
  }
};

/// Excel itself.
class Application : public Settings {
 public:
  using Settings::Settings;
  excel::Workbooks Workbooks() const { return excel::Workbooks(GetObject(u"Workbooks")); }
  /// Those of the active workbook. Excel raises 1004 when no workbook is open.
  excel::Sheets Sheets() const { return excel::Sheets(GetObject(u"Sheets")); }
  /// Raises 438 or 445 in an Excel that has none.
  excel::FileSearch FileSearch() const { return excel::FileSearch(GetObject(u"FileSearch")); }
  /// The one whose macros run.
  Workbook ThisWorkbook() const { return Workbook(GetObject(u"ThisWorkbook")); }
  Workbook ActiveWorkbook() const { return Workbook(GetObject(u"ActiveWorkbook")); }
  /// Empty when no window is open.
  Window ActiveWindow() const { return Window(GetObject(u"ActiveWindow")); }
  /// Empty when no workbook is open.
  Worksheet ActiveSheet() const { return Worksheet(GetObject(u"ActiveSheet")); }
  /// Nothing when no workbook is open.
  excel::Range ActiveCell() const { return excel::Range(GetObject(u"ActiveCell")); }
  /// The selected cells of the active sheet, which the user may have made something else than cells.
  excel::Range Selection() const { return excel::Range(GetObject(u"Selection")); }
  /// Cells of the active sheet by their address or name.
  excel::Range Range(std::u16string_view address) const {
    return excel::Range(GetObject(u"Range", {address}));
  }
  excel::CommandBars CommandBars() const { return excel::CommandBars(GetObject(u"CommandBars")); }
  /// One bar by its name in any letter case. Raises when there is none.
  CommandBar CommandBars(std::u16string_view name) const {
    return CommandBar(GetObject(u"CommandBars", {name}));
  }
  /// Lets a key run a macro, or do nothing when `procedure` is empty.
  void OnKey(std::u16string_view key, std::u16string_view procedure) const {
    Call(u"OnKey", {key, procedure});
  }
  /// Gives a key the meaning back that it has in Excel.
  void ResetKey(std::u16string_view key) const { Call(u"OnKey", {key}); }
  /// The empty text gives Excel its own caption back.
  void SetCaption(std::u16string_view caption) const { Put(u"Caption", caption); }
  bool Visible() const { return Get(u"Visible").ToBoolean(); }
  /// Whether Excel asks before it overwrites a file, and the like.
  void SetDisplayAlerts(bool on) const { Put(u"DisplayAlerts", on); }
  bool ScreenUpdating() const { return Get(u"ScreenUpdating").ToBoolean(); }
  void SetScreenUpdating(bool on) const { Put(u"ScreenUpdating", on); }
  void SetDisplayFormulaBar(bool on) const { Put(u"DisplayFormulaBar", on); }
  /// One of XlMousePointer.
  void SetCursor(std::int32_t pointer) const { Put(u"Cursor", pointer); }
  /// The text that a macro put there; False while the status bar is Excel's own.
  qva::Value StatusBar() const { return Get(u"StatusBar"); }
  void SetStatusBar(const qva::Value& text) const { Put(u"StatusBar", text); }
  /// Hands the status bar back to Excel.
  void ResetStatusBar() const { Put(u"StatusBar", false); }
  /// One of XlCommentDisplayMode.
  void SetDisplayCommentIndicator(std::int32_t mode) const { Put(u"DisplayCommentIndicator", mode); }
  /// Whether what happens in Excel runs the macros that are bound to it.
  void SetEnableEvents(bool on) const { Put(u"EnableEvents", on); }
  /// Shows a topic of a help file.
  void Help(std::u16string_view file, std::int32_t context) const { Call(u"Help", {file, context}); }
  /// Ends Excel once the macro that runs has ended; Excel asks the user about unsaved workbooks first.
  void Quit() const { Call(u"Quit"); }
};

}  // namespace qva::excel
