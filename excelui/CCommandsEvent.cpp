#include "excelui/CCommandsEvent.h"

#include "platform/services.h"

namespace qva {
namespace {

constexpr std::u16string_view kHelpFile = u"FReport.chm";

bool IsPressed(std::int32_t state) {
  return state == msoButtonDown || state == msoButtonMixed;
}

}  // namespace

ClassBuilder CCommandsEvent::Describe() {
  return ClassBuilder(u"CCommandsEvent", "Carries out the commands of the default buttons")
      .Method<&CCommandsEvent::cmdHelp>(u"cmdHelp", {Optional(u"sHelpFile"), Optional(u"iHelpContextID")},
                                        "Shows a help file")
      .Method<&CCommandsEvent::cmdComment>(u"cmdComment", {}, "Switches the comment indicators")
      .Method<&CCommandsEvent::cmdFreeze>(u"cmdFreeze", {{u"rnStart"}, Optional(u"ScrollRow")},
                                          "Freezes the panes above a cell, or thaws them")
      .Method<&CCommandsEvent::Init>(u"Init", {{u"pCmdBar"}, {u"pDefButton"}},
                                     "Takes the bar and its buttons");
}

void CCommandsEvent::Init(excel::CommandBar pCmdBar, Ref<CDefaultButtons> pDefButton) {
  excel_.Hold();
  bar_ = std::move(pCmdBar);
  default_buttons_ = std::move(pDefButton);
}

excel::CommandBarControl CCommandsEvent::Control(std::int32_t (CDefaultButtons::*index)() const) const {
  const excel::CommandBar bar = Bar();
  const Ref<CDefaultButtons> buttons = default_buttons_;  // a copy for the same reason
  if (!buttons) throw AutomationError(kObjectNotSet);
  return bar.Controls((*buttons.*index)());
}

void CCommandsEvent::cmdHelp(std::u16string& sHelpFile, std::int32_t& iHelpContextID) {
  if (sHelpFile.empty()) {
    sHelpFile = GetServices().environment->LibraryFolder().append(u"\\").append(kHelpFile);
  }
  const excel::Application application = excel_.Application();
  application.Help(sHelpFile, iHelpContextID);
}

void CCommandsEvent::cmdComment() {
  const excel::Application application = excel_.Application();
  const excel::CommandBarControl control = Control(&CDefaultButtons::cmdIndexComment);
  const std::int32_t state = control.State();
  if (IsPressed(state)) {
    control.SetState(msoButtonUp);
    application.SetDisplayCommentIndicator(xlNoIndicator);
  } else if (state == msoButtonUp) {
    control.SetState(msoButtonDown);
    application.SetDisplayCommentIndicator(xlCommentIndicatorOnly);
  }
}

void CCommandsEvent::cmdFreeze(excel::Range rnStart, std::int16_t& ScrollRow) {
  const excel::Application application = excel_.Application();
  const excel::CommandBarControl control = Control(&CDefaultButtons::cmdIndexFreeze);
  application.SetScreenUpdating(false);
  application.SetEnableEvents(false);
  // Asked for when it is first needed.
  excel::Window active_window;
  const auto window = [&]() -> const excel::Window& {
    if (!active_window) active_window = application.ActiveWindow();
    return active_window;
  };
  if (ScrollRow == 0) ScrollRow = Value(window().ScrollRow()).ToInt16();
  const std::int32_t state = control.State();
  if (IsPressed(state)) {
    control.SetState(msoButtonUp);
    window().SetFreezePanes(false);
    window().SetScrollRow(1);
  } else if (state == msoButtonUp) {
    control.SetState(msoButtonDown);
    const excel::Range active_cell = application.ActiveCell();
    rnStart.Activate();
    window().SetScrollRow(ScrollRow);
    window().SetFreezePanes(true);
    active_cell.Activate();
  }
  application.SetScreenUpdating(true);
  application.SetEnableEvents(true);
}

}  // namespace qva
