#include "platform/memory/excel/Shapes.h"

#include "platform/memory/excel/Shape.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::int32_t kInvalidArgument = -2147024809;  // hexadecimal 80070057 (E_INVALIDARG)

}  // namespace

ClassBuilder Shapes::Describe() {
  return ClassBuilder(u"Shapes", "The shapes on a sheet")
      .Get<&Shapes::Count>(u"Count")
      .Get<&Shapes::Item>(u"Item", {{u"Index"}})
      .Method<&Shapes::AddShape>(u"AddShape", {{u"Type"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}})
      .Default(u"Item");
}

std::int32_t Shapes::Count() {
  OpenWorkbook(sheet_->workbook);
  return static_cast<std::int32_t>(sheet_->shapes.size());
}

ObjectPtr Shapes::Item(const Value& index) {
  const std::int32_t count = Count();
  if (index.Is(Value::Type::Text)) {
    for (const auto& shape : sheet_->shapes) {
      if (EqualIgnoringCase(shape->name, index.ToText())) return ObjectOf<Shape>(application_, shape);
    }
  } else if (const std::int32_t number = index.ToInt32(); number >= 1 && number <= count) {
    return ObjectOf<Shape>(application_, sheet_->shapes[static_cast<std::size_t>(number) - 1]);
  }
  throw AutomationError(kInvalidArgument, std::u16string(kExcelSource),
                        u"The item with the specified name wasn't found.");
}

ObjectPtr Shapes::AddShape(const Value&, const Value&, const Value&, const Value&, const Value&) {
  const auto shape = std::make_shared<ShapeData>();
  shape->workbook = OpenWorkbook(sheet_->workbook);
  shape->name = u"Rectangle " + NumberText(Count() + 1);
  sheet_->shapes.push_back(shape);
  return ObjectOf<Shape>(application_, shape);
}

}  // namespace qva::memory
