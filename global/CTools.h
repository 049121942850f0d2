// Workbook tools: small operations on Excel.
#pragma once

#include <string>

#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Finds and opens workbooks, freezes the screen, protects sheets, cleans texts for file names. Before Init
/// there is no application: the members that need one raise 91, those that ignore errors do nothing. Unless
/// said otherwise Excel's errors pass on to the caller.
class CTools : public Described<CTools> {
 public:
  static ClassBuilder Describe();

  /// Takes the application to work on; Nothing means the library's own (Globals::application).
  void Init(excel::Application p_objExcelApp);

  /// Whether a workbook of that file name is open, in any letter case. `sFile` gains ".xls" (CheckFileName).
  bool BookIsOpen(std::u16string& sFile);

  /// Adds ".xls" to a name that does not end in it, in any letter case.
  void CheckFileName(std::u16string& FileName);

  /// The open workbook of that file name, otherwise the one that opening the file gives. `sPath` must end in
  /// a separator; `sFile` need not end in ".xls". Never raises; Nothing when the file cannot be opened. An
  /// Excel that does not tell what is open is not asked to open anything, which might lose changes.
  excel::Workbook OpenBook(std::u16string sPath, std::u16string sFile);

  /// True freezes the screen and shows the wait cursor; false thaws it and gives the cursor and the status
  /// bar back to Excel. Only the first lock of an instance takes effect, on purpose: afterwards every unlock
  /// restores the screen, whoever froze it, and no later lock can leave it frozen. An unlock before the first
  /// lock does nothing. A lock that raises counts as none, though the screen may be frozen already; locking
  /// again makes up for it.
  void LockScreen(bool pLock);

  /// Protects a sheet of the active workbook for the user, macros still may change it; or takes the
  /// protection off. Never raises: a missing sheet or a wrong password leaves things as they were.
  void SheetLock(bool Status, std::u16string sPassword, std::u16string sWhatSheet);

  /// The text with each of \ / ? * [ ] . : replaced by `ToChar`, which may be any text; "_" when omitted.
  std::u16string ConvertStr2Str(std::u16string sString, std::u16string ToChar);

  /// Whether the folder `Path` holds a file of the name `File`, in which "*" and "?" stand for any
  /// characters. Excel's own search decides where there is one, otherwise the platform's.
  bool FileExist(std::u16string Path, std::u16string File);

 private:
  excel::Application application_;
  bool is_screen_locked_ = false;  ///< set by the first lock and never cleared
};

}  // namespace qva
