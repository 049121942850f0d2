// From what is entered into a cell to what it holds, and back to text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/memory/excel/NumberFormats.h"
#include "platform/value.h"

namespace qva::memory {

/// What a cell holds. Value and formula are empty for an empty cell.
struct CellEntry {
  Value value;
  std::u16string formula = u"";  ///< with its "="
  /// What a cell in the general format is shown in from then on.
  std::u16string number_format = std::u16string(kGeneralFormat);
};

/// A cell's contents after `value` was put into it, as Excel reads it from a macro (in the notation of the
/// United States, whatever the regional settings are):
/// - Empty, Null and the empty text clear the cell; numbers, dates and amounts become Double, the latter
///   two in a format of theirs; Booleans and error values stay what they are; an object stands for its
///   default property.
/// - Text that begins with "=" is a formula, "TRUE" is a Boolean, "#N/A" an error; what reads like a
///   number, a date or a time is one (TypedText.h); an apostrophe in front keeps any of them as text.
/// - `as_text` (the cell's number format is "@") takes texts as they are, apostrophes included, and makes
///   texts of numbers, dates and Booleans.
/// Raises 1004 for a formula that cannot be read, an array, a date outside of the years 1900 to 9999 and a
/// text of more than 32 767 characters.
CellEntry ReadEntry(const Value& value, bool as_text);

/// What Range.Formula gives for a constant: numbers and dates as digits with a decimal point, "TRUE", "#N/A".
std::u16string ConstantText(const Value& value);

/// What Range.Text gives: numbers and dates by the regional settings.
std::u16string DisplayText(const Value& value);

/// "#N/A" and its like; "#VALUE!" for a number that is none of Excel's.
std::u16string ErrorText(ErrorValue error);
/// The error that the text begins with.
std::optional<ErrorValue> ParseErrorPrefix(std::u16string_view text);

}  // namespace qva::memory
