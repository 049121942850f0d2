#include "host/ReadFile.h"

#include <fstream>
#include <sstream>

#include "platform/text.h"

namespace qva::embedded {

std::optional<std::string> ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream.is_open()) return std::nullopt;
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  if (bytes.bad()) return std::nullopt;  // the way in which a failing read shows, such as that of a folder
  return bytes.str();
}

std::u16string PathText(const std::filesystem::path& path) {
  return FromUtf8(path.string());
}

}  // namespace qva::embedded
