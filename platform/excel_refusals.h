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
