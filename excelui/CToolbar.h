// One report toolbar.
#pragma once

#include <cstdint>
#include <string>

#include "excelui/CCommandsEvent.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// A toolbar made from a workbook's settings sheet. So far it holds its command events and its id in the
/// collection; all other members are not built yet and raise 445 (Object doesn't support this action).
class CToolbar : public Described<CToolbar> {
 public:
  static const ClassDescription& Description();

  /// The object that carries out the commands of the default buttons; Nothing until one is set.
  Ref<CCommandsEvent> CmdEvent() const { return cmd_event_; }
  void SetCmdEvent(Ref<CCommandsEvent> events) { cmd_event_ = std::move(events); }

  std::int32_t iComment();
  std::int32_t iFreeze();
  std::int32_t iPrintP();
  std::int32_t iPrint();
  std::int32_t iExcel();
  std::int32_t iHelp();
  std::uint8_t VisibleButton(std::uint8_t Index, bool Visible);
  std::uint8_t EnabledButton(std::uint8_t Index, bool Enabled);
  std::uint8_t ButtonFaceID(std::uint8_t Index, std::int32_t ID);
  std::uint8_t ButtonFace(std::uint8_t Index, ObjectPtr Picture);
  std::uint8_t PositinTop();
  void Refresh();
  std::uint8_t ButtonToolTipText(std::uint8_t Index, std::u16string sText);
  void SetVisibleToolbar(bool value);
  bool VisibleToolbar();
  std::u16string Caption() const;
  void SetCaption(std::u16string value);
  std::uint8_t SetAction(std::uint8_t nButton, std::u16string& sRunMacros);
  std::uint8_t SetHotKey(std::uint8_t nButton, std::u16string sOnKey);
  std::int32_t ToolbarID() const;
  std::uint8_t TotalButtons() const;
  void Init(excel::Workbook wb_Setings, excel::Worksheet ws_Setings);

  /// The id that the collection gave the toolbar. Raises 6 (Overflow) when it does not fit.
  std::uint8_t IDCollection() const { return Value(id_).ToByte(); }
  void SetIDCollection(std::uint8_t value) { id_ = value; }

 private:
  Ref<CCommandsEvent> cmd_event_;
  std::int16_t id_ = 0;
};

}  // namespace qva
