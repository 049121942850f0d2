// The drive of the twin's files, for the files' contract.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryFiles.h"
#include "platform/memory/MemoryLocale.h"

namespace qva {

struct MemoryDrive {
  MemoryDrive() { memory.SetFolder(root()); }
  Files& files() { return memory; }
  std::u16string root() { return u"D:\\Bandymai"; }
  void SetContent(const std::u16string& path, std::string bytes) { memory.SetFile(path, std::move(bytes)); }
  std::optional<std::string> Content(const std::u16string& path) { return memory.Content(path); }
  bool LoseCurrentFolder() {
    const std::u16string folder = root() + u"\\dabar";
    memory.SetFolder(folder);
    memory.SetCurrentFolder(folder);
    memory.RemoveFolder(folder);
    return true;
  }

  MemoryLocale locale;
  MemoryClock clock;
  MemoryFiles memory{locale, clock};
};

}  // namespace qva
