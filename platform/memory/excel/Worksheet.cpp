#include "platform/memory/excel/Worksheet.h"

#include <algorithm>

#include "platform/memory/excel/Application.h"
#include "platform/memory/excel/Calculation.h"
#include "platform/memory/excel/Names.h"
#include "platform/memory/excel/PageSetup.h"
#include "platform/memory/excel/Range.h"
#include "platform/memory/excel/Shapes.h"
#include "platform/memory/excel/Workbook.h"

namespace qva::memory {
namespace {

std::u16string PasswordText(const Value& password) {
  return password.Is(Value::Type::Missing) ? std::u16string() : password.ToText();
}

}  // namespace

ClassBuilder Worksheet::Describe() {
  return ClassBuilder(u"Worksheet", "A sheet of cells")
      .Property<&Worksheet::Name, &Worksheet::SetName>(u"Name")
      .Get<&Worksheet::Application>(u"Application")
      .Get<&Worksheet::Parent>(u"Parent")
      .Get<&Worksheet::Index>(u"Index")
      .Property<&Worksheet::Visible, &Worksheet::SetVisible>(u"Visible")
      .Get<&Worksheet::Range>(u"Range", {{u"Cell1"}, Optional(u"Cell2")})
      .Get<&Worksheet::Cells>(u"Cells", {Optional(u"RowIndex"), Optional(u"ColumnIndex")})
      .Get<&Worksheet::Rows>(u"Rows", {Optional(u"Index")})
      .Get<&Worksheet::Columns>(u"Columns", {Optional(u"Index")})
      .Get<&Worksheet::UsedRange>(u"UsedRange")
      .Get<&Worksheet::PageSetup>(u"PageSetup")
      .Get<&Worksheet::Names>(u"Names")
      .Get<&Worksheet::Shapes>(u"Shapes")
      .Method<&Worksheet::Activate>(u"Activate")
      .Method<&Worksheet::Activate>(u"Select")
      .Method<&Worksheet::Calculate>(u"Calculate")
      .Method<&Worksheet::Protect>(
          u"Protect", {Optional(u"Password"), Optional(u"DrawingObjects"), Optional(u"Contents", true),
                       Optional(u"Scenarios"), Optional(u"UserInterfaceOnly")})
      .Method<&Worksheet::Unprotect>(u"Unprotect", {Optional(u"Password")})
      .Method<&Worksheet::PrintOut>(
          u"PrintOut", {Optional(u"From"), Optional(u"To"), Optional(u"Copies", std::int32_t{1})})
      .Method<&Worksheet::PrintPreview>(u"PrintPreview")
      .Get<&Worksheet::ProtectContents>(u"ProtectContents")
      .Property<&Worksheet::DisplayPageBreaks, &Worksheet::SetDisplayPageBreaks>(u"DisplayPageBreaks");
}

SheetData& Worksheet::Open() {
  OpenWorkbook(data()->workbook);
  return *data();
}

std::u16string Worksheet::Name() {
  return Open().name;
}

void Worksheet::SetName(const std::u16string& name) {
  RenameSheet(*OpenWorkbook(data()->workbook), *data(), name);
}

ObjectPtr Worksheet::Application() {
  Open();
  return ObjectOf<memory::Application>(application(), application());
}

ObjectPtr Worksheet::Parent() {
  return ObjectOf<Workbook>(application(), OpenWorkbook(data()->workbook));
}

std::int32_t Worksheet::Index() {
  const auto workbook = OpenWorkbook(data()->workbook);
  const auto found = std::find(workbook->sheets.begin(), workbook->sheets.end(), data());
  return static_cast<std::int32_t>(found - workbook->sheets.begin()) + 1;
}

std::int32_t Worksheet::Visible() {
  return Open().visible;
}

void Worksheet::SetVisible(const Value& visible) {
  const std::int32_t state = visible.ToInt32();
  if (state != xlSheetVisible && state != xlSheetHidden && state != xlSheetVeryHidden) throw Refusal();
  const auto workbook = OpenWorkbook(data()->workbook);
  if (state != xlSheetVisible) {
    const auto other = std::find_if(
        workbook->sheets.begin(), workbook->sheets.end(),
        [this](const auto& sheet) { return sheet != data() && sheet->visible == xlSheetVisible; });
    if (other == workbook->sheets.end()) {
      throw Refusal(u"Unable to set the Visible property of the Worksheet class");
    }
    if (workbook->active_sheet == data()) workbook->active_sheet = *other;
  }
  data()->visible = state;
  workbook->saved = false;
}

ObjectPtr Worksheet::Range(const Value& cell1, const Value& cell2) {
  const auto reference = FindCells(*OpenWorkbook(data()->workbook), data(), cell1, cell2);
  if (!reference || reference->sheet != data()) throw Refusal();
  return MakeRef<memory::Range>(application(), *reference);
}

ObjectPtr Worksheet::Cells(const Value& row, const Value& column) {
  Open();
  const auto all = MakeRef<memory::Range>(application(), Reference{data(), {kWholeSheet}});
  return row.Is(Value::Type::Missing) ? ObjectPtr(all) : all->Item(row, column);
}

ObjectPtr Worksheet::Rows(const Value& index) {
  Open();
  return MakeRef<memory::Range>(application(), Reference{data(), {kWholeSheet}})->Rows(index);
}

ObjectPtr Worksheet::Columns(const Value& index) {
  Open();
  return MakeRef<memory::Range>(application(), Reference{data(), {kWholeSheet}})->Columns(index);
}

ObjectPtr Worksheet::UsedRange() {
  return MakeRef<memory::Range>(application(), Reference{data(), {Open().UsedArea()}});
}

ObjectPtr Worksheet::PageSetup() {
  Open();
  return MakeRef<memory::PageSetup>(data());
}

ObjectPtr Worksheet::Names() {
  return MakeRef<memory::Names>(application(), OpenWorkbook(data()->workbook), data());
}

ObjectPtr Worksheet::Shapes() {
  Open();
  return MakeRef<memory::Shapes>(application(), data());
}

void Worksheet::Activate() {
  const auto workbook = OpenWorkbook(data()->workbook);
  if (data()->visible != xlSheetVisible) throw Refusal(u"Activate method of Worksheet class failed");
  workbook->active_sheet = data();
  application()->active_workbook = workbook;
}

void Worksheet::Calculate() {
  CalculateIfManual(Open(), kWholeSheet);
}

void Worksheet::Protect(const Value& password, const Value&, bool contents, const Value&,
                        bool user_interface_only) {
  Open().protection = {contents, user_interface_only, PasswordText(password)};
}

void Worksheet::Unprotect(const Value& password) {
  Protection& protection = Open().protection;
  if (protection.is_on && protection.password != PasswordText(password)) {
    throw Refusal(
        u"The password you supplied is not correct. Verify that the CAPS LOCK key is off and be sure to use "
        u"the correct capitalization.");
  }
  protection = {};
}

void Worksheet::PrintOut(const Value& from, const Value& to, std::int32_t copies) {
  PrintJob job{.sheet = Open().name, .print_area = PrintAreaOf(data()), .copies = copies};
  if (!from.Is(Value::Type::Missing)) job.from = from.ToInt32();
  if (!to.Is(Value::Type::Missing)) job.to = to.ToInt32();
  const bool has_pages = from.Is(Value::Type::Missing) || job.from >= 1;
  if (data()->visible != xlSheetVisible || !has_pages || (job.to != 0 && job.to < job.from) || copies < 1) {
    throw Refusal(u"PrintOut method of Worksheet class failed");
  }
  application()->print_jobs.push_back(std::move(job));
}

void Worksheet::PrintPreview() {
  if (Open().visible != xlSheetVisible) throw Refusal(u"PrintPreview method of Worksheet class failed");
  application()->print_jobs.push_back(
      {.sheet = data()->name, .print_area = PrintAreaOf(data()), .is_preview = true});
}

bool Worksheet::ProtectContents() {
  return Open().protection.is_on;
}

bool Worksheet::DisplayPageBreaks() {
  return Open().display_page_breaks;
}

void Worksheet::SetDisplayPageBreaks(bool on) {
  Open().display_page_breaks = on;
}

}  // namespace qva::memory
