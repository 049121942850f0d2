#include "platform/memory/excel/Shape.h"

namespace qva::memory {

ClassBuilder Shape::Describe() {
  ClassBuilder builder(u"Shape", "A shape on a sheet");
  AddProperty<&ShapeData::name>(builder, u"Name");
  builder.Method<&Shape::Copy>(u"Copy");
  return std::move(builder).Default(u"Name");
}

void Shape::Copy() {
  RequireAlive(*data());
  application()->clipboard_picture = data()->name;
}

}  // namespace qva::memory
