#pragma once

#include <memory>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// Worksheet.Shapes. Made anew when it is asked for. Every member raises kObjectGone once the workbook was
/// closed.
class Shapes : public Described<Shapes> {
 public:
  Shapes(std::shared_ptr<ApplicationData> application, std::shared_ptr<SheetData> sheet)
      : application_(std::move(application)), sheet_(std::move(sheet)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1, or by name in any letter case. Raises the automation error 80070057 when there is
  /// none.
  ObjectPtr Item(const Value& index);
  /// A new shape "Rectangle <n>", whatever its form; form and place are not modelled.
  ObjectPtr AddShape(const Value& type, const Value& left, const Value& top, const Value& width,
                     const Value& height);

  std::shared_ptr<ApplicationData> application_;
  std::shared_ptr<SheetData> sheet_;
};

}  // namespace qva::memory
