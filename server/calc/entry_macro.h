// The macro that a report begins with, unless its workbook has another one.
#pragma once

namespace qva {

inline constexpr char kEntryModule[] = "Ataskaita";
inline constexpr char kEntryMacro[] = "Ataskaita.Main";

}  // namespace qva
