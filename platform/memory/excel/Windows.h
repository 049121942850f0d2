#pragma once

#include <memory>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// Workbook.Windows: each workbook has one window. Made anew when it is asked for.
class Windows : public Described<Windows> {
 public:
  Windows(std::shared_ptr<ApplicationData> application, std::shared_ptr<WorkbookData> workbook)
      : application_(std::move(application)), workbook_(std::move(workbook)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position 1, or by caption in any letter case. Raises 9.
  ObjectPtr Item(const Value& index);

  std::shared_ptr<ApplicationData> application_;
  std::shared_ptr<WorkbookData> workbook_;
};

}  // namespace qva::memory
