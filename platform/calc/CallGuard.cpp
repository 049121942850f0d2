#include "platform/calc/CallGuard.h"

#include <algorithm>

#include "platform/calc/Preview.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/Uno.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

struct GuardedMember {
  std::u16string_view type;
  std::u16string_view name;
};

/// What needs the cells in the window.
constexpr GuardedMember kViewMembers[] = {
    {u"Application", u"ActiveCell"}, {u"Application", u"ActiveSheet"}, {u"Application", u"ActiveWindow"},
    {u"Application", u"Range"},      {u"Application", u"Selection"},   {u"Range", u"Activate"},
    {u"Range", u"Select"},           {u"Worksheet", u"Activate"},      {u"Worksheet", u"PrintOut"},
    {u"Worksheet", u"PrintPreview"},
};

void BringCellsBack(const ObjectPtr& object, std::u16string_view type, std::u16string_view member) {
  const bool needs_view = std::ranges::any_of(kViewMembers, [&](const GuardedMember& candidate) {
    return candidate.type == type && EqualIgnoringCase(candidate.name, member);
  });
  if (!needs_view || std::ranges::none_of(WorkbookDocuments(), ShowsPreview)) return;
  if (const auto document = DocumentOf(object); document.is()) LeavePreview(document);
}

bool WasOpenedHidden(const Reference<css::frame::XModel>& document) {
  for (const css::beans::PropertyValue& argument : document->getArgs()) {
    if (argument.Name == "Hidden") return argument.Value == Any(true);
  }
  return false;
}

/// For these, LibreOffice follows the cells' view of a window without looking whether there is one. A
/// workbook that was opened hidden has none as long as nobody shows it; one that was hidden later keeps its
/// own.
void RefuseCrash(const ObjectPtr& window, Access access, std::u16string_view member) {
  const bool is_write = access == Access::Put || access == Access::PutRef;
  const bool needs_view =
      EqualIgnoringCase(member, u"WindowState") || (is_write && EqualIgnoringCase(member, u"Zoom"));
  if (!needs_view) return;
  if (!Get(window, u"Visible").ToBoolean()) {
    const Reference<css::frame::XModel> document = DocumentOf(window);
    if (!document.is() || WasOpenedHidden(document)) throw Refused(u"The window is hidden");
  }
  if (std::ranges::any_of(WorkbookDocuments(), ShowsPreview) && ShowsPreview(DocumentOf(window))) {
    throw Refused(u"The window shows the print preview");
  }
}

/// What a use of a Range's member changes of the cells, if anything.
std::optional<WriteAccess::Change> ChangeBy(Access access, std::u16string_view member) {
  if (access == Access::Get || access == Access::Call) {
    if (EqualIgnoringCase(member, u"ClearContents")) return WriteAccess::Change::Content;
    return {};
  }
  const std::u16string name = ToLower(member);
  const bool is_content = name.empty() || name.starts_with(u"value") || name.starts_with(u"formula");
  return is_content ? WriteAccess::Change::Content : WriteAccess::Change::Format;
}

}  // namespace

CallGuard::CallGuard(UnoObject& object, Access access, std::u16string_view member) {
  const std::u16string& type = object.Type();
  const ObjectPtr pointer(&object);
  if (type == u"Worksheet" || type == u"Workbook") {
    // The name of a sheet that is gone is empty; to ask a workbook that is gone raises its error.
    if (object.InvokeOwn(Access::Get, u"Name", {}) == Value(u"")) throw ObjectGone();
  } else if (type == u"Range") {
    const auto sheet = SpreadsheetOfRange(pointer);
    if (!sheet.is()) throw ObjectGone();
    if (const auto change = ChangeBy(access, member)) write_access_.emplace(sheet, pointer, *change);
  } else if (type == u"Window") {
    RefuseCrash(pointer, access, member);
  }
  BringCellsBack(pointer, type, member);
}

}  // namespace qva::calc
