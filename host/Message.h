// The common message object.
#pragma once

#include "platform/member_table.h"
#include "platform/message_box.h"

namespace qva::embedded {

class Message : public Described<Message> {
 public:
  static ClassBuilder Describe();
  /// Borrows the message box that shows the messages.
  explicit Message(MessageBox& message_box) : message_box_(message_box) {}

  /// Shows a text with one button for each caption of the array, in order. Result: the number of the pressed
  /// button, the first being 1. Raises 13 when the captions are no array and Failure::WrongParameters when
  /// there are none.
  std::int32_t Show(std::u16string text, std::u16string title, Value captions) const;

 private:
  MessageBox& message_box_;
};

}  // namespace qva::embedded
