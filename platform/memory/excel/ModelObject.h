// The base of Excel's automation objects over the shared data (SheetData.h).
#pragma once

#include "platform/commandbars/model_object.h"
#include "platform/memory/excel/ApplicationData.h"
#include "platform/memory/excel/Refusals.h"

namespace qva::memory {

template <class T, class Data>
using ModelObject = qva::ModelObject<T, Data, ApplicationData>;

}  // namespace qva::memory
