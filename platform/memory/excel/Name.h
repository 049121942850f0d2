#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// A defined name. Every member raises kObjectGone once the name was deleted or the workbook closed.
class Name : public ModelObject<Name, NameData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  std::shared_ptr<WorkbookData> Open();
  /// With "Sheet1!" in front when it is a sheet's own name.
  std::u16string Text();
  std::u16string RefersTo();
  void SetRefersTo(const Value& refers_to);
  /// Raises 1004 when the name does not stand for cells.
  ObjectPtr RefersToRange();
  bool Visible();
  void SetVisible(bool visible);
  void Delete();
};

/// What a RefersTo argument means as a formula: a text that begins with "=" is one, any other text and
/// numbers are constants, a Range object stands for its cells.
std::u16string RefersToFormula(const Value& refers_to);

}  // namespace qva::memory
