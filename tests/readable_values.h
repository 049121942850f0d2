// Values in readable form, where an expectation is not met.
#pragma once

#include <ostream>

#include "platform/text.h"
#include "platform/value.h"

namespace qva {

inline void PrintTo(const Value& value, std::ostream* out) {
  *out << ToUtf8(DescribeValue(value));
}

inline void PrintTo(const Currency& amount, std::ostream* out) {
  PrintTo(Value(amount), out);
}

inline void PrintTo(const Date& date, std::ostream* out) {
  PrintTo(Value(date), out);
}

}  // namespace qva
