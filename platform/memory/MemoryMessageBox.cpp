#include "platform/memory/MemoryMessageBox.h"

namespace qva {
namespace {

/// The first button of each of Windows' button sets, which are the low digit of a style: OK · OK, Cancel ·
/// Abort, Retry, Ignore · Yes, No, Cancel · Yes, No · Retry, Cancel.
constexpr std::int32_t kFirstButtons[] = {1, 1, 3, 6, 6, 4};

std::int32_t FirstButton(std::int32_t style) {
  const auto set = static_cast<std::size_t>(style & kButtonSetMask);
  return set < std::size(kFirstButtons) ? kFirstButtons[set] : vbOK;
}

}  // namespace

std::int32_t MemoryMessageBox::Show(std::u16string_view text, std::int32_t style, std::u16string_view title) {
  return Record(
      {.text = std::u16string(text), .style = style, .title = std::u16string(title), .captions = {}},
      FirstButton(style), (style & kButtonSetMask) == vbOKOnly ? vbOK : vbCancel);
}

std::int32_t MemoryMessageBox::Ask(std::u16string_view text, std::u16string_view title,
                                   std::span<const std::u16string> captions) {
  return Record({.text = std::u16string(text),
                 .title = std::u16string(title),
                 .captions = {captions.begin(), captions.end()}},
                1, static_cast<std::int32_t>(captions.size()));
}

std::int32_t MemoryMessageBox::Record(Shown box, std::int32_t first_button, std::int32_t closing_button) {
  box.answer = first_button;
  if (!answers_.empty()) {
    box.answer = answers_.front() == kClosed ? closing_button : answers_.front();
    answers_.pop_front();
  }
  boxes_.push_back(std::move(box));
  if (on_show) on_show();
  return boxes_.back().answer;
}

}  // namespace qva
