#pragma once

#include <memory>
#include <string>

#include "platform/member_table.h"
#include "platform/memory/excel/ApplicationData.h"

namespace qva::memory {

/// Application.Workbooks: the open ones. Made anew when it is asked for.
class Workbooks : public Described<Workbooks> {
 public:
  explicit Workbooks(std::shared_ptr<ApplicationData> application) : application_(std::move(application)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1, or by file name in any letter case. Raises 9.
  ObjectPtr Item(const Value& index);
  /// A new workbook "Book<n>" of three sheets, active.
  ObjectPtr Add();
  /// Opens a file of the in-memory file system (Application::AddFile, Workbook.SaveAs) and makes it active;
  /// one that is open already is only made active. Raises 1004 when there is no such file, or when another
  /// one of its name is open.
  ObjectPtr Open(const std::u16string& file_name);

  std::shared_ptr<ApplicationData> application_;
};

}  // namespace qva::memory
