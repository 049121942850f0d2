// Message boxes on Windows.
#pragma once

#include "platform/clock.h"
#include "platform/forms/unattended_message_box.h"
#include "platform/message_box.h"

namespace qva::windows {

/// Shows boxes over the window that the user is working in, when it belongs to this thread. Where nobody sits
/// - one of the environment variables QVA_VARNHOLT_ANSWERS and QVA_VARNHOLT_MESSAGE_LOG names a file, the
/// process has no visible desktop, or a box cannot be shown - boxes are answered unattended, by those files.
class WindowsMessageBox : public MessageBox {
 public:
  /// The clock is borrowed.
  explicit WindowsMessageBox(const Clock& clock);

  std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;
  std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                   std::span<const std::u16string> captions) override;

 private:
  UnattendedMessageBox unattended_;
  bool is_attended_;
};

}  // namespace qva::windows
