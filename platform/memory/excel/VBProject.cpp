#include "platform/memory/excel/VBProject.h"

namespace qva::memory {

ClassBuilder VBProject::Describe() {
  return ClassBuilder(u"VBProject", "A workbook's project of macros")
      .Property<&VBProject::Name, &VBProject::SetName>(u"Name")
      .Default(u"Name");
}

std::u16string VBProject::Name() {
  return OpenWorkbook(workbook_)->project_name;
}

void VBProject::SetName(const std::u16string& name) {
  OpenWorkbook(workbook_);
  workbook_->project_name = name;
  workbook_->saved = false;
}

}  // namespace qva::memory
