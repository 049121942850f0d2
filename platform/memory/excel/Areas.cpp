#include "platform/memory/excel/Areas.h"

#include "platform/memory/excel/Collection.h"

namespace qva::memory {

ClassBuilder Areas::Describe() {
  return ClassBuilder(u"Areas", "The rectangles of a range")
      .Get<&Areas::Count>(u"Count")
      .Get<&Areas::Item>(u"Item", {{u"Index"}})
      .Default(u"Item");
}

std::int32_t Areas::Count() {
  OpenWorkbook(reference_.sheet->workbook);
  return static_cast<std::int32_t>(reference_.areas.size());
}

ObjectPtr Areas::Item(const Value& index) {
  OpenWorkbook(reference_.sheet->workbook);
  const Area& area = reference_.areas[PositionIn(reference_.areas.size(), index)];
  return MakeRef<Range>(application_, Reference{reference_.sheet, {area}});
}

}  // namespace qva::memory
