#include "platform/memory/excel/ApplicationData.h"

#include <algorithm>

#include "platform/text.h"

namespace qva::memory {

ApplicationData::ApplicationData() {
  // Excel's built-in bars, as far as anything asks for them.
  for (const std::u16string_view name : {u"Worksheet Menu Bar", u"Standard", u"Formatting"}) {
    command_bars.push_back(std::make_shared<CommandBarData>());
    command_bars.back()->name = name;
  }
}

std::shared_ptr<WorkbookData> ApplicationData::FindWorkbook(std::u16string_view name) const {
  const auto found = std::find_if(workbooks.begin(), workbooks.end(),
                                  [&](const auto& book) { return EqualIgnoringCase(book->name, name); });
  return found == workbooks.end() ? nullptr : *found;
}

void AddWorkbook(const std::shared_ptr<ApplicationData>& application,
                 const std::shared_ptr<WorkbookData>& workbook) {
  workbook->application = application;
  application->workbooks.push_back(workbook);
  application->active_workbook = workbook;
}

void CloseWorkbook(ApplicationData& application, const std::shared_ptr<WorkbookData>& workbook) {
  workbook->is_open = false;
  std::erase(application.workbooks, workbook);
  if (application.active_workbook == workbook) {
    application.active_workbook = application.workbooks.empty() ? nullptr : application.workbooks.back();
  }
}

}  // namespace qva::memory
