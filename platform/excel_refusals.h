// How Excel refuses, where objects of our own stand in for its.
#pragma once

#include <string>
#include <string_view>

#include "platform/error.h"

namespace qva::excel {

inline constexpr std::u16string_view kExcelSource = u"Microsoft Excel";

/// Error 1004 with Excel's text for whatever has no text of its own.
inline AutomationError Refusal(std::u16string description = u"Application-defined or object-defined error") {
  return {kApplicationDefined, std::u16string(kExcelSource), std::move(description)};
}

/// Excel's text for cells that cannot be changed on a protected sheet.
inline constexpr std::u16string_view kProtectedRefusal =
    u"The cell or chart you are trying to change is protected and therefore read-only.\n\n"
    u"To modify a protected cell or chart, first remove protection using the Unprotect Sheet command "
    u"(Tools menu, Protection submenu). You may be prompted for a password.";

/// Error 9: a collection has no such sheet, workbook or window.
inline AutomationError SubscriptRefusal() {
  return {kSubscriptOutOfRange, std::u16string(kExcelSource), StandardDescription(kSubscriptOutOfRange)};
}

/// Error 1004: an array formula can be changed as a whole only.
inline AutomationError ArrayRefusal() {
  return Refusal(u"You cannot change part of an array.");
}

/// The number that a macro gets from an object whose workbook was closed (hexadecimal 800401A8).
inline constexpr std::int32_t kObjectGone = -2147221080;

inline AutomationError GoneRefusal() {
  return {kObjectGone, std::u16string(kExcelSource), StandardDescription(kAutomationFailed)};
}

}  // namespace qva::excel
