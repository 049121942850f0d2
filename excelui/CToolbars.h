// The report toolbars of the library.
#pragma once

#include <cstdint>
#include <vector>

#include "excelui/CToolbar.h"
#include "platform/member_table.h"

namespace qva {

/// The set of report toolbars, numbered by the set itself. So far toolbars cannot be created: the set stays
/// empty and CreateToolbar raises 445 (Object doesn't support this action).
class CToolbars : public Described<CToolbars> {
 public:
  static const ClassDescription& Description();

  std::uint8_t CreateToolbar(ObjectPtr oSheet);
  /// The toolbar of an id; Nothing when there is none.
  Ref<CToolbar> Item(std::uint8_t ToolbarID) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(toolbars_.size()); }

 private:
  struct Entry {
    std::uint8_t id;
    Ref<CToolbar> toolbar;
  };
  std::vector<Entry> toolbars_;
};

}  // namespace qva
