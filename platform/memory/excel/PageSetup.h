#pragma once

#include <memory>
#include <string>

#include "platform/member_table.h"
#include "platform/memory/excel/WorkbookData.h"

namespace qva::memory {

/// The address of the cells that the sheet's own name "Print_Area" refers to; empty when there is no such
/// name or it refers to none.
std::u16string PrintAreaOf(const std::shared_ptr<SheetData>& sheet);

/// Worksheet.PageSetup. Made anew when it is asked for.
class PageSetup : public Described<PageSetup> {
 public:
  explicit PageSetup(std::shared_ptr<SheetData> sheet) : sheet_(std::move(sheet)) {}
  static ClassBuilder Describe();

 private:
  /// As PrintAreaOf. Setting it defines the name, the empty text deletes it; a text that means no cells of
  /// the sheet raises 1004.
  std::u16string PrintArea();
  void SetPrintArea(const std::u16string& address);
  bool PrintGridlines();
  void SetPrintGridlines(bool on);

  std::shared_ptr<SheetData> sheet_;
};

}  // namespace qva::memory
