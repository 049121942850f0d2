#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// Workbook. Every member raises kObjectGone once the workbook was closed.
class Workbook : public ModelObject<Workbook, WorkbookData> {
 public:
  using ModelObject::ModelObject;
  static const ClassDescription& Description();

 private:
  WorkbookData& Open();
  std::u16string Name();
  std::u16string FullName();
  std::u16string Path();
  bool Saved();
  void SetSaved(bool saved);
  ObjectPtr Parent();
  ObjectPtr Sheets();
  ObjectPtr Names();
  ObjectPtr ActiveSheet();
  ObjectPtr Windows();
  ObjectPtr VBProject();
  void Activate();
  /// Writes the file of the workbook's name; one that was never saved goes to the default folder.
  void Save();
  /// Writes a file, in place of an older one, and gives the workbook its name. A name without extension gets
  /// ".xls", one without folder the default folder. Raises 1004 for an empty name, and when another open
  /// workbook has the name.
  void SaveAs(const std::u16string& file_name, const Value& file_format);
  /// With SaveChanges true the workbook is saved first; otherwise its changes are lost without a question.
  void Close(const Value& save_changes);
};

}  // namespace qva::memory
