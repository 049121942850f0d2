#include "platform/filesystem/windows_path.h"

#include <algorithm>

#include "platform/error.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kSeparators = u"\\/";

bool IsSeparator(char16_t c) {
  return kSeparators.find(c) != kSeparators.npos;
}

/// Takes what stands before the next separator off a path, and the separator.
std::u16string_view TakeName(std::u16string_view& path) {
  const std::size_t end = std::min(path.find_first_of(kSeparators), path.size());
  const std::u16string_view name = path.substr(0, end);
  path.remove_prefix(std::min(end + 1, path.size()));
  return name;
}

void CheckName(std::u16string_view name) {
  const bool is_bad = std::ranges::any_of(name, [](char16_t c) {
    return c < 0x20 || std::u16string_view(u"<>:\"|?*").find(c) != std::u16string_view::npos;
  });
  if (is_bad) throw AutomationError(kBadFileNameOrNumber);
}

/// Servers and shares become folders where there is no Windows, so none may lead out of its place.
void CheckRootName(std::u16string_view name) {
  if (name == u"." || name == u"..") throw AutomationError(kBadFileNameOrNumber);
  CheckName(name);
}

/// What a path starts from; takes the part that tells it off the path.
WindowsPath TakeStart(std::u16string_view& path, const WindowsPath& current) {
  if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1])) {
    path.remove_prefix(2);
    const std::u16string_view server = TakeName(path);
    const std::u16string_view share = TakeName(path);
    if (server.empty() || share.empty()) throw AutomationError(kPathNotFound);
    CheckRootName(server);
    CheckRootName(share);
    return {.root = u"\\\\" + std::u16string(server) + u"\\" + std::u16string(share)};
  }
  if (path.size() >= 2 && path[1] == u':' && IsBasicLetter(path[0])) {
    const std::u16string drive(path.substr(0, 2));
    path.remove_prefix(2);
    const bool is_relative = path.empty() || !IsSeparator(path[0]);
    if (is_relative && EqualIgnoringCase(drive, current.root)) return current;
    return {.root = drive};
  }
  if (IsSeparator(path[0])) return {.root = current.root};
  return current;
}

}  // namespace

std::u16string WindowsPath::Text() const {
  std::u16string text = root;
  for (const std::u16string& name : names) text.append(1, u'\\').append(name);
  if (names.empty()) text += u'\\';
  return text;
}

WindowsPath ParseWindowsPath(std::u16string_view path, const WindowsPath& current) {
  if (path.empty()) throw AutomationError(kPathNotFound);
  const bool ends_in_separator = IsSeparator(path.back());
  WindowsPath result = TakeStart(path, current);
  result.ends_in_separator = ends_in_separator;
  while (!path.empty()) {
    const std::u16string_view name = TakeName(path);
    if (name.empty() || name == u".") continue;
    if (name == u"..") {
      if (!result.names.empty()) result.names.pop_back();
      continue;
    }
    CheckName(name);
    result.names.emplace_back(name);
  }
  return result;
}

}  // namespace qva
