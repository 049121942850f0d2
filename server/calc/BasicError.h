// Raising automation errors in LibreOffice Basic.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// Gets hold of Basic's own Err object, once for the process; later calls do nothing.
///
/// An exception that a component throws keeps only the lower half of its number and no source on its way into
/// the macro. Err.Raise keeps number, source and description whole, so it is the way that we raise errors.
/// Basic gives the object out to its own macros alone; so a module of one function, put into the
/// application's libraries and taken out again at once, hands it over.
void PrepareErrors(const Reference<css::uno::XComponentContext>& context);

/// Makes the error pending in the macro that called us. The caller must return to it at once, normally. Where
/// Basic's Err object could not be had, throws BasicErrorException, which serves for small numbers; without
/// memory for the error, one of 7 (Out of memory). Throws nothing but UNO's exceptions.
void RaiseInMacro(const AutomationError& error);

/// Basic's Err object as a value to pass on; Nothing when it could not be had. A macro that passes `Err` to
/// us passes nothing at all, as long as it did not look at a member of Err before.
ObjectPtr ErrObjectForMacro();

/// Lets go of the Err object, before the process ends.
void ReleaseErrors();

}  // namespace qva::calc
