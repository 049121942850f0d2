#include "excelui/CToolbars.h"

namespace qva {

const ClassDescription& CToolbars::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CToolbars", "The report toolbars")
          .Method<&CToolbars::CreateToolbar>(u"CreateToolbar", {{u"oSheet"}},
                                             "Creates a toolbar from a settings sheet")
          .Method<&CToolbars::Item>(u"Item", {{u"ToolbarID"}}, "The toolbar of an id")
          .Get<&CToolbars::Count>(u"Count", {}, "Number of toolbars");
  return description;
}

std::uint8_t CToolbars::CreateToolbar(ObjectPtr) {
  throw AutomationError(kUnsupportedAction);
}

Ref<CToolbar> CToolbars::Item(std::uint8_t ToolbarID) const {
  for (const Entry& entry : toolbars_) {
    if (entry.id == ToolbarID) return entry.toolbar;
  }
  return {};
}

}  // namespace qva
