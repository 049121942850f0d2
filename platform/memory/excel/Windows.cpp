#include "platform/memory/excel/Windows.h"

#include "platform/memory/excel/Collection.h"
#include "platform/memory/excel/Window.h"
#include "platform/text.h"

namespace qva::memory {

ClassBuilder Windows::Describe() {
  return ClassBuilder(u"Windows", "The windows of a workbook")
      .Get<&Windows::Count>(u"Count")
      .Get<&Windows::Item>(u"Item", {{u"Index"}})
      .Default(u"Item");
}

std::int32_t Windows::Count() {
  OpenWorkbook(workbook_);
  return 1;
}

ObjectPtr Windows::Item(const Value& index) {
  ObjectPtr window = ObjectOf<Window>(application_, OpenWorkbook(workbook_)->window);
  if (index.Is(Value::Type::Text)) {
    const std::u16string caption = Get(window, u"Caption").ToText();
    if (!EqualIgnoringCase(caption, index.ToText())) throw SubscriptRefusal();
  } else {
    PositionIn(1, index);
  }
  return window;
}

}  // namespace qva::memory
