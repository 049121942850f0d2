#include "platform/memory/excel/Workbooks.h"

#include "platform/memory/excel/Collection.h"
#include "platform/memory/excel/Workbook.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

/// Excel's own number of sheets in a new workbook.
constexpr int kSheetsInNewWorkbook = 3;

}  // namespace

ClassBuilder Workbooks::Describe() {
  return ClassBuilder(u"Workbooks", "The open workbooks")
      .Get<&Workbooks::Count>(u"Count")
      .Get<&Workbooks::Item>(u"Item", {{u"Index"}})
      .Method<&Workbooks::Add>(u"Add")
      .Method<&Workbooks::Open>(u"Open", {{u"Filename"}})
      .Default(u"Item");
}

std::int32_t Workbooks::Count() {
  return static_cast<std::int32_t>(application_->workbooks.size());
}

ObjectPtr Workbooks::Item(const Value& index) {
  std::shared_ptr<WorkbookData> workbook;
  if (index.Is(Value::Type::Text)) {
    workbook = application_->FindWorkbook(index.ToText());
    if (!workbook) throw SubscriptRefusal();
  } else {
    workbook = application_->workbooks[PositionIn(application_->workbooks.size(), index)];
  }
  return ObjectOf<Workbook>(application_, workbook);
}

ObjectPtr Workbooks::Add() {
  const auto workbook =
      NewWorkbook(u"Book" + NumberText(++application_->workbooks_made), kSheetsInNewWorkbook);
  AddWorkbook(application_, workbook);
  return ObjectOf<Workbook>(application_, workbook);
}

ObjectPtr Workbooks::Open(const std::u16string& file_name) {
  const auto found = application_->files.find(ToLower(file_name));
  if (found == application_->files.end()) {
    throw Refusal(u"'" + file_name +
                  u"' could not be found. Check the spelling of the file name, and verify that the file "
                  u"location is correct.");
  }
  std::shared_ptr<WorkbookData> workbook = application_->FindWorkbook(found->second->name);
  if (workbook) {
    if (!EqualIgnoringCase(workbook->FullName(), file_name)) {
      throw Refusal(u"A document with the name '" + workbook->name +
                    u"' is already open. You cannot open two documents with the same name, even if the "
                    u"documents are in different folders.");
    }
    application_->active_workbook = workbook;
  } else {
    workbook = CopyWorkbook(*found->second);
    AddWorkbook(application_, workbook);
  }
  return ObjectOf<Workbook>(application_, workbook);
}

}  // namespace qva::memory
