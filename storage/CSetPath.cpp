#include "storage/CSetPath.h"

namespace qva {

const ClassDescription& CSetPath::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CSetPath", "Puts the library's folder on the user's search path")
          .Method<&CSetPath::RegPath>(u"RegPath", {{u"PathKey"}},
                                      "Adds the folder of a path setting; true when the path was changed");
  return description;
}

bool CSetPath::RegPath(std::u16string&) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
