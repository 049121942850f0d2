// The report toolbars of the library.
#pragma once

#include <cstdint>
#include <vector>

#include "excelui/CToolbar.h"
#include "platform/member_table.h"

namespace qva {

/// The set of report toolbars, numbered by the set itself. So far the set stays empty: the members that
/// create, delete and refresh toolbars, and those that add and remove the go-to-application command, are not
/// built yet and raise 445 (Object doesn't support this action).
class CToolbars : public Described<CToolbars> {
 public:
  static const ClassDescription& Description();

  std::uint8_t CreateToolbar(excel::Worksheet oSheet);
  /// The toolbar of an id; Nothing when there is none.
  Ref<CToolbar> Item(std::uint8_t ToolbarID) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(toolbars_.size()); }
  void DeleteToolbar(std::uint8_t ToolbarID);
  void Refresh();
  void cmdGoToAppShow(std::u16string sMacros);
  void cmdGoToAppDelete();
  /// The caption of the go-to-application command, a host message. Raises what the resource object raises.
  std::u16string cmdGoToAppCaption() const;

 private:
  struct Entry {
    std::uint8_t id;
    Ref<CToolbar> toolbar;
  };
  std::vector<Entry> toolbars_;
};

}  // namespace qva
