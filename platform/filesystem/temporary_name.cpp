#include "platform/filesystem/temporary_name.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>

namespace qva {

std::string TemporaryName(std::size_t longest) {
  constexpr std::size_t kEnough = 12;
  constexpr std::string_view kLetters = "0123456789abcdefghijklmnopqrstuvwxyz";
  static std::uint64_t state = 0;
  state += static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
  // The tilde keeps it apart from names that mean devices.
  std::string name = longest > 1 ? "~" : "";
  while (name.size() < std::clamp<std::size_t>(longest, 1, kEnough)) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    name += kLetters[(state >> 33) % kLetters.size()];
  }
  return name;
}

}  // namespace qva
