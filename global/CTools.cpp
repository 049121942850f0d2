#include "global/CTools.h"

namespace qva {

const ClassDescription& CTools::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CTools", "Small operations on workbooks, sheets and file names")
          .Method<&CTools::Init>(u"Init", {{u"p_objExcelApp"}}, "Takes the Excel application to work on")
          .Method<&CTools::BookIsOpen>(u"BookIsOpen", {{u"sFile"}}, "Whether a workbook is open")
          .Method<&CTools::CheckFileName>(u"CheckFileName", {{u"FileName"}}, "Adds .xls where it is missing")
          .Method<&CTools::OpenBook>(u"OpenBook", {{u"sPath"}, {u"sFile"}}, "Finds or opens a workbook")
          .Method<&CTools::LockScreen>(u"LockScreen", {{u"pLock"}}, "Freezes or thaws the screen")
          .Method<&CTools::SheetLock>(u"SheetLock", {{u"Status"}, {u"sPassword"}, {u"sWhatSheet"}},
                                      "Protects a sheet for the user, or takes the protection off")
          .Method<&CTools::ConvertStr2Str>(u"ConvertStr2Str", {{u"sString"}, Optional(u"ToChar")},
                                           "Replaces the characters that a file name cannot hold")
          .Method<&CTools::FileExist>(u"FileExist", {{u"Path"}, {u"File"}}, "Whether a file exists");
  return description;
}

void CTools::Init(excel::Application) {
  throw AutomationError(kUnsupportedAction);
}
bool CTools::BookIsOpen(std::u16string&) {
  throw AutomationError(kUnsupportedAction);
}
void CTools::CheckFileName(std::u16string&) {
  throw AutomationError(kUnsupportedAction);
}
excel::Workbook CTools::OpenBook(std::u16string, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
void CTools::LockScreen(bool) {
  throw AutomationError(kUnsupportedAction);
}
void CTools::SheetLock(bool, std::u16string, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
std::u16string CTools::ConvertStr2Str(std::u16string, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}
bool CTools::FileExist(std::u16string, std::u16string) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
