#include "platform/memory/excel/Areas.h"

#include "platform/memory/excel/Collection.h"

namespace qva::memory {

const ClassDescription& Areas::Description() {
  static const ClassDescription& description = ClassBuilder(u"Areas", "The rectangles of a range")
                                                   .Get<&Areas::Count>(u"Count")
                                                   .Get<&Areas::Item>(u"Item", {{u"Index"}})
                                                   .Default(u"Item");
  return description;
}

std::int32_t Areas::Count() {
  return 1;
}

ObjectPtr Areas::Item(const Value& index) {
  PositionIn(1, index);
  return range_;
}

}  // namespace qva::memory
