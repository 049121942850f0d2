#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// Worksheet. Every member raises kObjectGone once the workbook was closed.
class Worksheet : public ModelObject<Worksheet, SheetData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  SheetData& Open();
  std::u16string Name();
  void SetName(const std::u16string& name);
  ObjectPtr Application();
  ObjectPtr Parent();
  std::int32_t Index();
  /// An XlSheetVisibility. Hiding the last visible sheet raises 1004; True and False are visible and hidden.
  std::int32_t Visible();
  void SetVisible(const Value& visible);

  /// The cells that an address or a name means, or the area around two such; they must lie on this sheet,
  /// otherwise 1004.
  ObjectPtr Range(const Value& cell1, const Value& cell2);
  /// All cells; with Row and Column one of them, with one index the cell counted along the rows.
  ObjectPtr Cells(const Value& row, const Value& column);
  ObjectPtr Rows(const Value& index);
  ObjectPtr Columns(const Value& index);
  ObjectPtr UsedRange();
  ObjectPtr PageSetup();
  ObjectPtr Names();
  ObjectPtr Shapes();

  /// Makes the sheet and its workbook the active ones. Raises 1004 for a hidden sheet.
  void Activate();
  /// Computes the sheet's formulas while the application calculates manually; otherwise they always are.
  void Calculate();
  /// Contents decides whether locked cells can be changed; the objects and scenarios are not modelled. With
  /// UserInterfaceOnly macros - which is all that ever comes here - still may.
  void Protect(const Value& password, const Value& drawing_objects, bool contents, const Value& scenarios,
               bool user_interface_only);
  /// Raises 1004 for a wrong password (letter case counts).
  void Unprotect(const Value& password);
  bool ProtectContents();

  /// Both raise 1004 for a hidden sheet, PrintOut also for pages that cannot be.
  void PrintOut(const Value& from, const Value& to, std::int32_t copies);
  void PrintPreview();

  /// Whether the window shows where pages break.
  bool DisplayPageBreaks();
  void SetDisplayPageBreaks(bool on);
};

}  // namespace qva::memory
