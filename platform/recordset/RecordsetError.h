// How a recordset refuses: ADO's numbers, sources and texts.
#pragma once

#include <string_view>

#include "platform/ado_constants.h"
#include "platform/error.h"

namespace qva::recordset {

inline constexpr std::u16string_view kRecordsetSource = u"ADODB.Recordset";
inline constexpr std::u16string_view kFieldsSource = u"ADODB.Fields";
inline constexpr std::u16string_view kFieldSource = u"ADODB.Field";

/// One of ADO's errors with ADO's own text for it.
AutomationError Refusal(ado::ErrorValueEnum number, std::u16string_view source = kRecordsetSource);

}  // namespace qva::recordset
