// Workbook tools: small operations on Excel.
#pragma once

#include <string>

#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Finds and opens workbooks, freezes the screen, protects sheets, cleans texts for file names. Not built
/// yet: each member raises 445 (Object doesn't support this action).
class CTools : public Described<CTools> {
 public:
  static const ClassDescription& Description();

  void Init(excel::Application p_objExcelApp);
  bool BookIsOpen(std::u16string& sFile);
  void CheckFileName(std::u16string& FileName);
  excel::Workbook OpenBook(std::u16string sPath, std::u16string sFile);
  void LockScreen(bool pLock);
  void SheetLock(bool Status, std::u16string sPassword, std::u16string sWhatSheet);
  std::u16string ConvertStr2Str(std::u16string sString, std::u16string ToChar);
  bool FileExist(std::u16string Path, std::u16string File);
};

}  // namespace qva
