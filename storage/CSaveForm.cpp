#include "storage/CSaveForm.h"

#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/date.h"
#include "platform/failure_listener.h"
#include "platform/host.h"
#include "platform/services.h"
#include "platform/text.h"
#include "storage/CFile.h"

namespace qva {
namespace {

constexpr std::int32_t kFirstErrorText = 800;  ///< host message of code n: this plus n

/// What ErrorStatus tells. 6 and 7 are not used.
enum Failure : std::uint8_t {
  kNoName = 1,
  kNoType = 2,
  kNoIdentifier = 3,
  kWrongDate = 4,  ///< no date, or a year or period out of range
  kNoWorkbook = 5,
  kNotSaved = 8,  ///< the folder cannot be created, or Excel could not save
};

constexpr std::u16string_view kReplacement = u"_";  ///< of what a file name cannot hold
constexpr std::u16string_view kExtension = u".xls";
constexpr std::int16_t kFirstYear = 1970;
constexpr std::int16_t kLastPeriod = 12;

/// "Name_Year" of a whole year, otherwise "Name_Year_PP", with the extension.
std::u16string ReportFileName(const std::u16string& name, std::int16_t year, std::int16_t period) {
  std::u16string file = name + u"_" + NumberText(year);
  if (period > 0) file += (period < 10 ? u"_0" : u"_") + NumberText(period);
  return file.append(kExtension);
}

}  // namespace

ClassBuilder CSaveForm::Describe() {
  return ClassBuilder(u"CSaveForm", "Stores a finished report in the reports archive")
      .Method<&CSaveForm::Init>(u"Init", {}, "Finds the archive")
      .Method<&CSaveForm::Save>(
          u"Save", {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}}, "Saves a form")
      .Method<&CSaveForm::SaveReport>(u"SaveReport", {{u"wb"}, {u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                      "Saves a report of a year or period")
      .Method<&CSaveForm::FileExist>(u"FileExist",
                                     {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}},
                                     "Whether a form was saved before")
      .Method<&CSaveForm::FileName>(u"FileName",
                                    {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}},
                                    "The file name of a form")
      .Method<&CSaveForm::ReportExist>(u"ReportExist",
                                       {{u"wb"}, {u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                       "Whether a report was saved before")
      .Method<&CSaveForm::ReportExistEx>(u"ReportExistEx", {{u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                         "Whether a report was saved before")
      .Property<&CSaveForm::ErrorStatus, &CSaveForm::SetErrorStatus>(u"ErrorStatus", {},
                                                                     "Code of the last error, 0 for none")
      .Property<&CSaveForm::error_description_>(u"ErrorDescr", "Description of the last error")
      .Property<&CSaveForm::file_full_path_>(u"FileFullPath", "Folder and name of the file")
      .Property<&CSaveForm::general_path_>(u"GeneralPath", "Root of the archive");
}

std::u16string CSaveForm::Archive() {
  const std::u16string archive = CFile::PathByPathKey(host::kArchiveKey);
  std::u16string_view folder = Trim(archive);
  if (folder.ends_with(u'\\') || folder.ends_with(u'/')) folder.remove_suffix(1);
  return std::u16string(folder);
}

void CSaveForm::Init() {
  SetErrorStatus(0);
  tools_ = MakeRef<CTools>();
  tools_->Init(TheGlobals().application);
  general_path_ = Archive();
  report_root_ = general_path_;
}

void CSaveForm::Save(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                     std::u16string BlankID, Date BlankDate) {
  file_full_path_.clear();
  FileExist(std::move(wb), std::move(BlankName), std::move(BlankType), std::move(BlankID), BlankDate);
  SaveOrTell();
}

void CSaveForm::SaveReport(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                           std::int16_t intQuater) {
  file_full_path_.clear();
  ReportExist(std::move(wb), std::move(ReportName), intYear, intQuater);
  SaveOrTell();
}

bool CSaveForm::FileExist(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                          std::u16string BlankID, Date BlankDate) {
  SetErrorStatus(0);
  SetForm(std::move(wb), std::move(BlankName), std::move(BlankType), std::move(BlankID), BlankDate);
  if (error_status_ != 0) return false;
  file_name_ = FormFileName();
  // No separator after GeneralPath, on purpose: "C:\Arch" and the type "PVM" give "C:\ArchPVM\". A workbook
  // that wants a folder below ends GeneralPath in "\".
  folder_ = general_path_ + blank_type_ + u"\\";
  file_full_path_ = folder_ + file_name_;
  return IsInFolder();
}

std::u16string CSaveForm::FileName(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                                   std::u16string BlankID, Date BlankDate) {
  SetErrorStatus(0);
  SetForm(std::move(wb), std::move(BlankName), std::move(BlankType), std::move(BlankID), BlankDate);
  if (error_status_ != 0) return {};
  file_name_ = FormFileName();
  return file_name_;
}

bool CSaveForm::ReportExist(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                            std::int16_t intQuater) {
  SetErrorStatus(0);
  SetWorkbook(std::move(wb));
  return error_status_ == 0 && ReportExistEx(std::move(ReportName), intYear, intQuater);
}

bool CSaveForm::ReportExistEx(std::u16string ReportName, std::int16_t intYear, std::int16_t intQuater) {
  blank_name_ = Clean(std::move(ReportName), kNoName);
  if (intYear < kFirstYear) SetErrorStatus(kWrongDate);
  if (intQuater > kLastPeriod) SetErrorStatus(kWrongDate);
  if (error_status_ != 0) return false;
  file_name_ = ReportFileName(blank_name_, intYear, intQuater);
  folder_ = report_root_ + u"\\" + NumberText(intYear) + u"\\";
  file_full_path_ = folder_ + file_name_;
  return IsInFolder();
}

void CSaveForm::SetErrorStatus(std::uint8_t code) {
  error_status_ = code;
  if (code != 0) error_description_ = HostText(kFirstErrorText + code);
}

void CSaveForm::SetWorkbook(excel::Workbook workbook) {
  workbook_ = std::move(workbook);
  if (!workbook_) SetErrorStatus(kNoWorkbook);
}

std::u16string CSaveForm::Clean(std::u16string text, std::uint8_t code) {
  if (!tools_) throw AutomationError(kObjectNotSet);
  std::u16string cleaned = tools_->ConvertStr2Str(std::move(text), std::u16string(kReplacement));
  if (Trim(cleaned).empty()) SetErrorStatus(code);
  return cleaned;
}

void CSaveForm::SetBlankDate(Date date) {
  if (date == Date()) {
    SetErrorStatus(kWrongDate);
  } else {
    blank_date_ = FormatDate(date, u"yyyymmdd", *GetServices().locale);
  }
}

void CSaveForm::SetForm(excel::Workbook workbook, std::u16string name, std::u16string type, std::u16string id,
                        Date date) {
  SetWorkbook(std::move(workbook));
  blank_name_ = Clean(std::move(name), kNoName);
  blank_type_ = Clean(std::move(type), kNoType);
  blank_id_ = Clean(std::move(id), kNoIdentifier);
  SetBlankDate(date);
}

std::u16string CSaveForm::FormFileName() const {
  std::u16string name = blank_name_ + u"_" + blank_type_ + u"_" + blank_id_ + u"_" + blank_date_;
  return name.append(kExtension);
}

bool CSaveForm::IsInFolder() {
  Files& files = *GetServices().files;
  if (!files.FolderExists(folder_)) IgnoreErrors([&] { files.CreateFolder(folder_); });
  if (files.FolderExists(folder_)) return tools_->FileExist(folder_, file_name_);
  SetErrorStatus(kNotSaved);
  error_description_ += u"\r\n" + folder_;
  return false;
}

void CSaveForm::SaveOrTell() {
  if (error_status_ == 0) SaveWorkbook();
  if (error_status_ == 0) return;
  TellFailure(u"the report was not saved (ErrorStatus " + NumberText(error_status_) + u") " +
              file_full_path_);
}

void CSaveForm::SaveWorkbook() {
  const bool is_saved = IgnoreErrors([&] {
    const excel::Application application = TheGlobals().application;
    application.SetDisplayAlerts(false);
    workbook_.SaveAs(file_full_path_);
    // Not set back after a failure, on purpose: the workbook that handles it goes on unasked.
    application.SetDisplayAlerts(true);
  });
  // The code alone: the description keeps what it held.
  if (!is_saved) error_status_ = kNotSaved;
}

}  // namespace qva
