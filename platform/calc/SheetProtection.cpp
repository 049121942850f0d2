#include "platform/calc/SheetProtection.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <vector>

#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/excel_refusals.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

using css::sheet::XSpreadsheet;

/// A sheet that is protected from the user alone. LibreOffice's object follows its sheet when others come or
/// go before it.
struct OpenToMacros {
  Reference<XSpreadsheet> sheet;
  OUString password;
};

std::vector<OpenToMacros>& AllOpenToMacros() {
  // Never destroyed: at the end of the process LibreOffice's objects are gone before us.
  static auto& sheets = *new std::vector<OpenToMacros>;
  return sheets;
}

bool IsProtected(const Reference<XSpreadsheet>& sheet) {
  return Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->isProtected();
}

/// Takes the protection off; false when the password is a wrong one.
bool Unprotect(const Reference<XSpreadsheet>& sheet, const OUString& password) {
  try {
    Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->unprotect(password);
  } catch (const css::lang::IllegalArgumentException&) {
    return false;
  }
  return true;
}

void ProtectAgain(const Reference<XSpreadsheet>& sheet, const OUString& password) {
  Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->protect(password);
}

Value Argument(const Arguments& arguments, std::size_t position, std::u16string_view name) {
  if (position < arguments.positional.size()) return arguments.positional[position];
  for (const NamedArgument& argument : arguments.named) {
    if (EqualIgnoringCase(argument.name, name)) return argument.value;
  }
  return {};
}

/// Whether one of the cells, or all, cannot be changed on a protected sheet.
bool HoldsLockedCell(const ObjectPtr& range) {
  const OUString name("CellProtection");
  const Any cells = ToAny(Get(range, u"CellRange"));
  const Reference<css::beans::XPropertyState> states(cells, UNO_QUERY_THROW);
  if (states->getPropertyState(name) == css::beans::PropertyState_AMBIGUOUS_VALUE) return true;
  css::util::CellProtection protection;
  Reference<css::beans::XPropertySet>(cells, UNO_QUERY_THROW)->getPropertyValue(name) >>= protection;
  return protection.IsLocked;
}

}  // namespace

Value Protect(const ObjectPtr& sheet, const Arguments& arguments) {
  const Reference<XSpreadsheet> spreadsheet = SpreadsheetOf(sheet);
  const Value given = Argument(arguments, 0, u"Password");
  const OUString password = given.Is(Value::Type::Text) ? ToUno(given.As<std::u16string>()) : OUString();
  const Value from_user_alone = Argument(arguments, 4, u"UserInterfaceOnly");
  std::erase_if(AllOpenToMacros(), [&](const OpenToMacros& other) {
    return !AreOneSheet(other.sheet, other.sheet) || AreOneSheet(other.sheet, spreadsheet);
  });
  // LibreOffice leaves a protection alone that is there, which may have another password.
  const bool is_right = !IsProtected(spreadsheet) || Unprotect(spreadsheet, password);
  static_cast<UnoObject&>(*sheet).InvokeOwn(Access::Call, u"Protect", arguments);
  if (from_user_alone == Value(true) && is_right) AllOpenToMacros().push_back({spreadsheet, password});
  return {};
}

WriteAccess::WriteAccess(const Reference<XSpreadsheet>& sheet, const ObjectPtr& range, Change change)
    : sheet_(sheet) {
  if (!sheet.is()) throw ObjectGone();
  if (!IsProtected(sheet)) return;
  const auto found = std::ranges::find_if(
      AllOpenToMacros(), [&](const OpenToMacros& open) { return AreOneSheet(open.sheet, sheet); });
  if (found != AllOpenToMacros().end() && Unprotect(sheet, found->password)) {
    password_ = found->password;
    return;
  }
  if (change == Change::Content && !HoldsLockedCell(range)) return;
  throw Refused(std::u16string(excel::kProtectedRefusal));
}

WriteAccess::~WriteAccess() {
  if (password_) IgnoreFailures([&] { ProtectAgain(sheet_, *password_); });  // the workbook may be gone
}

}  // namespace qva::calc
