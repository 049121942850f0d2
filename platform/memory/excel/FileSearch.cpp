#include "platform/memory/excel/FileSearch.h"

#include <algorithm>

#include "platform/text.h"

namespace qva::memory {

ClassBuilder FileSearch::Describe() {
  ClassBuilder builder(u"FileSearch", "The search for files");
  AddProperty<&FileSearchData::look_in>(builder, u"LookIn");
  AddProperty<&FileSearchData::file_name>(builder, u"FileName");
  return std::move(builder).Method<&FileSearch::Execute>(u"Execute");
}

std::int32_t FileSearch::Execute() {
  std::u16string_view folder = data()->look_in;
  if (folder.ends_with(u'\\')) folder.remove_suffix(1);
  return static_cast<std::int32_t>(std::ranges::count_if(application()->files, [&](const auto& file) {
    const WorkbookData& workbook = *file.second;
    return EqualIgnoringCase(workbook.path, folder) && FitsPattern(workbook.name, data()->file_name);
  }));
}

}  // namespace qva::memory
