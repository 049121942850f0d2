#include "platform/memory/excel/Names.h"

#include <algorithm>

#include "platform/memory/excel/Name.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

/// A text as "Sheet1!Name", parted.
struct ScopedName {
  std::u16string sheet;  ///< without quotes; empty when there is none
  std::u16string name;
};

ScopedName Part(std::u16string_view text) {
  const std::size_t mark = text.rfind(u'!');
  if (mark == text.npos) return {u"", std::u16string(text)};
  std::u16string_view sheet = text.substr(0, mark);
  const std::u16string_view name = text.substr(mark + 1);
  if (sheet.size() < 2 || sheet.front() != u'\'' || sheet.back() != u'\'') {
    return {std::u16string(sheet), std::u16string(name)};
  }
  return {ReplaceAll(sheet.substr(1, sheet.size() - 2), u"''", u"'"), std::u16string(name)};
}

}  // namespace

ClassBuilder Names::Describe() {
  return ClassBuilder(u"Names", "The defined names of a workbook or sheet")
      .Get<&Names::Count>(u"Count")
      .Get<&Names::Item>(u"Item", {{u"Index"}})
      .Method<&Names::Add>(u"Add", {{u"Name"}, {u"RefersTo"}, Optional(u"Visible", true)})
      .Default(u"Item");
}

std::vector<std::shared_ptr<NameData>> Names::All() const {
  OpenWorkbook(workbook_);
  if (sheet_) return sheet_->names;
  std::vector<std::shared_ptr<NameData>> all = workbook_->names;  // in their order already
  const std::size_t own = all.size();
  for (const auto& sheet : workbook_->sheets) all.insert(all.end(), sheet->names.begin(), sheet->names.end());
  if (all.size() == own) return all;
  std::stable_sort(all.begin(), all.end(),
                   [](const auto& a, const auto& b) { return ToLower(a->name) < ToLower(b->name); });
  return all;
}

std::int32_t Names::Count() {
  return static_cast<std::int32_t>(All().size());
}

ObjectPtr Names::Item(const Value& index) {
  const auto all = All();
  std::shared_ptr<NameData> found;
  if (index.Is(Value::Type::Text)) {
    const ScopedName wanted = Part(index.ToText());
    const auto scope = wanted.sheet.empty() ? sheet_ : workbook_->FindSheet(wanted.sheet);
    const auto match = std::find_if(all.begin(), all.end(), [&](const auto& name) {
      return name->scope.lock() == scope && EqualIgnoringCase(name->name, wanted.name);
    });
    if (match != all.end()) found = *match;
  } else {
    const std::int32_t number = index.ToInt32();
    if (number >= 1 && static_cast<std::size_t>(number) <= all.size()) {
      found = all[static_cast<std::size_t>(number) - 1];
    }
  }
  if (!found) throw Refusal();
  return ObjectOf<Name>(application_, found);
}

ObjectPtr Names::Add(const std::u16string& name, const Value& refers_to, bool visible) {
  OpenWorkbook(workbook_);
  const ScopedName wanted = Part(name);
  std::shared_ptr<SheetData> scope = sheet_;
  if (!wanted.sheet.empty()) {
    scope = workbook_->FindSheet(wanted.sheet);
    if (!scope) throw Refusal(u"That name is not valid.");
  }
  const auto data = DefineName(workbook_, scope, wanted.name, RefersToFormula(refers_to));
  data->visible = visible;
  return ObjectOf<Name>(application_, data);
}

}  // namespace qva::memory
