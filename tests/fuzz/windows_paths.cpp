// Windows' paths taken apart: what comes out cannot lead out of its root, and reads the same when written
// out.
#include <algorithm>

#include "platform/filesystem/windows_path.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

bool IsCleanName(std::u16string_view name) {
  return !name.empty() && name != u"." && name != u".." && std::ranges::none_of(name, [](char16_t c) {
    return c < 0x20 || std::u16string_view(u"\\/<>:\"|?*").find(c) != std::u16string_view::npos;
  });
}

bool IsRoot(std::u16string_view root) {
  if (!root.starts_with(u"\\\\")) return root.size() == 2 && root[1] == u':';
  root.remove_prefix(2);
  const std::size_t end = root.find(u'\\');
  return end != root.npos && IsCleanName(root.substr(0, end)) && IsCleanName(root.substr(end + 1));
}

void RequireSame(const WindowsPath& path, const WindowsPath& expected, const char* what) {
  Require(path.root == expected.root && path.names == expected.names, what);
}

}  // namespace
}  // namespace qva

/// One path in each line, relative to the one before.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  std::string_view lines = AsText(data, size);
  WindowsPath path{.root = u"C:", .names = {u"Darbas"}};
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    const std::u16string text = FromUtf8(line);
    WindowsPath next;
    const std::int32_t error = RaisedBy([&] { next = ParseWindowsPath(text, path); });
    Require(error == 0 || error == kPathNotFound || error == kBadFileNameOrNumber, "errors are 52 and 76");
    if (error != 0) continue;
    Require(IsRoot(next.root) && std::ranges::all_of(next.names, IsCleanName), "root and names are clean");
    RequireSame(ParseWindowsPath(next.Text(), path), next, "a whole path reads the same");
    RequireSame(ParseWindowsPath(u"x\\..", next), next, "a folder can be left");
    WindowsPath above = next;
    if (!above.names.empty()) above.names.pop_back();
    RequireSame(ParseWindowsPath(u"./..", next), above, "the folder above is one name shorter");
    path = std::move(next);
  }
  return 0;
}
