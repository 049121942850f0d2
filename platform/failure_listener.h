// Who hears of failures where nobody looks at message boxes.
#pragma once

#include <string_view>

namespace qva {

class FailureListener {
 public:
  virtual ~FailureListener() = default;

  /// Something failed of which the library tells its user, or which the macro may handle; the report goes on.
  /// What it raises, such as a want of memory, is forgotten.
  virtual void Failed(std::u16string_view what) = 0;
  /// What an answers file holds cannot have been meant for the window that it came to, or nothing is left.
  /// The listener may end the process, so that nothing goes on by an answer that nobody gave. Does not raise.
  virtual void WronglyAnswered(std::u16string_view what) = 0;
};

/// Lets a listener (borrowed) hear of failures from now on; null ends that. A front door does this where a
/// report runs unattended; otherwise the user sees what goes wrong. Does not raise.
void ListenForFailures(FailureListener* listener);

/// Tells the listener, where there is one, of something that failed. Does not raise.
void TellFailure(std::u16string_view what) noexcept;
/// The same of a wrong answer.
void TellWrongAnswer(std::u16string_view what) noexcept;

}  // namespace qva
