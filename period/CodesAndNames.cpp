#include "period/CodesAndNames.h"

namespace qva {

std::vector<CodeAndName> CodesAndNames(const host::Table& table) {
  const Value rows = table.Rows({host::kCodeField, host::kNameField});
  if (rows.Is(Value::Type::Empty)) return {};
  const std::vector<Value>& cells = rows.ToArray().elements;
  std::vector<CodeAndName> list;
  for (std::size_t i = 0; i + 1 < cells.size(); i += 2) {
    list.push_back({cells[i].ToText(), cells[i + 1].ToText()});
  }
  return list;
}

}  // namespace qva
