// Excel's notation of keys.
#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <optional>
#include <string_view>

namespace qva::calc {

/// The key that Application.OnKey means: "^" Ctrl, "+" Shift and "%" Alt in front of a letter, of a digit or
/// of a name in braces, such as "^s", "^{s}", "{F1}" and "+{DELETE}"; "~" is Enter. Names ignore letter case,
/// and so do letters: a key is the same with Caps Lock on. The key has code 0 when LibreOffice binds no
/// command to it, as to "^-", "^{+}", "{~}" and "{BREAK}". Nothing for what is no key.
std::optional<css::awt::KeyEvent> ParseKey(std::u16string_view notation);

}  // namespace qva::calc
