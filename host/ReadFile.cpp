#include "host/ReadFile.h"

#include <fstream>

#include "platform/text.h"

namespace qva::embedded {

std::optional<std::string> ReadFile(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);  // fails for a folder, too
  if (error) return std::nullopt;
  std::string bytes(size, '\0');
  std::ifstream stream(file, std::ios::binary);
  if (!stream.read(bytes.data(), static_cast<std::streamsize>(size))) return std::nullopt;
  return bytes;
}

std::string Utf8Path(const std::filesystem::path& path) {
  const std::u8string bytes = path.u8string();
  return {bytes.begin(), bytes.end()};
}

std::u16string PathText(const std::filesystem::path& path) {
  return FromUtf8(Utf8Path(path));
}

}  // namespace qva::embedded
