#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// Names of a workbook (its own and all its sheets') or of one sheet, sorted by their text without the sheet.
/// Made anew when it is asked for.
class Names : public Described<Names> {
 public:
  /// `sheet` is null for a workbook's names.
  Names(std::shared_ptr<ApplicationData> application, std::shared_ptr<WorkbookData> workbook,
        std::shared_ptr<SheetData> sheet)
      : application_(std::move(application)), workbook_(std::move(workbook)), sheet_(std::move(sheet)) {}
  static ClassBuilder Describe();

 private:
  std::vector<std::shared_ptr<NameData>> All() const;
  std::int32_t Count();
  /// By position from 1, or by text in any letter case, also "Sheet1!Name". Raises 1004 when there is none.
  ObjectPtr Item(const Value& index);
  /// Defines a name, in place of an older one of the same scope. "Sheet1!Name" makes it the sheet's own.
  /// Raises 1004 for a text that is no name, or a formula that cannot be read.
  ObjectPtr Add(const std::u16string& name, const Value& refers_to, bool visible);

  std::shared_ptr<ApplicationData> application_;
  std::shared_ptr<WorkbookData> workbook_;
  std::shared_ptr<SheetData> sheet_;
};

}  // namespace qva::memory
