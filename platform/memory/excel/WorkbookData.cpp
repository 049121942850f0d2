#include "platform/memory/excel/WorkbookData.h"

#include <algorithm>

#include "platform/memory/excel/Formula.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestSheetName = 31;

using NameList = std::vector<std::shared_ptr<NameData>>;

std::shared_ptr<NameData> FindIn(const NameList& names, std::u16string_view wanted) {
  const auto found = std::find_if(names.begin(), names.end(),
                                  [&](const auto& name) { return EqualIgnoringCase(name->name, wanted); });
  return found == names.end() ? nullptr : *found;
}

bool IsNameStart(char16_t c) {
  return IsBasicLetter(c) || c == u'_' || c == u'\\' || c >= 0x80;
}

bool IsNamePart(char16_t c) {
  return IsNameStart(c) || IsDigit(c) || c == u'.';
}

/// Letters, digits, "_", "." and "\", not beginning with a digit, and nothing that reads as a cell.
bool IsValidName(std::u16string_view name) {
  return !name.empty() && name.size() <= kLongestName && IsNameStart(name.front()) &&
         std::all_of(name.begin(), name.end(), IsNamePart) && !ParseArea(name) &&
         !EqualIgnoringCase(name, u"R") && !EqualIgnoringCase(name, u"C");
}

void CopyNames(const NameList& from, NameList& to, const std::shared_ptr<WorkbookData>& workbook,
               const std::shared_ptr<SheetData>& scope) {
  to.clear();
  for (const auto& name : from) {
    auto copy = std::make_shared<NameData>(*name);
    copy->automation = nullptr;
    copy->workbook = workbook;
    copy->scope = scope;
    to.push_back(std::move(copy));
  }
}

}  // namespace

std::u16string WorkbookData::FullName() const {
  return path.empty() ? name : path + u"\\" + name;
}

std::shared_ptr<SheetData> WorkbookData::FindSheet(std::u16string_view sheet_name) const {
  const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const auto& sheet) {
    return EqualIgnoringCase(sheet->name, sheet_name);
  });
  return found == sheets.end() ? nullptr : *found;
}

std::shared_ptr<NameData> WorkbookData::FindName(std::u16string_view wanted, const SheetData* sheet) const {
  if (sheet) {
    if (auto name = FindIn(sheet->names, wanted)) return name;
  }
  return FindIn(names, wanted);
}

std::shared_ptr<WorkbookData> OpenWorkbook(const std::weak_ptr<WorkbookData>& workbook) {
  auto data = workbook.lock();
  if (!data || !data->is_open) throw GoneRefusal();
  return data;
}

std::shared_ptr<WorkbookData> NewWorkbook(std::u16string name, int sheet_count) {
  auto workbook = std::make_shared<WorkbookData>();
  workbook->name = std::move(name);
  workbook->window = std::make_shared<WindowData>();
  workbook->window->workbook = workbook;
  for (int i = 0; i < sheet_count; ++i) {
    AddSheet(workbook, workbook->sheets.size(), u"Sheet" + NumberText(i + 1));
  }
  workbook->active_sheet = workbook->sheets.front();
  return workbook;
}

std::shared_ptr<SheetData> AddSheet(const std::shared_ptr<WorkbookData>& workbook, std::size_t index,
                                    std::u16string name) {
  auto sheet = std::make_shared<SheetData>();
  sheet->workbook = workbook;
  sheet->name = std::move(name);
  workbook->sheets.insert(workbook->sheets.begin() + static_cast<std::ptrdiff_t>(index), sheet);
  return sheet;
}

std::shared_ptr<WorkbookData> CopyWorkbook(const WorkbookData& workbook) {
  auto copy = std::make_shared<WorkbookData>(workbook);
  copy->automation = nullptr;
  copy->application.reset();
  copy->window = std::make_shared<WindowData>(*workbook.window);
  copy->window->automation = nullptr;
  copy->window->workbook = copy;
  copy->window->caption = Value();  // the caption is the window's, not the file's
  for (std::shared_ptr<SheetData>& sheet : copy->sheets) {
    const std::shared_ptr<SheetData> original = sheet;
    sheet = std::make_shared<SheetData>(*original);
    sheet->automation = nullptr;
    sheet->workbook = copy;
    CopyNames(original->names, sheet->names, copy, sheet);
    for (std::shared_ptr<ShapeData>& shape : sheet->shapes) {
      shape = std::make_shared<ShapeData>(*shape);
      shape->automation = nullptr;
      shape->workbook = copy;
    }
    if (copy->active_sheet == original) copy->active_sheet = sheet;
  }
  CopyNames(workbook.names, copy->names, copy, nullptr);
  return copy;
}

std::shared_ptr<NameData> DefineName(const std::shared_ptr<WorkbookData>& workbook,
                                     const std::shared_ptr<SheetData>& scope, std::u16string_view name,
                                     std::u16string refers_to) {
  if (!IsValidName(name)) throw Refusal(u"That name is not valid.");
  CheckFormula(refers_to);
  NameList& names = scope ? scope->names : workbook->names;
  std::shared_ptr<NameData> data = FindIn(names, name);
  if (!data) {
    data = std::make_shared<NameData>();
    data->workbook = workbook;
    if (scope) data->scope = scope;
    const std::u16string lower = ToLower(name);
    const auto behind = std::find_if(names.begin(), names.end(),
                                     [&](const auto& other) { return ToLower(other->name) > lower; });
    names.insert(behind, data);
  }
  data->name = name;
  data->refers_to = std::move(refers_to);
  workbook->Touch();
  return data;
}

void RenameSheet(WorkbookData& workbook, SheetData& sheet, std::u16string_view name) {
  const auto taken = workbook.FindSheet(name);
  if (name.empty() || name.size() > kLongestSheetName || name.find_first_of(u"\\/?*[]:") != name.npos ||
      (taken && taken.get() != &sheet)) {
    throw Refusal(u"The name that you entered for the sheet is invalid.");
  }
  const auto rename_in = [&](const NameList& names) {
    for (const auto& defined : names) {
      defined->refers_to = RenameSheetIn(defined->refers_to, sheet.name, name);
    }
  };
  rename_in(workbook.names);
  for (const auto& other : workbook.sheets) {
    rename_in(other->names);
    other->ForEachCell(kWholeSheet, [&](std::int32_t, std::int32_t, Cell& cell) {
      if (!cell.formula.empty()) cell.formula = RenameSheetIn(cell.formula, sheet.name, name);
    });
  }
  sheet.name = name;
  workbook.Touch();
}

void DeleteName(const std::shared_ptr<NameData>& name) {
  name->is_deleted = true;
  const auto workbook = name->workbook.lock();
  if (!workbook) return;
  const auto scope = name->scope.lock();
  std::erase(scope ? scope->names : workbook->names, name);
  workbook->Touch();
}

std::u16string SheetPrefix(std::u16string_view sheet_name) {
  const bool is_plain = !sheet_name.empty() && IsNameStart(sheet_name.front()) &&
                        std::all_of(sheet_name.begin(), sheet_name.end(), IsNamePart) &&
                        !ParseArea(sheet_name);
  if (is_plain) return std::u16string(sheet_name);
  return u"'" + ReplaceAll(sheet_name, u"'", u"''") + u"'";
}

}  // namespace qva::memory
