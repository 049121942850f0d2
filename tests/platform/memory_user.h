// The user of a host on the twin's platform, for the host's contract.
#pragma once

#include <algorithm>

#include "platform/memory/MemoryPlatform.h"
#include "tests/platform/host_contract.h"

namespace qva {

class MemoryUser {
 public:
  MemoryUser() { InstallServices(platform_.services()); }
  MemoryUser(const MemoryUser&) = delete;
  MemoryUser& operator=(const MemoryUser&) = delete;
  ~MemoryUser() { InstallServices({}); }

  void Press(std::int32_t button) { platform_.message_box.Answer(button); }
  std::vector<ShownMessage> Messages() const {
    std::vector<ShownMessage> messages;
    for (const auto& box : platform_.message_box.boxes())
      messages.push_back({box.text, box.title, box.captions});
    return messages;
  }

  void Pick(const std::vector<std::optional<std::u16string>>& codes) {
    platform_.list_chooser.user = [this, codes](const ChoiceList& list, std::u16string_view) {
      const auto& code = codes.at(platform_.list_chooser.shown.size() - 1);
      const auto row = std::ranges::find_if(list.rows, [&](const auto& cells) { return cells[0] == code; });
      if (row == list.rows.end()) return std::optional<std::size_t>();
      return std::optional<std::size_t>(row - list.rows.begin());
    };
  }
  std::size_t Lists() const { return platform_.list_chooser.shown.size(); }
  std::optional<std::vector<std::u16string>> Codes() const {
    std::vector<std::u16string> codes;
    for (const auto& row : platform_.list_chooser.shown.back().rows) codes.push_back(row.front());
    return codes;
  }

 protected:
  MemoryPlatform platform_;
};

}  // namespace qva
