// One report toolbar.
#pragma once

#include <cstdint>
#include <string>

#include "excelui/CCommandsEvent.h"
#include "excelui/ConnectedExcel.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// A toolbar made from a workbook's settings sheet: one temporary bar of Excel, its buttons and their hot
/// keys. All of that goes with the object. Bars and keys are those of the connection that it was made for, or
/// of the one at Init, whoever connects later.
///
/// The sheet has these named cells: "nTotalButtons" (0 to 254), "sToolBarCaption", "bMenuBar" and, where
/// there are buttons, the headers "Button_ID", "Button_FaceID", "Button_Captions", "Button_Pictures",
/// "Button_Tag", "Button_TooltipText", "Button_OnKey", "Button_Visible", "Button_BeginGroup" and
/// "Button_OnAction"; what stands i rows below a header belongs to button i.
///
/// An operation with a byte result looks for the bar by its caption first, gives 1 when Excel has no such bar
/// (any more) and 0 when it is done. Before Init has read the settings there is none; where Excel has a bar
/// with an empty name, 91 is raised instead. Buttons are numbered from 1. What Excel raises is raised, unless
/// a member says otherwise.
class CToolbar : public Described<CToolbar> {
 public:
  static ClassBuilder Describe();
  CToolbar() = default;
  explicit CToolbar(ConnectedExcel excel) : excel_(std::move(excel)) {}
  /// Deletes the bar, gives all hot keys back and empties the list of buttons. Ignores what Excel raises,
  /// call by call.
  ~CToolbar() override;

  /// The object that carries out the commands of the default buttons; Nothing until Init or until one is set.
  Ref<CCommandsEvent> CmdEvent() const { return cmd_event_; }
  void SetCmdEvent(Ref<CCommandsEvent> events) { cmd_event_ = std::move(events); }

  // Positions of default buttons on the bar, as CDefaultButtons gives them. Raise 91 (Object variable not
  // set) before the bar was built.
  std::int32_t iComment() { return DefaultButtons()->cmdIndexComment(); }
  std::int32_t iFreeze() { return DefaultButtons()->cmdIndexFreeze(); }
  std::int32_t iPrintP() { return DefaultButtons()->cmdIndexPrintP(); }
  std::int32_t iPrint() { return DefaultButtons()->cmdIndexPrint(); }
  std::int32_t iExcel() { return DefaultButtons()->cmdIndexExcel(); }
  std::int32_t iHelp() { return DefaultButtons()->cmdIndexHelp(); }

  /// Shows or hides a button. The key of a hidden one does nothing.
  std::uint8_t VisibleButton(std::uint8_t Index, bool Visible);
  /// Always fails where the bar exists, on purpose: it sets the member "EnabledButton", which Excel's
  /// controls do not have, and the macros rely on the error.
  std::uint8_t EnabledButton(std::uint8_t Index, bool Enabled);
  std::uint8_t ButtonFaceID(std::uint8_t Index, std::int32_t ID);
  /// Copies the picture and pastes it onto the button.
  std::uint8_t ButtonFace(std::uint8_t Index, ObjectPtr Picture);
  /// Moves the bar to the top of the window; 1 when there is none. Does not look for it.
  std::uint8_t PositinTop();
  /// Binds the keys of all buttons while the bar is shown, and gives them back to Excel while it is not. A
  /// key that Excel refuses is skipped by the former and raised by the latter.
  void Refresh();
  std::uint8_t ButtonToolTipText(std::uint8_t Index, std::u16string sText);
  /// Both end with a Refresh. Without a bar there is nothing to show, and it is not visible.
  void SetVisibleToolbar(bool value);
  bool VisibleToolbar();
  /// The name of Excel's bar.
  std::u16string Caption() const;
  /// Ignores what Excel raises. The toolbar goes on looking for its bar by the old name, on purpose.
  void SetCaption(std::u16string value);
  /// Lets a button run a macro of the settings workbook, whose name the variable then has in front. The empty
  /// text changes nothing.
  std::uint8_t SetAction(std::uint8_t nButton, std::u16string& sRunMacros);
  /// Gives a button another key. Result: 0 when it now runs the button's macro, otherwise 1. The key before
  /// stays bound.
  std::uint8_t SetHotKey(std::uint8_t nButton, std::u16string sOnKey);
  /// Excel's index of the bar, 0 without one.
  std::int32_t ToolbarID() const;
  /// Controls on the bar, 0 without one. Raises 6 (Overflow) above 255.
  std::uint8_t TotalButtons() const;

  /// Reads the settings and builds the bar, hidden. Does nothing more when a setting cannot be read. Where
  /// Excel has a bar of the caption already, that one gets default buttons and is used as it is.
  void Init(excel::Workbook wb_Setings, excel::Worksheet ws_Setings);

  /// The id that the collection gave the toolbar. Raises 6 (Overflow) when it does not fit.
  std::uint8_t IDCollection() const { return Value(id_).ToByte(); }
  void SetIDCollection(std::uint8_t value) { id_ = value; }

 private:
  // Building (ToolbarBuilding.cpp).
  /// False when something could not be read.
  bool ReadSettings();
  void CreateBar();
  void AddControls();
  void AddDefaultButtons();

  /// The bar to call on, which lasts as long as the call: what that sets off in Excel may make the toolbar
  /// look for its bar.
  excel::CommandBar Bar() const { return bar_; }
  /// Looks for the bar and holds it; nothing is held when there is none. Result: its index, otherwise 0.
  /// Raises 91 where a bar goes by the empty name and this toolbar has none.
  std::int32_t FindBar();
  excel::CommandBarControl Control(std::uint8_t button) const;
  /// Sets a property of a button's control; 1 when the bar is gone.
  std::uint8_t SetOnControl(std::uint8_t button, std::u16string_view property, Value value);
  /// Lets the button's key run its macro, or do nothing when the button is hidden or disabled. Result: 0 when
  /// it runs the macro, otherwise 1. Ignores what Excel raises; the two codes of the save key do not depend
  /// on each other.
  std::uint8_t BindHotKey(std::uint8_t button);
  enum class Refusals { Raised, Ignored };
  /// Gives the keys of all buttons their meaning in Excel back, the save key as the button has it and in both
  /// letter cases. The first key that Excel refuses is raised; or such keys are passed over.
  void ReleaseHotKeys(Refusals refusals);
  Ref<CDefaultButtons> DefaultButtons() const;

  ConnectedExcel excel_;
  Ref<CCommandsEvent> cmd_event_;
  excel::Worksheet sheet_;
  excel::Workbook workbook_;
  std::int16_t id_ = 0;
  std::u16string caption_;
  std::uint8_t button_count_ = 0;  ///< of the settings sheet
  bool is_menu_bar_ = false;
  excel::CommandBar bar_;  ///< may be empty
  Ref<CButtonProperties> buttons_;
  Ref<CDefaultButtons> default_buttons_;
};

}  // namespace qva
