// The platform's own message boxes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qva {

/// Windows' and Basic's styles; one button set and one icon are added together.
enum MessageBoxStyle : std::int32_t {
  vbOKOnly = 0,
  vbCritical = 16,  ///< the critical-stop icon
};

/// The digit of a style that is its button set; the rest is icon and behaviour.
inline constexpr std::int32_t kButtonSetMask = 0xF;

/// Windows' button numbers as Basic's MsgBox returns them.
enum MessageBoxResult : std::int32_t {
  vbOK = 1,
  vbCancel = 2,
};

// Captions of buttons, as Windows has them in Lithuanian.
inline constexpr std::u16string_view kOk = u"Gerai";  ///< of a message that only tells something
inline constexpr std::u16string_view kCancel = u"Atšaukti";
inline constexpr std::u16string_view kYes = u"Taip";
inline constexpr std::u16string_view kNo = u"Ne";

class MessageBox {
 public:
  virtual ~MessageBox() = default;

  /// Shows the text until the user answers. `style` is a sum of MessageBoxStyle values; an empty title means
  /// the default one, the library's name. Result: the number of the pressed button (MessageBoxResult).
  /// Where nobody can answer, the platform's unattended answers decide. Does not raise.
  virtual std::int32_t Show(std::u16string_view text, std::int32_t style, std::u16string_view title) = 0;

  /// Shows the text with one button for each caption, in order; the title as for Show. Result: the number of
  /// the pressed button, the first being 1. Closing the box presses the last button. Where there is
  /// nobody to ask, or no window to be had, the unattended answers decide, as for Show. Does not raise.
  virtual std::int32_t Ask(std::u16string_view text, std::u16string_view title,
                           std::span<const std::u16string> captions) = 0;
};

}  // namespace qva
