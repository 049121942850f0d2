#include "storage/CSaveForm.h"

#include "global/StartUp.h"

namespace qva {
namespace {

constexpr std::int32_t kFirstErrorText = 800;  ///< host message of code n: this plus n

}  // namespace

const ClassDescription& CSaveForm::Description() {
  static const ClassDescription description =
      ClassBuilder(u"CSaveForm", "Stores a finished report in the reports archive")
          .Method<&CSaveForm::Init>(u"Init", {}, "Finds the archive")
          .Method<&CSaveForm::Save>(u"Save",
                                    {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}},
                                    "Saves a form")
          .Method<&CSaveForm::SaveReport>(u"SaveReport",
                                          {{u"wb"}, {u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                          "Saves a report of a year or period")
          .Method<&CSaveForm::FileExist>(
              u"FileExist", {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}},
              "Whether a form was saved before")
          .Method<&CSaveForm::FileName>(
              u"FileName", {{u"wb"}, {u"BlankName"}, {u"BlankType"}, {u"BlankID"}, {u"BlankDate"}},
              "The file name of a form")
          .Method<&CSaveForm::ReportExist>(u"ReportExist",
                                           {{u"wb"}, {u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                           "Whether a report was saved before")
          .Method<&CSaveForm::ReportExistEx>(u"ReportExistEx",
                                             {{u"ReportName"}, {u"intYear"}, {u"intQuater"}},
                                             "Whether a report was saved before")
          .Get<&CSaveForm::ErrorStatus>(u"ErrorStatus", {}, "Code of the last error, 0 for none")
          .Put<&CSaveForm::SetErrorStatus>(u"ErrorStatus", {}, "Code of the last error, 0 for none")
          .Property<&CSaveForm::error_description_>(u"ErrorDescr", "Description of the last error")
          .Property<&CSaveForm::file_full_path_>(u"FileFullPath", "Folder and name of the file")
          .Property<&CSaveForm::general_path_>(u"GeneralPath", "Root of the archive");
  return description;
}

void CSaveForm::SetErrorStatus(std::uint8_t code) {
  error_status_ = code;
  if (code != 0) error_description_ = HostText(kFirstErrorText + code);
}

void CSaveForm::Init() {
  throw AutomationError(kUnsupportedAction);
}
void CSaveForm::Save(excel::Workbook, std::u16string, std::u16string, std::u16string, Date) {
  throw AutomationError(kUnsupportedAction);
}
void CSaveForm::SaveReport(excel::Workbook, std::u16string, std::int16_t, std::int16_t) {
  throw AutomationError(kUnsupportedAction);
}
bool CSaveForm::FileExist(excel::Workbook, std::u16string, std::u16string, std::u16string, Date) {
  throw AutomationError(kUnsupportedAction);
}
std::u16string CSaveForm::FileName(excel::Workbook, std::u16string, std::u16string, std::u16string, Date) {
  throw AutomationError(kUnsupportedAction);
}
bool CSaveForm::ReportExist(excel::Workbook, std::u16string, std::int16_t, std::int16_t) {
  throw AutomationError(kUnsupportedAction);
}
bool CSaveForm::ReportExistEx(std::u16string, std::int16_t, std::int16_t) {
  throw AutomationError(kUnsupportedAction);
}

}  // namespace qva
