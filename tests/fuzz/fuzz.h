// What the fuzz targets share. A target asserts what holds for every input, beyond that nothing breaks.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {

using FuzzInput = FuzzedDataProvider;

/// Ends the program where something does not hold, so that the fuzzer keeps the input.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

inline std::string_view AsText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Text that is well formed, or with any units of UTF-16.
inline std::u16string TextFrom(FuzzInput& input, std::size_t longest = 64) {
  const bool is_well_formed = input.ConsumeBool();
  const std::string bytes = input.ConsumeRandomLengthString(longest);
  return is_well_formed ? FromUtf8(bytes) : FromUtf16Bytes(bytes);
}

/// Any double, infinities and what is no number among them.
inline double DoubleFrom(FuzzInput& input) {
  switch (input.ConsumeIntegralInRange(0, 3)) {
    case 0:
      return std::bit_cast<double>(input.ConsumeIntegral<std::uint64_t>());
    case 1:
      return input.ConsumeIntegral<std::int32_t>() / 2.0;
    case 2:
      return static_cast<double>(input.ConsumeIntegral<std::int64_t>()) / 10000;
    default:
      return input.ConsumeFloatingPointInRange(-700000.0, 3000000.0);
  }
}

}  // namespace qva
