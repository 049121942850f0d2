// The period dialog's answers for a period in one word.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qva {

/// The answers file for a year (2025), a half of it (2025-H1), a quarter (2025-Q3), a month (2025-09), or the
/// months from the first to the last one (2025-01/2025-05). Nothing when the text is none of these.
std::optional<std::string> PeriodAnswers(std::string_view period);

}  // namespace qva
