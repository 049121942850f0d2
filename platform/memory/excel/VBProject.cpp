#include "platform/memory/excel/VBProject.h"

#include "platform/memory/excel/Refusals.h"

namespace qva::memory {

ClassBuilder VBProject::Describe() {
  return ClassBuilder(u"VBProject", "A workbook's project of macros")
      .Property<&VBProject::Name, &VBProject::SetName>(u"Name")
      .Default(u"Name");
}

std::u16string VBProject::Name() {
  if (!workbook_->is_open) throw GoneRefusal();
  return workbook_->project_name;
}

void VBProject::SetName(const std::u16string& name) {
  if (!workbook_->is_open) throw GoneRefusal();
  workbook_->project_name = name;
  workbook_->saved = false;
}

}  // namespace qva::memory
