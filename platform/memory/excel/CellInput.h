// From what is entered into a cell to what it holds, and back to text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/value.h"

namespace qva::memory {

/// What a cell holds. Both are empty for an empty cell.
struct CellEntry {
  Value value;
  std::u16string formula;  ///< with its "="
};

/// A cell's contents after `value` was put into it, as Excel reads it from a macro (in the notation of the
/// United States, whatever the regional settings are):
/// - Empty, Null and the empty text clear the cell; numbers become Double; dates, currency amounts, Booleans
///   and error values stay what they are; an object stands for its default property.
/// - Text that begins with "=" is a formula, "12", "1,500.5", "-3E2" and "5%" are numbers, "TRUE" is a
/// Boolean,
///   "#N/A" an error, "2024-06-12", "6/12/2024" and "6/12" of this year are dates, "12:30" is a time; an
///   apostrophe in front keeps any of them as text.
/// - `as_text` (the cell's number format is "@") takes texts as they are, apostrophes included, and makes
/// texts
///   of numbers, dates and Booleans.
/// Raises 1004 for a formula that cannot be read, an array, a date outside of the years 1900 to 9999 and a
/// text of more than 32 767 characters.
CellEntry ReadEntry(const Value& value, bool as_text);

/// What Range.Formula gives for a constant: numbers and dates as digits with a decimal point, "TRUE", "#N/A".
std::u16string ConstantText(const Value& value);

/// What Range.Text gives: numbers and dates by the regional settings.
std::u16string DisplayText(const Value& value);

/// A number in the notation of the United States; nothing for any other text.
std::optional<double> ParseExcelNumber(std::u16string_view text);

/// "#N/A" and its like; "#VALUE!" for a number that is none of Excel's.
std::u16string ErrorText(ErrorValue error);
/// The error that the text begins with.
std::optional<ErrorValue> ParseErrorPrefix(std::u16string_view text);

}  // namespace qva::memory
