#include "platform/memory/excel/PageSetup.h"

#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::u16string_view kPrintAreaName = u"Print_Area";

}  // namespace

ClassBuilder PageSetup::Describe() {
  return ClassBuilder(u"PageSetup", "How a sheet is printed")
      .Property<&PageSetup::PrintArea, &PageSetup::SetPrintArea>(u"PrintArea")
      .Property<&PageSetup::PrintGridlines, &PageSetup::SetPrintGridlines>(u"PrintGridlines");
}

std::u16string PageSetup::PrintArea() {
  return PrintAreaOf(sheet_);
}

void PageSetup::SetPrintArea(const std::u16string& address) {
  const auto workbook = OpenWorkbook(sheet_->workbook);
  if (address.empty()) {
    const auto name = workbook->FindName(kPrintAreaName, sheet_.get());
    if (name && name->scope.lock() == sheet_) DeleteName(name);
    return;
  }
  const auto cells = FindReference(address, *workbook, sheet_);
  if (!cells || cells->sheet != sheet_) {
    throw Refusal(u"Unable to set the PrintArea property of the PageSetup class");
  }
  DefineName(workbook, sheet_, kPrintAreaName, ReferenceFormula(*cells));
}

std::u16string PrintAreaOf(const std::shared_ptr<SheetData>& sheet) {
  const auto workbook = OpenWorkbook(sheet->workbook);
  for (const auto& name : sheet->names) {
    if (!EqualIgnoringCase(name->name, kPrintAreaName)) continue;
    const auto cells = FindReference(name->refers_to, *workbook, sheet);
    return cells ? AreasText(cells->areas) : std::u16string();
  }
  return {};
}

bool PageSetup::PrintGridlines() {
  OpenWorkbook(sheet_->workbook);
  return sheet_->print_gridlines;
}

void PageSetup::SetPrintGridlines(bool on) {
  OpenWorkbook(sheet_->workbook)->saved = false;
  sheet_->print_gridlines = on;
}

}  // namespace qva::memory
