// What a long operation tells the user meanwhile.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/value.h"

namespace qva {

/// Tells in Excel's status bar what an operation of a second or more does. Until then, and without a
/// connected Excel, it calls nothing, so that what is short costs no call. The text changes once a second at
/// most, and what the bar showed before comes back with Pause and with the object's end, whatever ends it.
/// Nothing of it raises: an Excel that refuses its status bar is not asked again.
class Progress {
 public:
  Progress();
  ~Progress() { Pause(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// To be called before each step: what is done from now on.
  void Say(std::u16string_view what);
  /// The same with how many of a number of steps are done: "what: done iš all".
  void Say(std::u16string_view what, std::int64_t done, std::int64_t all);
  /// The operation waits, for the user's answer for one, until the next Say. That time is no work.
  void Pause();

 private:
  using Duration = std::chrono::milliseconds;

  /// Whether a text is due.
  bool IsDue();
  void Show(std::u16string_view text);

  Duration worked_{0};                ///< before the last pause
  std::optional<Duration> since_;     ///< when the work after it began; nothing while it pauses
  std::optional<Duration> shown_at_;  ///< when a text was shown last; nothing while the bar is as it was
  Value former_;                      ///< what the bar showed before
  bool is_refused_ = false;
};

}  // namespace qva
