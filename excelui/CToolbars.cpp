#include "excelui/CToolbars.h"

#include <limits>
#include <utility>

#include "excelui/ExcelSettings.h"
#include "global/StartUp.h"

namespace qva {
namespace {

constexpr std::int32_t kGoToAppCaption = 841;  ///< host message: caption of the go-to-application command
constexpr std::int32_t kGoToAppFace = 1017;
constexpr std::int32_t kMenuProtection = msoBarNoCustomize | msoBarNoChangeVisible;

/// The go-to-application command and the bar that it is on; each may be empty.
struct GoToApp {
  GoToApp(const excel::Application& application, const std::u16string& caption) {
    IgnoreErrors([&] {
      bar = MenuBar(application);
      command = bar.Controls(caption);
    });
  }
  static excel::CommandBar MenuBar(const excel::Application& application) {
    return application.CommandBars(kWorksheetMenuBar);
  }

  void SetUp(const std::u16string& caption, const std::u16string& macro) const {
    command.SetSetting(u"FaceId", kGoToAppFace);
    command.SetSetting(u"BeginGroup", true);
    command.SetSetting(u"OnAction", macro);
    command.SetSetting(u"Caption", caption);
    command.SetSetting(u"Parameter", caption);
    command.SetSetting(u"Style", std::int32_t{msoButtonIconAndCaption});
    command.SetSetting(u"Visible", true);
  }
  /// Removes the command, as far as it was added, and protects the bar. Ignores what Excel raises.
  void TakeBack() const {
    if (command) {
      IgnoreErrors([&] { bar.SetProtection(msoBarNoProtection); });
      IgnoreErrors([&] { command.Delete(); });
    }
    IgnoreErrors([&] { bar.SetProtection(kMenuProtection); });
  }

  excel::CommandBar bar;
  excel::CommandBarControl command;
};

}  // namespace

ClassBuilder CToolbars::Describe() {
  return ClassBuilder(u"CToolbars", "The report toolbars")
      .Method<&CToolbars::CreateToolbar>(u"CreateToolbar", {{u"oSheet"}},
                                         "Creates a toolbar from a settings sheet")
      .Method<&CToolbars::Item>(u"Item", {{u"ToolbarID"}}, "The toolbar of an id")
      .Get<&CToolbars::Count>(u"Count", {}, "Number of toolbars")
      .Method<&CToolbars::DeleteToolbar>(u"DeleteToolbar", {{u"ToolbarID"}}, "Removes a toolbar")
      .Method<&CToolbars::Refresh>(u"Refresh", {}, "Binds the hot keys again")
      .Method<&CToolbars::cmdGoToAppShow>(u"cmdGoToAppShow", {Optional(u"sMacros", u"RestoreApp")},
                                          "Adds the go-to-application command to Excel's menu")
      .Method<&CToolbars::cmdGoToAppDelete>(u"cmdGoToAppDelete", {}, "Removes the go-to-application command")
      .Get<&CToolbars::cmdGoToAppCaption>(u"cmdGoToAppCaption", {},
                                          "Caption of the go-to-application command");
}

CToolbars::~CToolbars() {
  // Taken out first: what a toolbar sets off in Excel when it goes may look at the set.
  std::exchange(toolbars_, {});
  IgnoreFailures([&] { cmdGoToAppDelete(); });
}

std::uint8_t CToolbars::CreateToolbar(excel::Worksheet oSheet) {
  const auto toolbar = MakeRef<CToolbar>(excel_);
  toolbar->Init(oSheet.Parent(), oSheet);
  if (toolbar->TotalButtons() == 0) return 0;
  toolbars_.push_back(toolbar);
  if (last_id_ == std::numeric_limits<std::uint8_t>::max()) throw AutomationError(kOverflow);
  toolbar->SetIDCollection(++last_id_);
  return last_id_;
}

Ref<CToolbar> CToolbars::Item(std::uint8_t ToolbarID) {
  for (position_ = 1; position_ <= Count(); ++position_) {
    const Ref<CToolbar>& toolbar = toolbars_[static_cast<std::size_t>(position_) - 1];
    if (toolbar->IDCollection() == ToolbarID) return toolbar;
  }
  position_ = 0;
  return {};
}

void CToolbars::DeleteToolbar(std::uint8_t ToolbarID) {
  // Held beyond its place in the set: what it sets off in Excel when it goes may look at the set.
  const Ref<CToolbar> toolbar = Item(ToolbarID);
  if (toolbar) toolbars_.erase(toolbars_.begin() + position_ - 1);
}

void CToolbars::Refresh() {
  // Counted in 8 bits, which one beyond the last must fit, too.
  const std::uint8_t count = Value(Count()).ToByte();
  for (int pass = 1; pass <= count; ++pass) {
    if (position_ < 1 || position_ > Count()) throw AutomationError(kInvalidProcedureCall);
    const Ref<CToolbar> toolbar = toolbars_[static_cast<std::size_t>(position_) - 1];
    if (toolbar->VisibleToolbar()) toolbar->Refresh();
  }
  if (count == std::numeric_limits<std::uint8_t>::max()) throw AutomationError(kOverflow);
}

void CToolbars::cmdGoToAppShow(std::u16string sMacros) {
  const std::u16string caption = cmdGoToAppCaption();
  const excel::Application application = excel_.Application();
  GoToApp go_to_app(application, caption);
  if (go_to_app.command) {
    go_to_app.SetUp(caption, sMacros);
    return;
  }
  if (!go_to_app.bar) go_to_app.bar = GoToApp::MenuBar(application);
  go_to_app.bar.SetProtection(msoBarNoProtection);
  try {
    go_to_app.command = go_to_app.bar.Controls().Add(msoControlButton);
    go_to_app.bar.SetProtection(kMenuProtection);
    go_to_app.SetUp(caption, sMacros);
  } catch (...) {
    go_to_app.TakeBack();
    throw;
  }
}

void CToolbars::cmdGoToAppDelete() {
  const GoToApp found(excel_.Application(), cmdGoToAppCaption());
  if (!found.command) return;
  found.bar.SetProtection(msoBarNoProtection);
  found.command.Delete();
}

std::u16string CToolbars::cmdGoToAppCaption() const {
  return HostText(kGoToAppCaption);
}

}  // namespace qva
