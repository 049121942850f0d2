#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/filesystem/file_descriptor.h"
#include "platform/filesystem/native_file.h"

namespace qva {

std::string PathText(const NativePath& path) {
  return path;
}

NativePath EnvironmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

OwnedFile OpenFile(const NativePath& path, const char* mode) {
  return OwnedFile(std::fopen(path.c_str(), mode));
}

bool AppendToFile(const NativePath& path, const std::string& text) {
  const FileDescriptor file(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR));
  return file && ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

}  // namespace qva
