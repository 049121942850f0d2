#include "platform/folders.h"

namespace qva {

void MakeFolders(Files& files, std::u16string_view folder) {
  if (folder.empty() || folder.ends_with(u':') || files.FolderExists(folder)) return;
  const std::size_t end = folder.rfind(u'\\');
  if (end != folder.npos) MakeFolders(files, folder.substr(0, end));
  files.CreateFolder(folder);
}

}  // namespace qva
