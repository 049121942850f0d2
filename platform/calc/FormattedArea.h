// The cells of a sheet that have a format of their own.
#pragma once

#include <optional>

#include "platform/object.h"

namespace qva::calc {

/// Rows and columns from 1, both included.
struct CellArea {
  std::int32_t first_row = 0;
  std::int32_t first_column = 0;
  std::int32_t last_row = 0;
  std::int32_t last_column = 0;
};

/// The area around all formatted cells of the sheet that a LibreOffice cell range stands on; nothing when
/// there are none. Formats of whole rows and columns do not count. Raises 13 for anything but a cell range.
std::optional<CellArea> FormattedArea(const ObjectPtr& cell_range);

}  // namespace qva::calc
