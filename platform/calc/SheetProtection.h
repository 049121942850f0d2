// Protected sheets as Excel has them: LibreOffice knows no protection from the user alone, and its own
// objects change a protected sheet in part, and in part do nothing.
#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <optional>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// Worksheet.Protect. With UserInterfaceOnly the library's own calls go on changing the sheet, until it is
/// unprotected or its workbook is closed; on a sheet that was protected already, where the password is right.
Value Protect(const ObjectPtr& sheet, const Arguments& arguments);

/// Lets a sheet be changed while this object lives, where Excel would allow it.
class WriteAccess {
 public:
  /// What is to change of the cells.
  enum class Change { Content, Format };

  /// Raises 1004 where Excel would refuse to change the cells of a Range: the sheet is protected from macros,
  /// too, and one of the cells is locked or the change is one of format. A null sheet is that of a closed
  /// workbook, and raises its error.
  WriteAccess(const Reference<css::sheet::XSpreadsheet>& sheet, const ObjectPtr& range, Change change);
  /// Protects the sheet again.
  ~WriteAccess();
  WriteAccess(const WriteAccess&) = delete;
  WriteAccess& operator=(const WriteAccess&) = delete;

 private:
  Reference<css::sheet::XSpreadsheet> sheet_;
  std::optional<OUString> password_;  ///< of a protection that was taken off meanwhile
};

}  // namespace qva::calc
