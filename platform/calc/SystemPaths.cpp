#include "platform/calc/SystemPaths.h"

#include "platform/posix/PosixFiles.h"
#include "platform/services.h"

namespace qva::calc {
namespace {

PosixFiles UserFiles() {
  return PosixFiles(UserDrivesPath(), *GetServices().locale);
}

}  // namespace

std::filesystem::path SystemPath(std::u16string_view path) {
  return UserFiles().SystemPath(path);
}

std::u16string DrivePath(const std::filesystem::path& path) {
  return UserFiles().DrivePath(path);
}

}  // namespace qva::calc
