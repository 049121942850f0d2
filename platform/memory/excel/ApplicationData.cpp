#include "platform/memory/excel/ApplicationData.h"

#include <algorithm>

#include "platform/services.h"
#include "platform/text.h"

namespace qva::memory {

std::shared_ptr<WorkbookData> ApplicationData::FindWorkbook(std::u16string_view name) const {
  const auto found = std::find_if(workbooks.begin(), workbooks.end(),
                                  [&](const auto& book) { return EqualIgnoringCase(book->name, name); });
  return found == workbooks.end() ? nullptr : *found;
}

void ApplicationData::RunMacro(const std::u16string& name) {
  macros_run.push_back(name);
  const auto found = macros.find(ToLower(name));
  if (found == macros.end()) return;
  const std::function<void()> macro = found->second;  // it may define itself anew
  macro();
}

bool ApplicationData::HasFolder(std::u16string_view folder) const {
  const auto is_in_it = [&](const auto& file) { return EqualIgnoringCase(file.second->path, folder); };
  return EqualIgnoringCase(folder, kDefaultFolder) || std::ranges::any_of(files, is_in_it) ||
         GetServices().files->FolderExists(std::u16string(folder) + u"\\");
}

bool ApplicationData::Asks(std::u16string question) {
  if (!display_alerts) return true;
  questions.push_back(std::move(question));
  return user_agrees;
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
