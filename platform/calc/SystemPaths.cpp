#include "platform/calc/SystemPaths.h"

#include <osl/file.hxx>

#include "platform/calc/UnoText.h"
#include "platform/posix/PosixFiles.h"
#include "platform/services.h"
#include "platform/text.h"

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

OUString FileUrl(const std::filesystem::path& path) {
  OUString url;
  osl::FileBase::getFileURLFromSystemPath(ToUno(FromUtf8(path.string())), url);
  return url;
}

}  // namespace qva::calc
