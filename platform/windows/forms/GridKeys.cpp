#include "platform/windows/forms/GridKeys.h"

#include <algorithm>

namespace qva::windows {

std::optional<GridCell> KeyTarget(UINT key, bool control, bool shift, GridCell from,
                                  const GridExtent& extent) {
  if (extent.lines == 0 || extent.columns == 0) return std::nullopt;
  const GridCell last{extent.lines - 1, extent.columns - 1};
  GridCell to = from;
  switch (key) {
    case VK_LEFT:
      to.column -= to.column > 0 ? 1 : 0;
      break;
    case VK_RIGHT:
      to.column = std::min(to.column + 1, last.column);
      break;
    case VK_UP:
      to.line -= to.line > 0 ? 1 : 0;
      break;
    case VK_DOWN:
      to.line = std::min(to.line + 1, last.line);
      break;
    case VK_PRIOR:
      if (control) return std::nullopt;
      to.line -= std::min(to.line, extent.page);
      break;
    case VK_NEXT:
      if (control) return std::nullopt;
      to.line = std::min(to.line + extent.page, last.line);
      break;
    case VK_HOME:
      to = {control ? 0 : to.line, 0};
      break;
    case VK_END:
      to = {control ? last.line : to.line, last.column};
      break;
    case VK_TAB: {
      const std::size_t number = from.line * extent.columns + from.column;
      if (control || (shift ? number == 0 : from == last)) return std::nullopt;
      const std::size_t next = shift ? number - 1 : number + 1;
      to = {next / extent.columns, next % extent.columns};
      break;
    }
    default:
      return std::nullopt;
  }
  return to;
}

}  // namespace qva::windows
