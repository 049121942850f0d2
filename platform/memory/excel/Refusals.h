// How Excel refuses.
#pragma once

#include "platform/excel_refusals.h"

namespace qva::memory {

using excel::GoneRefusal;
using excel::kExcelSource;
using excel::kObjectGone;
using excel::Refusal;
using excel::SubscriptRefusal;

}  // namespace qva::memory
