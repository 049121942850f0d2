#include "platform/memory/excel/Sheets.h"

#include <algorithm>

#include "platform/memory/excel/Collection.h"
#include "platform/memory/excel/Worksheet.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

/// "Sheet<n>" with the first n from the number of sheets on that is free.
std::u16string FreeSheetName(const WorkbookData& workbook) {
  for (auto number = static_cast<long long>(workbook.sheets.size()) + 1;; ++number) {
    std::u16string name = u"Sheet" + NumberText(number);
    if (!workbook.FindSheet(name)) return name;
  }
}

}  // namespace

ClassBuilder Sheets::Describe() {
  return ClassBuilder(u"Sheets", "The sheets of a workbook")
      .Get<&Sheets::Count>(u"Count")
      .Get<&Sheets::Item>(u"Item", {{u"Index"}})
      .Method<&Sheets::Add>(u"Add", {Optional(u"Before"), Optional(u"After")})
      .Default(u"Item");
}

std::int32_t Sheets::Count() {
  return static_cast<std::int32_t>(OpenWorkbook(workbook_)->sheets.size());
}

ObjectPtr Sheets::Item(const Value& index) {
  const WorkbookData& workbook = *OpenWorkbook(workbook_);
  if (!index.Is(Value::Type::Text)) {
    return ObjectOf<Worksheet>(application_, workbook.sheets[PositionIn(workbook.sheets.size(), index)]);
  }
  const auto sheet = workbook.FindSheet(index.ToText());
  if (!sheet) throw SubscriptRefusal();
  return ObjectOf<Worksheet>(application_, sheet);
}

ObjectPtr Sheets::Add(const Value& before, const Value& after) {
  WorkbookData& workbook = *OpenWorkbook(workbook_);
  std::shared_ptr<SheetData> neighbour = workbook.active_sheet;
  const bool is_behind = before.Is(Value::Type::Missing) && !after.Is(Value::Type::Missing);
  const Value& given = is_behind ? after : before;
  if (!given.Is(Value::Type::Missing)) {
    const auto* worksheet = dynamic_cast<const Worksheet*>(given.ToObject().get());
    if (!worksheet) throw AutomationError(kTypeMismatch);
    neighbour = worksheet->data();
  }
  const auto found = std::find(workbook.sheets.begin(), workbook.sheets.end(), neighbour);
  if (found == workbook.sheets.end()) throw Refusal(u"Add method of Sheets class failed");
  const auto index = static_cast<std::size_t>(found - workbook.sheets.begin()) + (is_behind ? 1 : 0);
  const auto sheet = AddSheet(workbook_, index, FreeSheetName(workbook));
  workbook.active_sheet = sheet;
  workbook.Touch();
  return ObjectOf<Worksheet>(application_, sheet);
}

}  // namespace qva::memory
