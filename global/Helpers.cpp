#include "global/Helpers.h"

#include <limits>

#include "global/StartUp.h"
#include "platform/date.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

/// The character at a 1-based position as Basic's Mid gives it: none behind the end.
std::u16string CharacterAt(std::u16string_view text, std::size_t position) {
  if (position == 0) throw AutomationError(kInvalidProcedureCall);
  return position > text.size() ? std::u16string() : std::u16string(1, text[position - 1]);
}

/// 1-based position of the first occurrence, 0 when there is none.
std::size_t PositionOf(std::u16string_view what, std::u16string_view text) {
  const std::size_t at = text.find(what);
  return at == text.npos ? 0 : at + 1;
}

}  // namespace

std::u16string FormatMessage(std::u16string_view text, const Value& parameters) {
  if (text.empty()) return {};
  if (!parameters.Is(Value::Type::Array) || parameters.AsArray().dimensions.size() != 1) {
    throw AutomationError(kSubscriptOutOfRange);
  }
  std::u16string result(text);
  const Array& array = parameters.AsArray();
  const std::int32_t lower = array.dimensions[0].lower;
  for (std::size_t n = array.elements.size(); n-- > 0;) {
    const std::u16string placeholder = u"%" + NumberText(lower + static_cast<long long>(n));
    result = ReplaceAll(result, placeholder, array.elements[n].ToText());
  }
  return result;
}

std::u16string HostMessage(std::int32_t number, std::u16string_view parameter) {
  return FormatMessage(HostText(number), Array::Of({parameter}));
}

std::u16string GetDateSeparator(bool first) {
  const Locale& locale = *GetServices().locale;
  const std::u16string date = FormatDate(Value(u"2010.11.12").ToDate(), u"yyyy/mm/dd", locale);
  return first ? GetTextBetween(date, u"10", u"11") : GetTextBetween(date, u"11", u"12");
}

std::u16string GetTextBetween(std::u16string_view text, std::u16string_view before,
                              std::u16string_view after) {
  const std::size_t start = PositionOf(before, text) + before.size();
  const std::size_t after_position = PositionOf(after, text);
  if (after_position == 0) throw AutomationError(kInvalidProcedureCall);
  const std::size_t end = after_position - 1;
  if (start == end) return CharacterAt(text, start);
  // Only the first and the last character: separators are never longer than two.
  return CharacterAt(text, start) + CharacterAt(text, end);
}

void Count(std::int16_t& counter, int step) {
  const int next = counter + step;
  if (next < std::numeric_limits<std::int16_t>::min() || next > std::numeric_limits<std::int16_t>::max()) {
    throw AutomationError(kOverflow);
  }
  counter = static_cast<std::int16_t>(next);
}

}  // namespace qva
