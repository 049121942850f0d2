// What a budget is made of.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/ado_constants.h"

namespace qva {

/// A field of the budget recordset, which is also a column of the table on the sheet.
struct BudgetField {
  std::u16string_view name;
  ado::DataTypeEnum type;
  std::int32_t size;
  ado::FieldAttributeEnum attributes;
};
inline constexpr std::array<BudgetField, 7> kBudgetFields = {
    {{u"BookCode", ado::adVarChar, 25, ado::adFldUnspecified},
     {u"PlanCode", ado::adVarChar, 25, ado::adFldUnspecified},
     {u"PlanIsBudget", ado::adInteger, 0, ado::adFldUnspecified},
     {u"BudgetCurrDocId", ado::adCurrency, 0, ado::adFldIsNullable},
     {u"BudgetCurrDocCode", ado::adVarChar, 250, ado::adFldIsNullable},
     {u"BudgetLastDocId", ado::adCurrency, 0, ado::adFldIsNullable},
     {u"BudgetLastDocCode", ado::adVarChar, 250, ado::adFldIsNullable}}};

}  // namespace qva
