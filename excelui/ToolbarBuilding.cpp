// How a toolbar reads its settings sheet and builds its bar.
#include "excelui/CToolbar.h"
#include "global/Globals.h"

namespace qva {
namespace {

/// Buttons of a settings sheet at most: they are counted in 8 bits, and counting ends one beyond the last.
constexpr std::uint8_t kMostButtons = 254;

/// A column of the settings sheet: the name of its header and the field that its cells are for.
struct Column {
  std::u16string_view header;
  std::int32_t ButtonEntry::*number = nullptr;
  std::u16string ButtonEntry::*text = nullptr;
  bool ButtonEntry::*flag = nullptr;
};

constexpr Column kColumns[] = {
    {.header = u"Button_ID", .number = &ButtonEntry::id},
    {.header = u"Button_FaceID", .number = &ButtonEntry::face_id},
    {.header = u"Button_Captions", .text = &ButtonEntry::caption},
    {.header = u"Button_Pictures", .text = &ButtonEntry::picture},
    {.header = u"Button_Tag", .text = &ButtonEntry::tag},
    {.header = u"Button_TooltipText", .text = &ButtonEntry::tooltip_text},
    {.header = u"Button_OnKey", .text = &ButtonEntry::on_key},
    {.header = u"Button_Visible", .flag = &ButtonEntry::visible},
    {.header = u"Button_BeginGroup", .flag = &ButtonEntry::begin_group},
    {.header = u"Button_OnAction", .text = &ButtonEntry::on_action},
};

/// Reads the cells below a header into the buttons 1 to `count`, header and cells as one block.
void ReadColumn(const excel::Worksheet& sheet, const Column& column, std::uint8_t count,
                CButtonProperties& buttons) {
  const excel::Range header = sheet.Range(column.header);
  // What stands below a header of several cells would be a block itself, which is no value of a button.
  if (header.Count() != 1) throw AutomationError(kTypeMismatch);
  const Value block = header.Resize(count + 1).Value();
  const std::vector<Value>& cells = block.ToArray().elements;
  if (cells.size() != count + 1u) throw AutomationError(kTypeMismatch);
  for (std::uint8_t i = 1; i <= count; ++i) {
    ButtonEntry& button = buttons.Button(i);
    if (column.number) {
      button.*column.number = cells[i].ToInt32();
    } else if (column.flag) {
      button.*column.flag = cells[i].ToBoolean();
    } else {
      button.*column.text = cells[i].ToText();
    }
  }
}

}  // namespace

void CToolbar::Init(excel::Workbook wb_Setings, excel::Worksheet ws_Setings) {
  workbook_ = std::move(wb_Setings);
  sheet_ = std::move(ws_Setings);
  buttons_ = MakeRef<CButtonProperties>();
  const auto events = MakeRef<CCommandsEvent>();
  cmd_event_ = events;
  id_ = 0;
  if (!ReadSettings()) return;
  id_ = Value(FindBar()).ToInt16();
  if (id_ == 0) {
    CreateBar();
    events->Init(bar_, default_buttons_);
  } else if (!default_buttons_) {
    AddDefaultButtons();
  }
}

bool CToolbar::ReadSettings() {
  return IgnoreErrors([&] {
    // Copies: the formulas of the cells may run macros.
    const excel::Worksheet sheet = sheet_;
    const Ref<CButtonProperties> buttons = buttons_;
    button_count_ = sheet.Range(u"nTotalButtons").Value().ToByte();
    buttons->Add(button_count_);
    if (button_count_ > kMostButtons) throw AutomationError(kOverflow);
    const std::u16string workbook_name = workbook_.Name();
    if (button_count_ > 0) {
      for (const Column& column : kColumns) ReadColumn(sheet, column, button_count_, *buttons);
    }
    for (std::uint8_t i = 1; i <= button_count_; ++i) {
      std::u16string& macro = buttons->Button(i).on_action;
      if (!macro.empty()) macro.insert(0, workbook_name + u"!");
    }
    caption_ = sheet.Range(u"sToolBarCaption").Value().ToText() + u"(" + workbook_name + u")";
    is_menu_bar_ = sheet.Range(u"bMenuBar").Value().ToBoolean();
  });
}

void CToolbar::CreateBar() {
  const excel::Application application = TheGlobals().application;
  // Held from here on, so that a failure leaves no bar behind.
  bar_ = application.CommandBars().Add(caption_, is_menu_bar_);
  bar_.SetVisible(false);
  bar_ = application.CommandBars(caption_);
  bar_.SetPosition(msoBarFloating);
  AddControls();
}

void CToolbar::AddControls() {
  // Each statement that Excel refuses is skipped. What several of them need is held once Excel has given it,
  // and asked for again by the next statement when it has not.
  const excel::CommandBar bar = bar_;
  const Ref<CButtonProperties> buttons = buttons_;
  excel::CommandBarControls controls;
  std::u16string bar_name;
  for (std::uint8_t i = 1; i <= button_count_; ++i) {
    IgnoreErrors([&] {
      if (!controls) controls = bar.Controls();
      if (bar_name.empty()) bar_name = bar.Name();
      controls.Add(msoControlButton, buttons->Button(i).id, bar_name, i);
    });
  }

  for (std::uint8_t i = 1; i <= button_count_; ++i) {
    const ButtonEntry button = buttons->Button(i);
    excel::CommandBarControl control;
    const auto held_control = [&]() -> const excel::CommandBarControl& {
      if (!control) control = bar.Controls(std::int32_t{i});
      return control;
    };
    const auto set = [&](std::u16string_view property, Value value) {
      IgnoreErrors([&] { held_control().SetSetting(property, std::move(value)); });
    };
    set(u"Style", std::int32_t{msoButtonIcon});
    if (button.face_id != 0) {
      set(u"FaceId", button.face_id);
    } else {
      // Without that shape the button gets what is on the clipboard: pasting is a statement of its own.
      IgnoreErrors([&] { sheet_.Shapes(button.picture).Copy(); });
      IgnoreErrors([&] { held_control().PasteFace(); });
    }
    set(u"Caption", button.caption);
    set(u"ToolTipText", button.tooltip_text);
    set(u"Tag", button.tag);
    set(u"Visible", button.visible);
    set(u"BeginGroup", button.begin_group);
    set(u"OnAction", button.on_action);
  }

  IgnoreErrors([&] { AddDefaultButtons(); });
}

void CToolbar::AddDefaultButtons() {
  default_buttons_ = MakeRef<CDefaultButtons>();
  const Ref<CDefaultButtons> added = default_buttons_;
  added->Init(sheet_, bar_, buttons_);
  added->AddButtons();
}

}  // namespace qva
