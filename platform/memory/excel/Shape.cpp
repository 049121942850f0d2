#include "platform/memory/excel/Shape.h"

namespace qva::memory {

const ClassDescription& Shape::Description() {
  static const ClassDescription& description = []() -> const ClassDescription& {
    ClassBuilder builder(u"Shape", "A shape on a sheet");
    AddProperty<&ShapeData::name>(builder, u"Name");
    builder.Method<&Shape::Copy>(u"Copy");
    return std::move(builder).Default(u"Name");
  }();
  return description;
}

void Shape::Copy() {
  RequireAlive(*data());
  application()->clipboard_picture = data()->name;
}

}  // namespace qva::memory
