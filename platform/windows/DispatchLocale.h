// The language in which other servers are spoken to.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// American English whatever the user's language: the language of the object models' member names, formulas
/// and texts, in which macros call them too. An Excel without the user's language pack refuses any other.
inline constexpr LCID kDispatchLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

}  // namespace qva::windows
