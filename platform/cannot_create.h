// Error 429, as factories raise it.
#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"

namespace qva {

/// Why a factory has no object of an identifier that it does not know.
inline constexpr std::u16string_view kNoSuchClass = u"no such class";

/// Error 429 of the library's. Its description is "Library.Class: cause": whoever meets it has asked for an
/// object of ours, and must learn which component was not there for it.
inline AutomationError CannotCreate(std::u16string_view programmatic_identifier,
                                    std::u16string_view cause = kNoSuchClass) {
  return AutomationError(kCannotCreateObject,
                         std::u16string(programmatic_identifier) + u": " + std::u16string(cause));
}

}  // namespace qva
