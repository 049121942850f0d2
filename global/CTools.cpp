#include "global/CTools.h"

#include "global/Globals.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kExtension = u".xls";
constexpr std::u16string_view kNotInFileNames = u"\\/?*[].:";

/// The open workbook of a file name in any letter case; empty when there is none.
excel::Workbook Find(const excel::Workbooks& books, std::u16string_view file) {
  const std::int32_t count = books.Count();
  for (std::int32_t position = 1; position <= count; ++position) {
    excel::Workbook book = books.Item(position);
    if (EqualIgnoringCase(book.Name(), file)) return book;
  }
  return {};
}

/// Excel's search for files; empty in an Excel that has none.
excel::FileSearch FileSearchOf(const excel::Application& application) {
  try {
    return application.FileSearch();
  } catch (const AutomationError& error) {
    if (error.number() != kUnsupportedMember && error.number() != kUnsupportedAction) throw;
    return {};
  }
}

/// Whether a folder has a file, asked of the one file: its folder may be one that cannot be listed. Raises
/// what keeps it from being known.
bool HasFile(const std::u16string& folder, const std::u16string& name) {
  const Files& files = *GetServices().files;
  if (folder.empty() || name.empty() || name.find_first_of(u"*?\\/:") != name.npos) {
    return !files.Find(folder, name).empty();
  }
  const std::u16string path =
      folder + (folder.ends_with(u'\\') || folder.ends_with(u'/') ? u"" : u"\\") + name;
  try {
    files.Length(path);
    return true;
  } catch (const AutomationError& error) {
    const bool is_missing = error.number() == kFileNotFound || error.number() == kPathNotFound ||
                            error.number() == kBadFileNameOrNumber;
    if (is_missing || files.FolderExists(path)) return false;
    throw;
  }
}

}  // namespace

ClassBuilder CTools::Describe() {
  return ClassBuilder(u"CTools", "Small operations on workbooks, sheets and file names")
      .Method<&CTools::Init>(u"Init", {{u"p_objExcelApp"}}, "Takes the Excel application to work on")
      .Method<&CTools::BookIsOpen>(u"BookIsOpen", {{u"sFile"}}, "Whether a workbook is open")
      .Method<&CTools::CheckFileName>(u"CheckFileName", {{u"FileName"}}, "Adds .xls where it is missing")
      .Method<&CTools::OpenBook>(u"OpenBook", {{u"sPath"}, {u"sFile"}}, "Finds or opens a workbook")
      .Method<&CTools::LockScreen>(u"LockScreen", {{u"pLock"}}, "Freezes or thaws the screen")
      .Method<&CTools::SheetLock>(u"SheetLock", {{u"Status"}, {u"sPassword"}, {u"sWhatSheet"}},
                                  "Protects a sheet for the user, or takes the protection off")
      .Method<&CTools::ConvertStr2Str>(u"ConvertStr2Str", {{u"sString"}, Optional(u"ToChar", u"_")},
                                       "Replaces the characters that a file name cannot hold")
      .Method<&CTools::FileExist>(u"FileExist", {{u"Path"}, {u"File"}}, "Whether a file exists");
}

void CTools::Init(excel::Application p_objExcelApp) {
  application_ = p_objExcelApp ? std::move(p_objExcelApp) : TheGlobals().application;
}

bool CTools::BookIsOpen(std::u16string& sFile) {
  CheckFileName(sFile);
  return static_cast<bool>(Find(application_.Workbooks(), sFile));
}

void CTools::CheckFileName(std::u16string& FileName) {
  if (!ToLower(FileName).ends_with(kExtension)) FileName += kExtension;
}

excel::Workbook CTools::OpenBook(std::u16string sPath, std::u16string sFile) {
  CheckFileName(sFile);
  excel::Workbook book;
  IgnoreErrors([&] {
    const excel::Workbooks books = application_.Workbooks();
    if (!IgnoreErrors([&] { book = Find(books, sFile); })) {
      // It may be open: only looked for, as opening a changed workbook again would lose the changes.
      book = books.Item(sFile);
    } else if (!book) {
      book = books.Open(sPath + sFile);
    }
  });
  return book;
}

void CTools::LockScreen(bool pLock) {
  if (pLock && !is_screen_locked_) {
    application_.SetScreenUpdating(false);
    application_.SetCursor(xlWait);
    is_screen_locked_ = true;
  } else if (!pLock && is_screen_locked_) {
    application_.SetScreenUpdating(true);
    application_.SetCursor(xlDefault);
    application_.ResetStatusBar();
  }
}

void CTools::SheetLock(bool Status, std::u16string sPassword, std::u16string sWhatSheet) {
  IgnoreErrors([&] {
    const excel::Worksheet sheet = application_.Sheets().Item(sWhatSheet);
    if (Status) {
      sheet.ProtectFromUser(sPassword);
    } else {
      sheet.Unprotect(sPassword);
    }
  });
}

std::u16string CTools::ConvertStr2Str(std::u16string sString, std::u16string ToChar) {
  std::u16string result;
  for (const char16_t c : sString) {
    if (kNotInFileNames.find(c) == kNotInFileNames.npos) {
      result += c;
    } else {
      result += ToChar;
    }
  }
  return result;
}

bool CTools::FileExist(std::u16string Path, std::u16string File) {
  const excel::FileSearch search = FileSearchOf(application_);
  if (!search) return HasFile(Path, File);
  search.SetLookIn(Path);
  search.SetFileName(File);
  return search.Execute() > 0;
}

}  // namespace qva
