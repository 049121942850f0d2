// Message boxes where no user sits: answered from a file, written to a log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/filesystem/native_file.h"
#include "platform/message_box.h"

namespace qva {

/// Answers every box from a file of answers and tells about it in a log.
///
/// The answers file is UTF-8 with one answer on each line, used in their order: the button's caption in any
/// letter case, or its number. The buttons of Show also go by their English names ("OK", "Cancel", …).
/// Empty lines and those that begin with "#" are passed over. The file is read when the first box is shown.
/// Without a file the first button is pressed, and when no answers are left, that of a box that has no other.
/// An answer that names no button of the box, a box that asks when no answers are left, and a file that
/// cannot be read are errors in the log and told to the failure listener; where that goes on, the box is
/// closed, which presses its last button.
///
/// The log is UTF-8; each box adds its time, title, text, buttons and answer. Where there is no log or it
/// cannot be written, they go to the standard error output.
class UnattendedMessageBox : public MessageBox {
 public:
  /// Empty paths mean no answers and the standard error output. The clock is borrowed.
  UnattendedMessageBox(NativePath answers, NativePath log, const Clock& clock);

  std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;
  std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                   std::span<const std::u16string> captions) override;

 private:
  struct Button {
    std::int32_t number = 0;
    std::u16string caption;
    std::u16string english;  ///< the button's other name, empty when it has none
  };
  struct Answer {
    std::u16string text;
    int line = 0;  ///< in the file, from 1
  };

  static Button ButtonOfShow(std::int32_t number);
  std::int32_t Press(std::u16string_view text, std::u16string_view title, const std::vector<Button>& buttons);
  std::optional<Answer> NextAnswer();
  void ReadAnswers();

  NativePath answers_path_;
  NativePath log_path_;
  const Clock& clock_;
  std::optional<std::vector<Answer>> answers_;  ///< nothing until the first box
  std::size_t next_ = 0;
  bool is_unreadable_ = false;  ///< the answers file
};

}  // namespace qva
