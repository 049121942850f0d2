#include "platform/forms/form_description.h"

#include <set>

namespace qva {

void RequireConsistent(const ui::FormDescription& description) {
  std::set<std::u16string_view> names;
  for (const ui::ControlDescription& control : description.controls) {
    const bool has_parent = control.parent.empty() || names.contains(control.parent);
    if (!has_parent || !names.insert(control.name).second) {
      throw AutomationError(kInternalError, u"QVA_Varnholt",
                            u"The form's description contradicts itself at " + control.name);
    }
  }
}

}  // namespace qva
