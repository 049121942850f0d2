// How a toolbar reads its settings sheet and builds its bar.
#include <array>

#include "excelui/CToolbar.h"
#include "global/Progress.h"

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

constexpr std::u16string_view kBuilding =
    u"Kuriama įrankių juosta";  ///< in the status bar, where it takes long

/// The columns, each as one array: its header and the cells of `count` buttons. Ends at the first one that
/// Excel does not give: it stays Empty, as do those behind it.
std::array<Value, std::size(kColumns)> FetchColumns(const excel::Worksheet& sheet, std::uint8_t count) {
  std::array<Value, std::size(kColumns)> blocks;
  IgnoreErrors([&] {
    for (std::size_t column = 0; column < blocks.size(); ++column) {
      const excel::Range header = sheet.Range(kColumns[column].header);
      // What stands below a header of several cells would be a block itself, which is no value of a button.
      if (header.Count() != 1) return;
      Value block = header.Resize(count + 1).Value();
      if (block.ToArray().elements.size() != count + 1u) return;
      blocks[column] = std::move(block);
    }
  });
  return blocks;
}

/// Stores a cell in the field of its column. Raises what its conversion raises.
void Store(const Column& column, const Value& cell, ButtonEntry& button) {
  if (column.number) {
    button.*column.number = cell.ToInt32();
  } else if (column.flag) {
    button.*column.flag = cell.ToBoolean();
  } else {
    button.*column.text = cell.ToText();
  }
}

}  // namespace

void CToolbar::Init(excel::Workbook wb_Setings, excel::Worksheet ws_Setings) {
  excel_.Hold();
  workbook_ = std::move(wb_Setings);
  sheet_ = std::move(ws_Setings);
  buttons_ = MakeRef<CButtonProperties>();
  const auto events = MakeRef<CCommandsEvent>(excel_);
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
    // Excel is asked a column at a time, the buttons are read one after the other: those in front of what is
    // missing or wrong are complete, and the toolbar gives their keys back to Excel when it goes.
    std::u16string workbook_name;
    const bool has_name = IgnoreErrors([&] { workbook_name = workbook_.Name(); });
    const auto require_name = [&] {
      if (!has_name) throw AutomationError(kAutomationFailed);
    };
    std::array<Value, std::size(kColumns)> columns;
    if (button_count_ > 0) columns = FetchColumns(sheet, button_count_);
    for (std::size_t i = 1; i <= button_count_; ++i) {
      ButtonEntry& button = buttons->Button(static_cast<std::uint8_t>(i));
      for (std::size_t column = 0; column < columns.size(); ++column) {
        // A column that is missing is no array, and raises.
        Store(kColumns[column], columns[column].ToArray().elements[i], button);
      }
      if (button.on_action.empty()) continue;
      require_name();
      button.on_action.insert(0, workbook_name + u"!");
    }
    if (button_count_ > kMostButtons) throw AutomationError(kOverflow);
    require_name();
    caption_ = sheet.Range(u"sToolBarCaption").Value().ToText() + u"(" + workbook_name + u")";
    is_menu_bar_ = sheet.Range(u"bMenuBar").Value().ToBoolean();
  });
}

void CToolbar::CreateBar() {
  const excel::Application application = excel_.Application();
  // Held from here on, so that a failure leaves no bar behind.
  bar_ = application.CommandBars().Add(caption_, is_menu_bar_);
  try {
    bar_.SetVisible(false);
    bar_ = application.CommandBars(caption_);
    bar_.SetPosition(msoBarFloating);
    AddControls();
  } catch (...) {
    // Another Init would take what there is of it for a whole bar.
    if (IgnoreFailures([&] { bar_.Delete(); })) bar_ = {};
    throw;
  }
}

void CToolbar::AddControls() {
  // Each statement that Excel refuses is skipped. What several of them need is held once Excel has given it,
  // and asked for again by the next statement when it has not.
  const excel::CommandBar bar = Bar();
  const Ref<CButtonProperties> buttons = buttons_;
  excel::CommandBarControls controls;
  std::u16string bar_name;
  Progress progress;
  for (std::uint8_t i = 1; i <= button_count_; ++i) {
    progress.Say(kBuilding);
    IgnoreErrors([&] {
      if (!controls) controls = bar.Controls();
      if (bar_name.empty()) bar_name = bar.Name();
      controls.Add(msoControlButton, buttons->Button(i).id, bar_name, i);
    });
  }

  for (std::uint8_t i = 1; i <= button_count_; ++i) {
    progress.Say(kBuilding, i - 1, button_count_);
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
  default_buttons_ = MakeRef<CDefaultButtons>(excel_);
  const Ref<CDefaultButtons> added = default_buttons_;
  added->Init(sheet_, bar_, buttons_);
  added->AddButtons();
}

}  // namespace qva
