// Writes the guide for authors of workbooks: guide <source folder>
#include <exception>
#include <fstream>
#include <iostream>

#include "tools/guide/Guide.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: guide <source folder>\n";
    return 2;
  }
  try {
    const std::filesystem::path source_folder = arguments[1];
    std::ofstream file(source_folder / "docs" / "guide.md", std::ios::binary);
    file << qva::MakeGuide(source_folder);
    if (!file.flush()) throw std::runtime_error("cannot write docs/guide.md");
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "guide: " << error.what() << "\n";
    return 1;
  }
}
