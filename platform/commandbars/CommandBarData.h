// What command bars and their controls are, below the automation objects. The in-memory Excel has them, and
// so has LibreOffice, where they are shown by its own toolbars and menus.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/excel_constants.h"
#include "platform/object.h"

namespace qva::commandbars {

struct CommandBarData;

/// A button or box of a command bar.
struct CommandBarControlData {
  Object* automation = nullptr;  ///< the CommandBarControl that is alive, not owned
  std::weak_ptr<CommandBarData> bar;
  bool is_deleted = false;

  std::int32_t instance_id = 0;  ///< a number that no other control or bar ever has
  std::int32_t type = msoControlButton;
  std::int32_t id = 1;  ///< one of Excel's own controls; 1: an empty one
  bool temporary = false;

  std::u16string caption;
  std::u16string parameter;  ///< a text that macros may keep with the control
  std::u16string tag;        ///< another one
  std::u16string tooltip;    ///< empty: the caption
  std::u16string on_action;  ///< the macro that it runs; empty: what Excel's own control does
  bool visible = true;
  bool enabled = true;
  bool begin_group = false;
  std::int32_t width = 23;  ///< pixels

  // Of buttons alone.
  std::int32_t style = msoButtonAutomatic;
  std::int32_t state = msoButtonUp;
  std::int32_t face_id = 0;
  std::u16string
      pasted_face;  ///< the picture that is the face (clipboard_picture); empty: the face of the id
};

/// A toolbar or menu bar.
struct CommandBarData {
  Object* automation = nullptr;  ///< the CommandBar that is alive, not owned
  std::int32_t instance_id = 0;  ///< as a control's
  std::u16string name;
  bool built_in = false;  ///< Excel's own, which cannot be deleted
  bool is_menu_bar = false;
  bool temporary = false;
  bool visible = false;  ///< what it is while enabled
  bool enabled = true;
  std::int32_t position = msoBarTop;
  std::int32_t protection = msoBarNoProtection;
  bool is_deleted = false;
  std::vector<std::shared_ptr<CommandBarControlData>> controls;
};

/// Excel's built-in bars, as far as anything asks for them, each with its first control.
std::vector<std::shared_ptr<CommandBarData>> BuiltInBars();

/// The application whose bars they are.
struct CommandBarApplication {
  CommandBarApplication() = default;
  CommandBarApplication(const CommandBarApplication&) = delete;
  CommandBarApplication& operator=(const CommandBarApplication&) = delete;
  virtual ~CommandBarApplication() = default;

  std::vector<std::shared_ptr<CommandBarData>> command_bars = BuiltInBars();
  std::u16string clipboard_picture;  ///< name of the picture on the clipboard; empty: there is none

  /// Runs a macro that a key or a control is bound to. Raises 1004 when the application knows of no macro of
  /// that name, and what the macro raises where the application does not show it itself.
  virtual void RunMacro(const std::u16string& name) = 0;
  /// Is told of whatever changed about the bars and their controls, for whoever shows them. Does not raise.
  virtual void CommandBarsChanged() {}
};

inline void Changed(CommandBarApplication& application) {
  application.CommandBarsChanged();
}

/// A new bar without controls that belongs to no application yet.
std::shared_ptr<CommandBarData> NewCommandBar(std::u16string name);

/// Drops the temporary bars and controls, as the end of Excel does. Their objects are gone from now on.
void DropTemporaryBars(CommandBarApplication& application);

/// Puts a new control on a bar, in front of position `before` from 0. One of Excel's own brings its caption
/// and face. Raises 5 (Invalid procedure call) when Excel has no control of that id and type.
std::shared_ptr<CommandBarControlData> AddControl(const std::shared_ptr<CommandBarData>& bar,
                                                  std::size_t before, std::int32_t type, std::int32_t id);

/// Raises kObjectGone when the bar was deleted.
void RequireAlive(const CommandBarData& bar);
/// Raises kObjectGone when the control or its bar was deleted.
void RequireAlive(const CommandBarControlData& control);

/// How command bars refuse an argument.
AutomationError InvalidOfficeCall();
/// How they refuse to do something (hexadecimal 80004005, E_FAIL): "Method 'Delete' of object 'CommandBar'
/// failed".
AutomationError OfficeRefusal(std::u16string_view member, std::u16string_view object);

}  // namespace qva::commandbars
