#include "excelui/CToolbar.h"

namespace qva {

const ClassDescription& CToolbar::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CToolbar", "A report toolbar")
          .Get<&CToolbar::CmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons")
          .PutRef<&CToolbar::SetCmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons");
  return description;
}

}  // namespace qva
