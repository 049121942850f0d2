// Report save: stores a finished report workbook in the reports archive.
#pragma once

#include <cstdint>
#include <string>

#include "global/CTools.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Stores a workbook as a form (by name, type, identifier and date) or as a report (by name, year and
/// period), and tells whether it was stored before. What is wrong with the arguments, and a save that fails,
/// is told by ErrorStatus and ErrorDescr, and nothing is raised or shown. Errors of the host, and of Excel
/// but for those of saving, reach the caller.
///
/// Init comes first. Before it a member that cleans a name raises 91.
class CSaveForm : public Described<CSaveForm> {
 public:
  static ClassBuilder Describe();

  /// The folder of the host's path key "BookRepSave", without a separator at its end. The host is asked
  /// without a book: it is the archive of all of them.
  static std::u16string Archive();

  /// Takes the archive as GeneralPath and as the root of reports.
  void Init();

  /// Stores a form in place of an earlier one; FileFullPath is where it is.
  void Save(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType, std::u16string BlankID,
            Date BlankDate);
  /// Stores the report of a year and period in place of an earlier one; FileFullPath is where it is.
  void SaveReport(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                  std::int16_t intQuater);

  /// Whether the form was stored before. Creates its folder when it is missing; FileFullPath is where it
  /// would be. False also for an error.
  bool FileExist(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                 std::u16string BlankID, Date BlankDate);
  /// The form's file name without folder, "Name_Type_ID_YYYYMMDD.xls"; empty for an error. Looks at no file.
  std::u16string FileName(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                          std::u16string BlankID, Date BlankDate);
  /// As ReportExistEx, of a workbook and without the error of an earlier call.
  bool ReportExist(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                   std::int16_t intQuater);
  /// Whether the report was stored before: "Name_Year.xls" of a whole year (period 0 and below), otherwise
  /// "Name_Year_PP.xls", in a folder of the year, which is created when missing. FileFullPath is where it
  /// would be. False for an error, also for one that an earlier call left: this member alone does not reset
  /// ErrorStatus, so that a caller of several learns of the first failure.
  bool ReportExistEx(std::u16string ReportName, std::int16_t intYear, std::int16_t intQuater);

  /// 0 when the last operation went through.
  std::uint8_t ErrorStatus() const { return error_status_; }
  /// A code other than 0 also sets the description, to the host message 800 + code; 0 leaves it as it is.
  /// Raises what the host's message resource raises; the code is set then, the description is not.
  void SetErrorStatus(std::uint8_t code);
  const std::u16string& ErrorDescr() const { return error_description_; }

 private:
  void SetWorkbook(excel::Workbook workbook);
  /// What may stand in a file name of the text. Sets `code` when nothing is left of it but blanks.
  std::u16string Clean(std::u16string text, std::uint8_t code);
  void SetBlankDate(Date date);
  /// Checks all parts of a form; a later failure hides an earlier one.
  void SetForm(excel::Workbook workbook, std::u16string name, std::u16string type, std::u16string id,
               Date date);
  std::u16string FormFileName() const;
  /// Whether the folder holds the file; creates the folder when it is missing.
  bool IsInFolder();
  /// Saves when nothing failed until now; the failure listener hears of a report that is not saved.
  void SaveOrTell();
  /// Saves the workbook as FileFullPath says.
  void SaveWorkbook();

  std::uint8_t error_status_ = 0;
  std::u16string error_description_;
  std::u16string file_name_;
  std::u16string folder_;  ///< ends in "\"
  std::u16string general_path_;
  std::u16string report_root_;  ///< GeneralPath as Init set it
  std::u16string file_full_path_;
  std::u16string blank_name_;
  std::u16string blank_type_;
  std::u16string blank_id_;
  std::u16string blank_date_;  ///< "YYYYMMDD"
  excel::Workbook workbook_;
  Ref<CTools> tools_;
};

}  // namespace qva
