#pragma once

#include <memory>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// Workbook.Sheets and Workbook.Worksheets, which are the same: there are no sheets of other kinds. Made anew
/// when it is asked for.
class Sheets : public Described<Sheets> {
 public:
  Sheets(std::shared_ptr<ApplicationData> application, std::shared_ptr<WorkbookData> workbook)
      : application_(std::move(application)), workbook_(std::move(workbook)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1, or by name in any letter case. Raises 9.
  ObjectPtr Item(const Value& index);
  /// A new sheet in front of or behind the given one, without either in front of the active one; it becomes
  /// active.
  ObjectPtr Add(const Value& before, const Value& after);

  std::shared_ptr<ApplicationData> application_;
  std::shared_ptr<WorkbookData> workbook_;
};

}  // namespace qva::memory
