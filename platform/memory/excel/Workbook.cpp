#include "platform/memory/excel/Workbook.h"

#include "platform/memory/excel/Application.h"
#include "platform/memory/excel/Calculation.h"
#include "platform/memory/excel/Names.h"
#include "platform/memory/excel/Sheets.h"
#include "platform/memory/excel/VBProject.h"
#include "platform/memory/excel/Windows.h"
#include "platform/memory/excel/Worksheet.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::u16string_view kExtension = u".xls";

}  // namespace

ClassBuilder Workbook::Describe() {
  return ClassBuilder(u"Workbook", "A workbook that is open")
      .Get<&Workbook::Name>(u"Name")
      .Get<&Workbook::FullName>(u"FullName")
      .Get<&Workbook::Path>(u"Path")
      .Property<&Workbook::Saved, &Workbook::SetSaved>(u"Saved")
      .Get<&Workbook::Parent>(u"Parent")
      .Get<&Workbook::Parent>(u"Application")
      .Get<&Workbook::Sheets>(u"Sheets")
      .Get<&Workbook::Sheets>(u"Worksheets")
      .Get<&Workbook::Names>(u"Names")
      .Get<&Workbook::ActiveSheet>(u"ActiveSheet")
      .Get<&Workbook::Windows>(u"Windows")
      .Get<&Workbook::VBProject>(u"VBProject")
      .Method<&Workbook::Activate>(u"Activate")
      .Method<&Workbook::Save>(u"Save")
      .Method<&Workbook::SaveAs>(u"SaveAs", {{u"Filename"}, Optional(u"FileFormat")})
      .Method<&Workbook::Close>(u"Close", {Optional(u"SaveChanges")})
      .Default(u"Name");
}

WorkbookData& Workbook::Open() {
  return *OpenWorkbook(data());
}

std::u16string Workbook::Name() {
  return Open().name;
}

std::u16string Workbook::FullName() {
  return Open().FullName();
}

std::u16string Workbook::Path() {
  return Open().path;
}

bool Workbook::Saved() {
  return Open().saved;
}

void Workbook::SetSaved(bool saved) {
  Open().saved = saved;
}

ObjectPtr Workbook::Parent() {
  Open();
  return ObjectOf<Application>(application(), application());
}

ObjectPtr Workbook::Sheets() {
  Open();
  return MakeRef<memory::Sheets>(application(), data());
}

ObjectPtr Workbook::Names() {
  Open();
  return MakeRef<memory::Names>(application(), data(), nullptr);
}

ObjectPtr Workbook::ActiveSheet() {
  return ObjectOf<Worksheet>(application(), Open().active_sheet);
}

ObjectPtr Workbook::Windows() {
  Open();
  return MakeRef<memory::Windows>(application(), data());
}

ObjectPtr Workbook::VBProject() {
  Open();
  return MakeRef<memory::VBProject>(data());
}

void Workbook::Activate() {
  Open();
  application()->active_workbook = data();
}

void Workbook::Save() {
  const WorkbookData& workbook = Open();
  if (workbook.path.empty()) {
    Write(std::u16string(kDefaultFolder), workbook.name + std::u16string(kExtension));
  } else {
    Write(workbook.path, workbook.name);
  }
}

void Workbook::SaveAs(const std::u16string& file_name, const Value&) {
  Open();
  const std::size_t slash = file_name.find_last_of(u"\\/");
  std::u16string name = slash == file_name.npos ? file_name : file_name.substr(slash + 1);
  if (name.empty()) throw Refusal();
  if (name.find(u'.') == name.npos) name += kExtension;
  const auto other = application()->FindWorkbook(name);
  if (other && other != data()) {
    throw Refusal(u"You cannot save this workbook with the same name as another open workbook or add-in.");
  }
  const std::u16string folder(slash == file_name.npos ? kDefaultFolder
                                                      : std::u16string_view(file_name).substr(0, slash));
  const std::u16string full_name = folder + u"\\" + name;
  if (application()->files.contains(ToLower(full_name)) &&
      !application()->Asks(u"A file named '" + full_name +
                           u"' already exists in this location. Do you want to replace it?")) {
    throw Refusal(u"Method 'SaveAs' of object '_Workbook' failed");
  }
  Write(folder, name);
}

void Workbook::Write(const std::u16string& folder, const std::u16string& name) {
  WorkbookData& workbook = Open();
  if (!application()->HasFolder(folder)) {
    throw Refusal(u"Microsoft Excel cannot access the file '" + folder + u"\\" + name +
                  u"'. The file name or path does not exist.");
  }
  workbook.name = name;
  workbook.path = folder;
  if (application()->calculation != xlCalculationManual || application()->calculate_before_save) {
    Calculate(workbook);
  }
  workbook.saved = true;
  application()->files[ToLower(workbook.FullName())] = CopyWorkbook(workbook);
}

void Workbook::Close(const Value& save_changes) {
  Open();
  if (!save_changes.Is(Value::Type::Missing) && save_changes.ToBoolean()) Save();
  CloseWorkbook(*application(), data());
}

}  // namespace qva::memory
