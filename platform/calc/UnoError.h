// LibreOffice's exceptions as errors of ours.
#pragma once

#include "platform/calc/Uno.h"
#include "platform/error.h"

namespace qva::calc {

inline constexpr std::u16string_view kLibreOfficeSource = u"LibreOffice";

/// Error 1004 in LibreOffice's name.
AutomationError Refused(std::u16string description = u"Application-defined or object-defined error");

/// The error of an object whose workbook was closed.
AutomationError ObjectGone();

/// What LibreOffice threw (cppu::getCaughtException) as the error that macros and users meet. The one place
/// where that is decided: the texts of LibreOffice's exceptions name interfaces and source files, so that
/// none is passed on but the description of an error that a Basic program raised. Automation error (440) is
/// what has no number of its own.
AutomationError ErrorOf(Any exception);

/// The error that the exception being handled is for macros; to be called in a catch block. Our own errors
/// stay what they are, LibreOffice's become those of ErrorOf; what is neither is 7 (Out of memory) or 51
/// (Internal error).
AutomationError CaughtError() noexcept;

}  // namespace qva::calc
