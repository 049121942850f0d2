#include "period/CodesAndNames.h"

namespace qva {

std::vector<CodeAndName> CodesAndNames(const host::Table& table) {
  const Value rows = table.Rows({host::kCodeField, host::kNameField});
  if (rows.Is(Value::Type::Empty)) return {};
  const std::vector<Value>& cells = rows.ToArray().elements;
  std::vector<CodeAndName> list;
  for (std::size_t row = 0; row < cells.size() / 2; ++row) {
    list.push_back({cells[2 * row].ToText(), cells[2 * row + 1].ToText()});
  }
  return list;
}

}  // namespace qva
