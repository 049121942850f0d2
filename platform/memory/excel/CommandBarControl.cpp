#include "platform/memory/excel/CommandBarControl.h"

namespace qva::memory {

const ClassDescription& CommandBarControl::Description() {
  static const ClassDescription description = [] {
    ClassBuilder builder(u"CommandBarControl", "A button or box of a command bar");
    AddProperty<&CommandBarControlData::caption>(builder, u"Caption");
    AddProperty<&CommandBarControlData::parameter>(builder, u"Parameter");
    return ClassDescription(std::move(builder).Default(u"Caption"));
  }();
  return description;
}

}  // namespace qva::memory
