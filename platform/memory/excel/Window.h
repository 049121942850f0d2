#pragma once

#include <string>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// Window: the one window of a workbook. Its plain properties are the fields of WindowData.
class Window : public ModelObject<Window, WindowData> {
 public:
  using ModelObject::ModelObject;
  static ClassBuilder Describe();

 private:
  /// The workbook's name unless a text was set; setting Empty gives that back.
  std::u16string Caption();
  void SetCaption(const Value& caption);
  /// 10 to 400 percent; anything else raises 1004.
  std::int32_t Zoom();
  void SetZoom(std::int32_t percent);
  /// The row and column that stand top left, inside the grid; anything else raises 1004.
  std::int32_t ScrollRow();
  void SetScrollRow(std::int32_t row);
  std::int32_t ScrollColumn();
  void SetScrollColumn(std::int32_t column);
};

}  // namespace qva::memory
