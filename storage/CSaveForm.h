// Report save: stores a finished report workbook in the reports archive.
#pragma once

#include <cstdint>
#include <string>

#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Saves a report under a name made of its parts. So far the four properties are there; the operations are
/// not built yet and raise 445 (Object doesn't support this action).
class CSaveForm : public Described<CSaveForm> {
 public:
  static const ClassDescription& Description();

  void Init();
  void Save(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType, std::u16string BlankID,
            Date BlankDate);
  void SaveReport(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                  std::int16_t intQuater);
  bool FileExist(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                 std::u16string BlankID, Date BlankDate);
  std::u16string FileName(excel::Workbook wb, std::u16string BlankName, std::u16string BlankType,
                          std::u16string BlankID, Date BlankDate);
  bool ReportExist(excel::Workbook wb, std::u16string ReportName, std::int16_t intYear,
                   std::int16_t intQuater);
  bool ReportExistEx(std::u16string ReportName, std::int16_t intYear, std::int16_t intQuater);

  /// 0 when the last operation went through.
  std::uint8_t ErrorStatus() const { return error_status_; }
  /// A code other than 0 also sets the description, to the host message 800 + code; 0 leaves it as it is.
  /// Raises what the host's message resource raises; the code is set then, the description is not.
  void SetErrorStatus(std::uint8_t code);

 private:
  std::uint8_t error_status_ = 0;
  std::u16string error_description_;
  std::u16string general_path_;
  std::u16string file_full_path_;
};

}  // namespace qva
