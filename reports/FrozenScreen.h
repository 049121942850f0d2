// The screen during the operations of a report.
#pragma once

#include "platform/error.h"
#include "platform/excel.h"

namespace qva {

/// Takes a step while the screen stands still, and lets it go on as told, also when the step or the freezing
/// itself fails, whatever for. Raises what the step and Excel raise.
template <class Step>
void WithScreenFrozen(const excel::Application& application, bool updating_afterwards, Step step) {
  try {
    application.SetScreenUpdating(false);
    step();
    application.SetScreenUpdating(updating_afterwards);
  } catch (...) {
    // Also where that itself failed: for want of memory a second attempt may go through.
    IgnoreFailures([&] { application.SetScreenUpdating(updating_afterwards); });
    throw;
  }
}

}  // namespace qva
