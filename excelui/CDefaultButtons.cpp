#include "excelui/CDefaultButtons.h"

#include "global/StartUp.h"

namespace qva {
namespace {

constexpr std::int32_t kFirstCaption = 843;  ///< host messages from here on: the captions, in order
constexpr std::int32_t kEmptyControl = 1;    ///< Excel's id of a control without a function of its own
constexpr std::int32_t kComboBoxWidth = 52;  ///< pixels
constexpr std::u16string_view kHelpMacro = u"cmdHelp";

/// A default button beside its caption, which is its tooltip, too. All of them are visible.
struct DefaultButton {
  std::int32_t face_id;
  std::int32_t id;
  std::u16string_view tag;
  std::u16string_view on_key;
  std::u16string_view on_action;
  bool begin_group;
  MsoControlType type = msoControlButton;
};

constexpr DefaultButton kDefaultButtons[kDefaultButtonCount] = {
    {1593, kEmptyControl, u"TagComment", u"", u"cmdComment", true},
    {443, kEmptyControl, u"TagFreeze", u"", u"cmdFreeze", false},
    {2521, CDefaultButtons::kPrintControl, u"TagPrint", u"", u"", true},
    {109, CDefaultButtons::kPrintPreviewControl, u"TagPrintP", u"", u"", false},
    {1733, 1733, u"Tag01", u"", u"", true, msoControlComboBox},
    {263, kEmptyControl, u"TagExcel", u"", u"", false},
    {984, kEmptyControl, u"TagHelp", u"{F1}", kHelpMacro, false},
};

std::u16string MacroOf(std::u16string workbook_name, std::u16string_view macro) {
  return workbook_name.append(u"!").append(macro);
}

}  // namespace

ClassBuilder CDefaultButtons::Describe() {
  return ClassBuilder(u"CDefaultButtons", "The default buttons of a report toolbar")
      .Method<&CDefaultButtons::AddButtons>(u"AddButtons", {}, "Adds the default buttons")
      .Get<&CDefaultButtons::cmdIndexComment>(u"cmdIndexComment", {}, "Position of the button: comments")
      .Get<&CDefaultButtons::cmdIndexFreeze>(u"cmdIndexFreeze", {}, "Position of the button: freeze panes")
      .Get<&CDefaultButtons::cmdIndexPrintP>(u"cmdIndexPrintP", {}, "Position of the button: print preview")
      .Get<&CDefaultButtons::cmdIndexPrint>(u"cmdIndexPrint", {}, "Position of the button: print")
      .Get<&CDefaultButtons::cmdIndexExcel>(u"cmdIndexExcel", {}, "Position of the button: go to Excel")
      .Get<&CDefaultButtons::cmdIndexHelp>(u"cmdIndexHelp", {}, "Position of the button: help")
      .Method<&CDefaultButtons::Init>(u"Init", {{u"pwsSeting"}, {u"pCmdBar"}, {u"pBProperties"}},
                                      "Takes the settings sheet, the bar and its list of buttons");
}

CDefaultButtons::CDefaultButtons(ConnectedExcel excel) : excel_(std::move(excel)) {
  std::int32_t number = kFirstCaption;
  for (std::u16string& caption : captions_) caption = HostText(number++);
}

void CDefaultButtons::Init(excel::Worksheet pwsSeting, excel::CommandBar pCmdBar,
                           Ref<CButtonProperties> pBProperties) {
  excel_.Hold();
  sheet_ = std::move(pwsSeting);
  bar_ = std::move(pCmdBar);
  buttons_ = std::move(pBProperties);
}

void CDefaultButtons::AddButtons() {
  if (!buttons_) throw AutomationError(kObjectNotSet);
  // Copies: what a call sets off in Excel may reach Init. The others are asked for when they are first
  // needed.
  const Ref<CButtonProperties> buttons = buttons_;
  const excel::CommandBar bar = Bar();
  excel::CommandBarControls controls;
  std::u16string bar_name;
  std::u16string workbook_name;

  for (std::size_t row = 0; row < kDefaultButtonCount; ++row) {
    const DefaultButton& button = kDefaultButtons[row];
    const std::u16string& caption = captions_[row];
    buttons->Add(1);
    const std::uint8_t number = buttons->TotalButtons();
    ButtonEntry& entry = buttons->Button(number);
    entry.id = button.id;
    entry.face_id = button.face_id;
    entry.caption = caption;
    entry.tag = button.tag;
    // Caption alone, on purpose: the key never shows.
    entry.tooltip_text = caption;
    entry.on_key = button.on_key;
    entry.visible = true;
    entry.begin_group = button.begin_group;

    if (!controls) {
      controls = bar.Controls();
      bar_name = bar.Name();
    }
    const excel::CommandBarControl control = controls.Add(button.type, button.id, bar_name, number);
    const bool is_button = button.type == msoControlButton;
    if (is_button) control.SetSetting(u"FaceId", button.face_id);
    control.SetSetting(u"Caption", caption);
    control.SetSetting(u"Tag", button.tag);
    control.SetSetting(u"ToolTipText", caption);
    control.SetSetting(u"Visible", true);
    control.SetSetting(u"BeginGroup", button.begin_group);
    if (!is_button) {
      control.SetSetting(u"Width", kComboBoxWidth);
      continue;
    }
    std::u16string macro;
    if (!button.on_action.empty()) {
      if (workbook_name.empty()) workbook_name = sheet_.Parent().Name();
      macro = MacroOf(workbook_name, button.on_action);
    }
    control.SetSetting(u"OnAction", std::move(macro));
  }

  const excel::Application application = excel_.Application();
  buttons->Button(buttons->TotalButtons()).on_action = MacroOf(application.ThisWorkbook().Name(), kHelpMacro);
}

std::int32_t CDefaultButtons::IndexOf(std::u16string_view property, Value value) const {
  const excel::CommandBarControl control = Bar().FindControl(property, std::move(value));
  return control ? control.Index() : 0;
}

}  // namespace qva
