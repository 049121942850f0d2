#include "platform/memory/excel/Name.h"

#include "platform/memory/excel/CellInput.h"
#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/Range.h"
#include "platform/text.h"

namespace qva::memory {

ClassBuilder Name::Describe() {
  return ClassBuilder(u"Name", "A defined name")
      .Get<&Name::Text>(u"Name")
      .Property<&Name::RefersTo, &Name::SetRefersTo>(u"RefersTo")
      .Get<&Name::RefersToRange>(u"RefersToRange")
      .Property<&Name::Visible, &Name::SetVisible>(u"Visible")
      .Method<&Name::Delete>(u"Delete")
      .Get<&Name::RefersTo>(u"_Default")
      .Default(u"_Default");
}

std::shared_ptr<WorkbookData> Name::Open() {
  if (data()->is_deleted) throw GoneRefusal();
  return OpenWorkbook(data()->workbook);
}

std::u16string Name::Text() {
  Open();
  const auto scope = data()->scope.lock();
  return scope ? SheetPrefix(scope->name) + u"!" + data()->name : data()->name;
}

std::u16string Name::RefersTo() {
  Open();
  return data()->refers_to;
}

void Name::SetRefersTo(const Value& refers_to) {
  const auto workbook = Open();
  std::u16string formula = RefersToFormula(refers_to);
  CheckFormula(formula);
  data()->refers_to = std::move(formula);
  workbook->Touch();
}

ObjectPtr Name::RefersToRange() {
  const auto workbook = Open();
  const auto scope = data()->scope.lock();
  const auto cells = FindReference(data()->refers_to, *workbook, scope ? scope : workbook->active_sheet);
  if (!cells) throw Refusal();
  return MakeRef<Range>(application(), *cells);
}

bool Name::Visible() {
  Open();
  return data()->visible;
}

void Name::SetVisible(bool visible) {
  Open()->saved = false;
  data()->visible = visible;
}

void Name::Delete() {
  Open();
  DeleteName(data());
}

std::u16string RefersToFormula(const Value& refers_to) {
  if (refers_to.Is(Value::Type::Object)) {
    const auto* range = dynamic_cast<const Range*>(refers_to.ToObject().get());
    if (range) return ReferenceFormula(range->reference());
  }
  const CellEntry entry = ReadEntry(refers_to, false);
  if (!entry.formula.empty()) return entry.formula;
  if (entry.value.Is(Value::Type::Text)) {
    return u"=\"" + ReplaceAll(entry.value.ToText(), u"\"", u"\"\"") + u"\"";
  }
  return u"=" + (entry.value.Is(Value::Type::Empty) ? u"\"\"" : ConstantText(entry.value));
}

}  // namespace qva::memory
