#include "platform/calc/RangeAreas.h"

#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <optional>

#include "platform/calc/SheetDocument.h"
#include "platform/calc/SheetProtection.h"
#include "platform/calc/Uno.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoValue.h"
#include "platform/excel.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

/// The rectangles of a range that is made of several; null for a single one.
Reference<css::sheet::XSheetCellRanges> AreasOf(const ObjectPtr& range) {
  return Reference<css::sheet::XSheetCellRanges>(ToAny(Get(range, u"CellRange")), UNO_QUERY);
}

/// The interior or font of all areas of a range. It keeps the range, which LibreOffice's own does not.
class RangePart : public Object {
 public:
  RangePart(ObjectPtr range, std::u16string_view part) : range_(std::move(range)), part_(part) {}

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override {
    try {
      if (!AreasOf(range_).is()) return InvokeOn(range_, access, member, arguments);
      const excel::Areas areas = excel::Range(range_).Areas();
      const std::int32_t count = areas.Count();
      Value result;
      for (std::int32_t n = 1; n <= count; ++n) {
        Value value = InvokeOn(areas.Item(n).object(), access, member, arguments);
        result = n == 1 || value == result ? std::move(value) : Value(Null());
      }
      return result;
    } catch (const css::uno::Exception&) {
      throw ErrorOf(cppu::getCaughtException());
    }
  }
  std::u16string TypeName() const override { return std::u16string(part_); }

 private:
  Value InvokeOn(const ObjectPtr& area, Access access, std::u16string_view member, Arguments& arguments) {
    std::optional<WriteAccess> write_access;
    if (access == Access::Put || access == Access::PutRef) {
      write_access.emplace(SpreadsheetOfRange(area), area, WriteAccess::Change::Format);
    }
    return Own(area, Access::Get, part_, {}).ToObject()->Invoke(access, member, arguments);
  }

  ObjectPtr range_;
  std::u16string_view part_;
};

/// The addresses in a formula such as "=Sheet!$A$1:$B$2,'My sheet'!$D$1", as Range takes them. Names that
/// came with a file have LibreOffice's own "~" between them. Empty when one of them is on another sheet, or
/// the formula is none of addresses alone.
std::u16string AddressesIn(std::u16string_view formula, std::u16string_view sheet) {
  const std::u16string quoted = u"'" + ReplaceAll(std::u16string(sheet), u"'", u"''") + u"'";
  std::u16string addresses;
  if (!formula.starts_with(u'=')) return addresses;
  formula.remove_prefix(1);
  while (!formula.empty()) {
    std::size_t length = 0;
    const bool is_this_sheet = [&] {
      for (const std::u16string_view name : {std::u16string_view(quoted), sheet}) {
        length = name.size() + 1;
        if (formula.size() > length && formula[length - 1] == u'!' &&
            EqualIgnoringCase(formula.substr(0, length - 1), name)) {
          return true;
        }
      }
      return false;
    }();
    if (!is_this_sheet) return {};
    formula.remove_prefix(length);
    const std::u16string_view address = formula.substr(0, formula.find_first_of(u",~"));
    if (address.find_first_not_of(u"$:ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") != address.npos) return {};
    if (!addresses.empty()) addresses += u',';
    addresses += address;
    formula.remove_prefix(std::min(address.size() + 1, formula.size()));
  }
  return addresses;
}

/// What a name of the sheet or its workbook stands for, as Range takes it; empty when there is none.
std::u16string AddressesOfName(const excel::Worksheet& sheet, std::u16string_view name) {
  excel::DefinedName found;
  const bool is_there = IgnoreErrors([&] { found = sheet.Names().Item(name); }) ||
                        IgnoreErrors([&] { found = sheet.Parent().Names().Item(name); });
  return is_there && found ? AddressesIn(found.RefersTo(), sheet.Name()) : std::u16string();
}

}  // namespace

Value RangeInterior(const ObjectPtr& range, const Arguments&) {
  return ObjectPtr(MakeRef<RangePart>(range, u"Interior"));
}

Value RangeFont(const ObjectPtr& range, const Arguments&) {
  return ObjectPtr(MakeRef<RangePart>(range, u"Font"));
}

Value SheetRange(const ObjectPtr& sheet, const Arguments& arguments) {
  Value range;
  try {
    range = Own(sheet, Access::Get, u"Range", arguments);
  } catch (const AutomationError&) {
    const bool is_name = arguments.positional.size() == 1 && arguments.positional[0].Is(Value::Type::Text);
    std::u16string addresses;
    if (is_name) {
      IgnoreErrors([&] {
        addresses = AddressesOfName(excel::Worksheet(sheet), arguments.positional[0].As<std::u16string>());
      });
    }
    if (addresses.empty()) throw;
    return Own(sheet, Access::Get, u"Range", {addresses});
  }
  if (Get(GetObject(range.ToObject(), u"Worksheet"), u"Name") != Get(sheet, u"Name")) {
    throw Refused(u"The name means cells of another sheet");
  }
  return range;
}

Value SetPrintArea(const ObjectPtr& page_setup, const Arguments& arguments) {
  const bool is_one = arguments.positional.size() != 1 || !arguments.positional[0].Is(Value::Type::Text) ||
                      arguments.positional[0].As<std::u16string>().find(u',') == std::u16string::npos;
  if (is_one) return Own(page_setup, Access::Put, u"PrintArea", arguments);
  const ObjectPtr sheet = GetObject(page_setup, u"Parent");
  const ObjectPtr range = GetObject(sheet, u"Range", arguments);
  const Reference<css::sheet::XPrintAreas> print_areas(SpreadsheetOf(sheet), UNO_QUERY_THROW);
  print_areas->setPrintAreas(AreasOf(range)->getRangeAddresses());
  return {};
}

}  // namespace qva::calc
