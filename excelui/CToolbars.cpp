#include "excelui/CToolbars.h"

#include "global/StartUp.h"

namespace qva {
namespace {

constexpr std::int32_t kGoToAppCaption = 841;  ///< host message: caption of the go-to-application command

}  // namespace

const ClassDescription& CToolbars::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CToolbars", "The report toolbars")
          .Method<&CToolbars::CreateToolbar>(u"CreateToolbar", {{u"oSheet"}},
                                             "Creates a toolbar from a settings sheet")
          .Method<&CToolbars::Item>(u"Item", {{u"ToolbarID"}}, "The toolbar of an id")
          .Get<&CToolbars::Count>(u"Count", {}, "Number of toolbars")
          .Method<&CToolbars::DeleteToolbar>(u"DeleteToolbar", {{u"ToolbarID"}}, "Removes a toolbar")
          .Method<&CToolbars::Refresh>(u"Refresh", {}, "Binds the hot keys again")
          .Method<&CToolbars::cmdGoToAppShow>(u"cmdGoToAppShow", {Optional(u"sMacros", u"RestoreApp")},
                                              "Adds the go-to-application command to Excel's menu")
          .Method<&CToolbars::cmdGoToAppDelete>(u"cmdGoToAppDelete", {},
                                                "Removes the go-to-application command")
          .Get<&CToolbars::cmdGoToAppCaption>(u"cmdGoToAppCaption", {},
                                              "Caption of the go-to-application command");
  return description;
}

std::uint8_t CToolbars::CreateToolbar(excel::Worksheet) {
  throw AutomationError(kUnsupportedAction);
}

Ref<CToolbar> CToolbars::Item(std::uint8_t ToolbarID) const {
  for (const Entry& entry : toolbars_) {
    if (entry.id == ToolbarID) return entry.toolbar;
  }
  return {};
}

void CToolbars::DeleteToolbar(std::uint8_t) {
  throw AutomationError(kUnsupportedAction);
}
void CToolbars::Refresh() {
  throw AutomationError(kUnsupportedAction);
}
void CToolbars::cmdGoToAppShow(std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
void CToolbars::cmdGoToAppDelete() {
  throw AutomationError(kUnsupportedAction);
}

std::u16string CToolbars::cmdGoToAppCaption() const {
  return HostText(kGoToAppCaption);
}

}  // namespace qva
