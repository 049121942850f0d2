// The report toolbars of the library.
#pragma once

#include <cstdint>
#include <vector>

#include "excelui/CToolbar.h"
#include "platform/member_table.h"

namespace qva {

/// The set of report toolbars, numbered by the set itself, and the go-to-application command on Excel's
/// worksheet menu bar. Both go with the object: the toolbars first. All stand in the Excel of the connection
/// that the set was made for. Raises whatever Excel raises, unless a member says otherwise.
class CToolbars : public Described<CToolbars> {
 public:
  static ClassBuilder Describe();
  CToolbars() = default;
  explicit CToolbars(ConnectedExcel excel) : excel_(std::move(excel)) {}
  ~CToolbars() override;

  /// Builds a toolbar from a settings sheet. Result: its id, or 0 when the sheet describes none. An id is
  /// never used again, and after 255 comes 6 (Overflow), on purpose; the toolbar stays in the set, without an
  /// id.
  std::uint8_t CreateToolbar(excel::Worksheet oSheet);
  /// The toolbar of an id; Nothing when there is none.
  Ref<CToolbar> Item(std::uint8_t ToolbarID);
  std::int32_t Count() const { return static_cast<std::int32_t>(toolbars_.size()); }
  /// Drops the toolbar of an id, if there is one.
  void DeleteToolbar(std::uint8_t ToolbarID);
  /// Refreshes the toolbar at the shared position, if it is shown, as often as there are toolbars. On purpose
  /// it visits no other one: which it is, Item and DeleteToolbar decide. Raises 5 (Invalid procedure call)
  /// when there are toolbars and none at that position, and 6 (Overflow) with more than 254 toolbars.
  void Refresh();

  /// Adds the command, which runs a macro, or changes it where it is there already. The menu bar cannot be
  /// customised afterwards. A failure leaves no new command behind and that protection on; a command that was
  /// there may be changed in part.
  void cmdGoToAppShow(std::u16string sMacros);
  /// Removes the command, if it is there. The menu bar stays without protection afterwards, on purpose.
  void cmdGoToAppDelete();
  /// The caption of the command, a host message. Raises what the resource object raises.
  std::u16string cmdGoToAppCaption() const;

 private:
  ConnectedExcel excel_;
  std::vector<Ref<CToolbar>> toolbars_;
  /// The position from 1 of the toolbar that was last looked for, 0 when there was none.
  std::int16_t position_ = 0;
  std::uint8_t last_id_ = 0;
};

}  // namespace qva
