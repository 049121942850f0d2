// A box with a text and buttons of the caller's choice, as a form.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "platform/controls.h"

namespace qva {

/// What a platform's boxes look like, in pixels at 100 % scale.
struct ButtonFormLook {
  std::function<int(std::u16string_view line)> width_of;  ///< of a text in one line
  int line_height = 0;
  int margin = 0;          ///< around text and buttons
  int greatest_text = 0;   ///< the width at which a text goes on in the next line
  int least_width = 0;     ///< of the form
  int least_button = 0;    ///< the width of a button with a short caption
  int button_padding = 0;  ///< on each side of a longer one
  int button_height = 0;
  int sign = 0;  ///< the edge of a square that is left free before the text; 0 for none
};

/// The form: the label "Text", and below it a row of buttons, "Button1" and so on, one for each caption, of
/// which there is one at least. The first one is the default button, the last one the cancel button. The text
/// goes on in the next line where a word would be too wide; one that is so itself widens the form.
ui::FormDescription ButtonForm(std::u16string_view text, std::u16string_view title,
                               std::span<const std::u16string> captions, const ButtonFormLook& look);

/// Shows a form of that kind, with the focus on the first button, until one is pressed. Result: the number of
/// that button, the first being 1; 0 when the form ended without. Raises as ui::Form::ShowModal.
std::int32_t PressedButton(ui::Form& form);

}  // namespace qva
