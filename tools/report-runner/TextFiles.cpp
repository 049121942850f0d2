#include "tools/report-runner/TextFiles.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace qva {

std::string ReadText(const std::filesystem::path& path) {
  std::ostringstream contents;
  contents << std::ifstream(path, std::ios::binary).rdbuf();
  return contents.str();
}

void WriteText(const std::filesystem::path& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

void WriteWhole(const std::filesystem::path& path, std::string_view text) {
  const std::filesystem::path part = path.string() + ".part";
  WriteText(part, text);
  std::filesystem::rename(part, path);
}

}  // namespace qva
