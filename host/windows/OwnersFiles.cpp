// Windows hands the rights of a folder on to what is created in it, and the user's own folder is the user's
// alone.
#include "host/OwnersFiles.h"

#include "platform/error.h"
#include "platform/windows/Handle.h"

namespace qva::embedded {

std::filesystem::path OwnersDataFolder(
    const std::function<std::filesystem::path(const char* name)>& variable) {
  const auto data = variable("LOCALAPPDATA");
  return data.is_absolute() ? data / kLibraryName : std::filesystem::path();
}

NewFile CreateOwnersFile(const std::filesystem::path& file) {
  const windows::Handle created = windows::OwnFileHandle(
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (created) return NewFile::Created;
  return GetLastError() == ERROR_FILE_EXISTS ? NewFile::NameIsTaken : NewFile::NotCreated;
}

void CreateOwnersFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
}

void TakeFromOthers(const std::filesystem::path&) {
}

}  // namespace qva::embedded
