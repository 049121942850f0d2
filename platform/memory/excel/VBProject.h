#pragma once

#include <memory>
#include <string>

#include "platform/member_table.h"
#include "platform/memory/excel/WorkbookData.h"

namespace qva::memory {

/// Workbook.VBProject: the macros' project as far as its name. Made anew when it is asked for.
class VBProject : public Described<VBProject> {
 public:
  explicit VBProject(std::shared_ptr<WorkbookData> workbook) : workbook_(std::move(workbook)) {}
  static ClassBuilder Describe();

 private:
  /// Both raise kObjectGone once the workbook was closed.
  std::u16string Name();
  void SetName(const std::u16string& name);

  std::shared_ptr<WorkbookData> workbook_;
};

}  // namespace qva::memory
