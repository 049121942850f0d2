// What is looked at before a member of LibreOffice's model is used, and set right afterwards.
#pragma once

#include <optional>
#include <string_view>

#include "platform/calc/SheetProtection.h"

namespace qva::calc {

class UnoObject;

/// Stands around the use of a member. On its way in it raises the error of a closed workbook
/// (800401A8 hexadecimal) for ranges, sheets and workbooks on which LibreOffice would crash or do nothing,
/// brings the cells back into a window that shows the preview where the member needs them, and raises 1004
/// for what LibreOffice would crash on in a window without cells, and for changes that a sheet's protection
/// forbids.
class CallGuard {
 public:
  CallGuard(UnoObject& object, Access access, std::u16string_view member);

 private:
  std::optional<WriteAccess> write_access_;
};

}  // namespace qva::calc
