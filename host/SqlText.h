// Values and names as the host's database writes them in SQL.
#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"

namespace qva::embedded {

/// The name of a table, view or alias: letters of the Latin alphabet, digits and "_", with no digit first.
/// Raises Failure::WrongParameters for any other text; `member` names the caller in the error.
void CheckName(std::u16string_view name, std::u16string_view member);
/// A field: a name, or an alias, a point and a name. Raises as CheckName does.
void CheckField(std::u16string_view field, std::u16string_view member);
/// A condition or another part of a query that must be there. Raises as CheckName does when the text is
/// blank.
void CheckPart(std::u16string_view text, std::u16string_view member);

/// A value as a literal: text in quotation marks with those in it doubled, numbers in digits, Booleans as 1
/// and 0, dates as the quoted text of the day, with the time of day where there is one. Raises
/// Failure::WrongParameters for a value that is none of these, for a number that is not finite and for a text
/// with a null character, at which SQL ends.
std::u16string SqlLiteral(const Value& value, std::u16string_view member);

/// The day of a date, as the database keeps it: "2024-01-31".
std::u16string DayText(Date date);

}  // namespace qva::embedded
