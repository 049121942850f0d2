#include "excelui/CToolbar.h"

#include "platform/text.h"

namespace qva {
namespace {

// The byte results.
constexpr std::uint8_t kDone = 0;
constexpr std::uint8_t kNotDone = 1;

/// The one key that is bound for both letter cases, so that it also works with Caps Lock on.
constexpr std::u16string_view kSaveKey = u"^{s}";
constexpr std::u16string_view kSaveKeyWithCapsLock = u"^{S}";

bool IsSaveKey(std::u16string_view key) {
  return ToLower(key) == kSaveKey;
}

}  // namespace

ClassBuilder CToolbar::Describe() {
  return ClassBuilder(u"CToolbar", "A report toolbar")
      .Get<&CToolbar::CmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons")
      .PutRef<&CToolbar::SetCmdEvent>(u"CmdEvent", {}, "Carries out the commands of the default buttons")
      .Method<&CToolbar::iComment>(u"iComment", {}, "Index of the comment button")
      .Method<&CToolbar::iFreeze>(u"iFreeze", {}, "Index of the freeze button")
      .Method<&CToolbar::iPrintP>(u"iPrintP", {}, "Index of the print preview button")
      .Method<&CToolbar::iPrint>(u"iPrint", {}, "Index of the print button")
      .Method<&CToolbar::iExcel>(u"iExcel", {}, "Index of the go-to-Excel button")
      .Method<&CToolbar::iHelp>(u"iHelp", {}, "Index of the help button")
      .Method<&CToolbar::VisibleButton>(u"VisibleButton", {{u"Index"}, {u"Visible"}},
                                        "Shows or hides a button")
      .Method<&CToolbar::EnabledButton>(u"EnabledButton", {{u"Index"}, {u"Enabled"}},
                                        "Enables or disables a button")
      .Method<&CToolbar::ButtonFaceID>(u"ButtonFaceID", {{u"Index"}, {u"ID"}}, "Sets a built-in face")
      .Method<&CToolbar::ButtonFace>(u"ButtonFace", {{u"Index"}, {u"Picture"}}, "Sets a face from a picture")
      .Method<&CToolbar::PositinTop>(u"PositinTop", {}, "Moves the bar to the top")
      .Method<&CToolbar::Refresh>(u"Refresh", {}, "Binds the hot keys again")
      .Method<&CToolbar::ButtonToolTipText>(u"ButtonToolTipText", {{u"Index"}, {u"sText"}}, "Sets a tooltip")
      .Put<&CToolbar::SetVisibleToolbar>(u"VisibleToolbar", {}, "Whether the bar is shown")
      .Get<&CToolbar::VisibleToolbar>(u"VisibleToolbar", {}, "Whether the bar is shown")
      .Property<&CToolbar::Caption, &CToolbar::SetCaption>(u"Caption", {}, "Name of the bar")
      .Method<&CToolbar::SetAction>(u"SetAction", {{u"nButton"}, {u"sRunMacros"}},
                                    "Sets the macro of a button")
      .Method<&CToolbar::SetHotKey>(u"SetHotKey", {{u"nButton"}, {u"sOnKey"}}, "Sets the hot key of a button")
      .Get<&CToolbar::ToolbarID>(u"ToolbarID", {}, "Excel's index of the bar")
      .Get<&CToolbar::TotalButtons>(u"TotalButtons", {}, "Number of buttons on the bar")
      .Property<&CToolbar::IDCollection, &CToolbar::SetIDCollection>(u"IDCollection", {},
                                                                     "Id of the toolbar in its collection")
      .Method<&CToolbar::Init>(u"Init", {{u"wb_Setings"}, {u"ws_Setings"}},
                               "Builds the bar from a settings sheet");
}

CToolbar::~CToolbar() {
  if (bar_) {
    IgnoreFailures([&] { bar_.SetEnabled(true); });
    IgnoreFailures([&] { bar_.Delete(); });
  }
  if (!buttons_) return;
  IgnoreFailures([&] { ReleaseHotKeys(Refusals::Ignored); });
  IgnoreFailures([&] { buttons_->Reset(); });
}

std::uint8_t CToolbar::VisibleButton(std::uint8_t Index, bool Visible) {
  if (SetOnControl(Index, u"Visible", Visible) == kNotDone) return kNotDone;
  BindHotKey(Index);
  return kDone;
}

std::uint8_t CToolbar::EnabledButton(std::uint8_t Index, bool Enabled) {
  if (SetOnControl(Index, u"EnabledButton", Enabled) == kNotDone) return kNotDone;
  BindHotKey(Index);
  return kDone;
}

std::uint8_t CToolbar::ButtonFaceID(std::uint8_t Index, std::int32_t ID) {
  return SetOnControl(Index, u"FaceId", ID);
}

std::uint8_t CToolbar::ButtonFace(std::uint8_t Index, ObjectPtr Picture) {
  if (FindBar() == 0) return kNotDone;
  excel::Shape(std::move(Picture)).Copy();
  Control(Index).PasteFace();
  return kDone;
}

std::uint8_t CToolbar::PositinTop() {
  if (!bar_) return kNotDone;
  Bar().SetPosition(msoBarTop);
  return kDone;
}

void CToolbar::Refresh() {
  if (FindBar() == 0) return;
  if (!Bar().Visible()) {
    ReleaseHotKeys(Refusals::Raised);
    return;
  }
  const int count = buttons_->TotalButtons();
  for (int button = 1; button <= count; ++button) BindHotKey(static_cast<std::uint8_t>(button));
}

std::uint8_t CToolbar::ButtonToolTipText(std::uint8_t Index, std::u16string sText) {
  return SetOnControl(Index, u"ToolTipText", std::move(sText));
}

void CToolbar::SetVisibleToolbar(bool value) {
  if (FindBar() != 0) {
    const excel::CommandBar bar = Bar();
    if (bar.Visible() != value) {
      bar.SetEnabled(value);
      bar.SetVisible(value);
    }
  }
  Refresh();
}

bool CToolbar::VisibleToolbar() {
  const bool is_visible = bar_ && Bar().Visible();
  Refresh();
  return is_visible;
}

std::u16string CToolbar::Caption() const {
  return Bar().Name();
}

void CToolbar::SetCaption(std::u16string value) {
  IgnoreErrors([&] { Bar().SetName(value); });
}

std::uint8_t CToolbar::SetAction(std::uint8_t nButton, std::u16string& sRunMacros) {
  if (FindBar() == 0) return kNotDone;
  if (sRunMacros.empty()) return kDone;
  sRunMacros = workbook_.Name().append(u"!").append(sRunMacros);
  Control(nButton).SetSetting(u"OnAction", sRunMacros);
  buttons_->Button(nButton).on_action = sRunMacros;
  return kDone;
}

std::uint8_t CToolbar::SetHotKey(std::uint8_t nButton, std::u16string sOnKey) {
  if (FindBar() == 0) return kNotDone;
  buttons_->Button(nButton).on_key = std::move(sOnKey);
  return BindHotKey(nButton);
}

std::int32_t CToolbar::ToolbarID() const {
  return bar_ ? Bar().Index() : 0;
}

std::uint8_t CToolbar::TotalButtons() const {
  return bar_ ? Value(Bar().Controls().Count()).ToByte() : std::uint8_t{0};
}

std::int32_t CToolbar::FindBar() {
  const excel::Application application = excel_.Application();
  excel::CommandBar bar;
  std::int32_t index = 0;
  IgnoreErrors([&] {
    bar = application.CommandBars(caption_);
    index = bar.Index();
  });
  // A toolbar whose settings were not read has no bar and no name: what goes by none is somebody else's.
  if (caption_.empty() && index != 0) throw AutomationError(kObjectNotSet);
  bar_ = std::move(bar);
  return index;
}

excel::CommandBarControl CToolbar::Control(std::uint8_t button) const {
  return Bar().Controls(std::int32_t{button});
}

std::uint8_t CToolbar::SetOnControl(std::uint8_t button, std::u16string_view property, Value value) {
  if (FindBar() == 0) return kNotDone;
  Control(button).SetSetting(property, std::move(value));
  return kDone;
}

std::uint8_t CToolbar::BindHotKey(std::uint8_t button) {
  std::uint8_t result = kNotDone;
  IgnoreErrors([&] {
    const std::u16string key = buttons_->Button(button).on_key;
    if (key.empty()) return;
    const excel::CommandBarControl control = Control(button);
    std::u16string macro;
    if (control.Visible() && control.Enabled()) {
      result = kDone;
      macro = control.OnAction();
    }
    const excel::Application application = excel_.Application();
    const auto bind = [&](std::u16string_view code) {
      IgnoreErrors([&] { application.OnKey(code, macro); });
    };
    const bool is_save_key = IsSaveKey(key);
    bind(is_save_key ? kSaveKey : key);
    if (is_save_key) bind(kSaveKeyWithCapsLock);
  });
  return result;
}

void CToolbar::ReleaseHotKeys(Refusals refusals) {
  const excel::Application application = excel_.Application();
  const Ref<CButtonProperties> buttons = buttons_;
  const auto release = [&](std::u16string_view code) {
    try {
      application.ResetKey(code);
    } catch (const AutomationError&) {
      if (refusals == Refusals::Raised) throw;
    }
  };
  const int count = buttons->TotalButtons();
  for (int button = 1; button <= count; ++button) {
    const std::u16string key = buttons->Button(static_cast<std::uint8_t>(button)).on_key;
    if (key.empty()) continue;
    release(key);
    if (!IsSaveKey(key)) continue;
    release(kSaveKey);
    release(kSaveKeyWithCapsLock);
  }
}

Ref<CDefaultButtons> CToolbar::DefaultButtons() const {
  if (!default_buttons_) throw AutomationError(kObjectNotSet);
  return default_buttons_;
}

}  // namespace qva
