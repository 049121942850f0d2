#include "platform/filesystem/folders.h"

namespace qva {

void MakeFolders(Files& files, std::u16string_view folder) {
  constexpr std::u16string_view kSeparators = u"\\/";
  while (!folder.empty() && kSeparators.find(folder.back()) != kSeparators.npos) folder.remove_suffix(1);
  if (folder.empty() || folder.ends_with(u':') || files.FolderExists(folder)) return;
  const std::size_t end = folder.find_last_of(kSeparators);
  if (end != folder.npos) MakeFolders(files, folder.substr(0, end));
  files.CreateFolder(folder);
}

}  // namespace qva
