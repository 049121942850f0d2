// Message boxes that nobody sees: answered from a script, and remembered.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/message_box.h"

namespace qva {

class MemoryMessageBox : public MessageBox {
 public:
  /// One box that was shown.
  struct Shown {
    std::u16string text;
    std::int32_t style = 0;  ///< of Show; 0 for Ask
    std::u16string title;
    std::vector<std::u16string> captions;  ///< of Ask; empty for Show
    std::int32_t answer = 0;
  };

  std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;
  std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                   std::span<const std::u16string> captions) override;

  /// Lets the next box without an answer be answered so. Answers are used in the order in which they were
  /// given; once they are used up, each box gets its first button.
  void Answer(std::int32_t button) { answers_.push_back(button); }
  /// The same: lets it be closed, which presses Cancel where Show has that, the only button where it has one.
  void Close() { answers_.push_back(kClosed); }
  std::size_t UnusedAnswers() const { return answers_.size(); }

  /// Called while a box is shown.
  std::function<void()> on_show;

  /// Every box shown so far, in order.
  const std::vector<Shown>& boxes() const { return boxes_; }

 private:
  static constexpr std::int32_t kClosed = 0;

  std::int32_t Record(Shown box, std::int32_t first_button, std::int32_t closing_button);

  std::deque<std::int32_t> answers_;
  std::vector<Shown> boxes_;
};

}  // namespace qva
