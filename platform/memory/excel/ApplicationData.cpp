#include "platform/memory/excel/ApplicationData.h"

#include <algorithm>

#include "platform/memory/excel/Refusals.h"
#include "platform/text.h"

namespace qva::memory {

ApplicationData::ApplicationData() {
  // Excel's built-in bars, as far as anything asks for them, each with its first control.
  struct BuiltIn {
    const char16_t* name;
    const char16_t* first_control;
  };
  for (const BuiltIn& built_in : {BuiltIn{u"Worksheet Menu Bar", u"&File"}, BuiltIn{u"Standard", u"&New"},
                                  BuiltIn{u"Formatting", u"&Font:"}}) {
    const auto bar = std::make_shared<CommandBarData>();
    bar->name = built_in.name;
    bar->built_in = true;
    bar->visible = true;
    AddControl(bar, built_in.first_control);
    command_bars.push_back(bar);
  }
}

std::shared_ptr<WorkbookData> ApplicationData::FindWorkbook(std::u16string_view name) const {
  const auto found = std::find_if(workbooks.begin(), workbooks.end(),
                                  [&](const auto& book) { return EqualIgnoringCase(book->name, name); });
  return found == workbooks.end() ? nullptr : *found;
}

std::shared_ptr<CommandBarControlData> AddControl(const std::shared_ptr<CommandBarData>& bar,
                                                  std::u16string caption) {
  const auto control = std::make_shared<CommandBarControlData>();
  control->bar = bar;
  control->caption = std::move(caption);
  bar->controls.push_back(control);
  return control;
}

void RequireAlive(const CommandBarData& bar) {
  if (bar.is_deleted) throw GoneRefusal();
}

void RequireAlive(const CommandBarControlData& control) {
  const auto bar = control.bar.lock();
  if (!bar || bar->is_deleted) throw GoneRefusal();
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
