// The library's public enumeration of report date forms.
#pragma once

#include <cstdint>

namespace qva {

/// Which date cells CReports::ReadDate exchanges. Crosses the protocol as a 32-bit whole number.
enum enDateType : std::int32_t {
  FullDate = 1,       ///< year, month, day
  YearAndMonth = 2,   ///< year, month
  YearAndQuater = 3,  ///< year, quarter
};

}  // namespace qva
