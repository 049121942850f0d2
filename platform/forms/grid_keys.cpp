#include "platform/forms/grid_keys.h"

#include <algorithm>

namespace qva {

std::optional<GridCell> KeyTarget(GridKey key, bool control, bool shift, GridCell from,
                                  const GridExtent& extent) {
  if (extent.lines == 0 || extent.columns == 0) return std::nullopt;
  const GridCell last{extent.lines - 1, extent.columns - 1};
  GridCell to = from;
  switch (key) {
    case GridKey::Left:
      to.column -= to.column > 0 ? 1 : 0;
      break;
    case GridKey::Right:
      to.column = std::min(to.column + 1, last.column);
      break;
    case GridKey::Up:
      to.line -= to.line > 0 ? 1 : 0;
      break;
    case GridKey::Down:
      to.line = std::min(to.line + 1, last.line);
      break;
    case GridKey::PageUp:
      if (control) return std::nullopt;
      to.line -= std::min(to.line, extent.page);
      break;
    case GridKey::PageDown:
      if (control) return std::nullopt;
      to.line = std::min(to.line + extent.page, last.line);
      break;
    case GridKey::Home:
      to = {control ? 0 : to.line, 0};
      break;
    case GridKey::End:
      to = {control ? last.line : to.line, last.column};
      break;
    case GridKey::Tab: {
      const std::size_t number = from.line * extent.columns + from.column;
      if (control || (shift ? number == 0 : from == last)) return std::nullopt;
      const std::size_t next = shift ? number - 1 : number + 1;
      to = {next / extent.columns, next % extent.columns};
      break;
    }
  }
  return to;
}

}  // namespace qva
