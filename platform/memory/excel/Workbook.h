#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// Workbook. Every member raises kObjectGone once the workbook was closed.
class Workbook : public ModelObject<Workbook, WorkbookData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

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
  /// Writes the file of the workbook's name; one that was never saved goes to the default folder. Raises 1004
  /// when the folder is missing.
  void Save();
  /// Writes a file and gives the workbook its name. A name without extension gets ".xls", one without folder
  /// the default folder. Before an older file is replaced, the user is asked while alerts are on. Raises 1004
  /// for an empty name, a missing folder, when another open workbook has the name, and when the user says no.
  void SaveAs(const std::u16string& file_name, const Value& file_format);
  void Write(const std::u16string& folder, const std::u16string& name);
  /// With SaveChanges true the workbook is saved first; otherwise its changes are lost without a question.
  void Close(const Value& save_changes);
};

}  // namespace qva::memory
