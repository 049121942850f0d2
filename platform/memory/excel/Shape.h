#pragma once

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// A shape on a sheet, known by its name alone. Every member raises kObjectGone once the workbook was closed.
class Shape : public ModelObject<Shape, ShapeData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  /// Puts the shape's picture on the clipboard.
  void Copy();
};

}  // namespace qva::memory
