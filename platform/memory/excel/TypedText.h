// Numbers, dates and times as they are typed into cells, in the notation of the United States.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qva::memory {

/// The number that a text stands for, and the format that a cell without one gets by it.
struct TypedNumber {
  double number = 0;
  std::u16string format;  ///< "General" where the number alone tells nothing of it
};

/// Reads
/// - numbers: "12", "-3", "(3)", "1,500.5", "-3E2", "5%", "$12.50", "0 1/2";
/// - dates from 1900 on: "2024-06-12", "6/12/2024", "6/12/24", "12-Jun-2024", and without the year,
///   which is then this one, "6/12" and "12-Jun"; years of two digits are 1930 to 2029;
/// - times: "12:30", "12:30:15", "9:00 PM", "9:00 p"; beyond 24 hours, too;
/// - a date, a blank and a time.
/// Nothing for any other text.
std::optional<TypedNumber> ReadTypedText(std::u16string_view text);

/// A plain number alone, with its sign, commas between thousands, decimals, exponent and "%"; nothing for any
/// other text.
std::optional<double> ParseExcelNumber(std::u16string_view text);

}  // namespace qva::memory
