#include "platform/calc/PrintMembers.h"

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/excel.h"
#include "platform/member_table.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

constexpr std::u16string_view kPrintArea = u"Print_Area";

/// Stands for a sheet's name "Print_Area": LibreOffice keeps print areas beside the names.
class PrintAreaName : public Described<PrintAreaName> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Name", "The name of a sheet's print area")
        .Get<&PrintAreaName::Name>(u"Name")
        .Property<&PrintAreaName::visible_>(u"Visible");
  }
  explicit PrintAreaName(excel::Worksheet sheet) : sheet_(std::move(sheet)) {}

 private:
  std::u16string Name() { return sheet_.Name() + u"!" + std::u16string(kPrintArea); }

  excel::Worksheet sheet_;
  bool visible_ = true;
};

class SheetNames : public Described<SheetNames> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Names", "A sheet's own names")
        .Get<&SheetNames::Item>(u"Item", {{u"Index"}})
        .Default(u"Item");
  }
  explicit SheetNames(ObjectPtr sheet) : sheet_(std::move(sheet)) {}

  Value Item(Value index) {
    const bool is_text = index.Is(Value::Type::Text);
    if (is_text && EqualIgnoringCase(index.As<std::u16string>(), kPrintArea)) {
      const ObjectPtr page_setup = GetObject(sheet_, u"PageSetup");
      if (Get(page_setup, u"PrintArea").ToText().empty()) throw Refused(u"The sheet has no such name");
      return ObjectPtr(MakeRef<PrintAreaName>(excel::Worksheet(sheet_)));
    }
    return Get(Own(sheet_, Access::Get, u"Names", {}).ToObject(), u"Item", {std::move(index)});
  }

 private:
  ObjectPtr sheet_;
};

/// Makes a sheet the active one, and the former one active again at its end.
class ActiveSheet {
 public:
  explicit ActiveSheet(const ObjectPtr& sheet) {
    former_ = GetObject(GetObject(sheet, u"Application"), u"ActiveSheet");
    Call(sheet, u"Activate");
  }
  ~ActiveSheet() {
    IgnoreFailures([&] { Call(former_, u"Activate"); });
  }
  ActiveSheet(const ActiveSheet&) = delete;
  ActiveSheet& operator=(const ActiveSheet&) = delete;

 private:
  ObjectPtr former_;
};

}  // namespace

Value WorksheetNames(const ObjectPtr& sheet, const Arguments& arguments) {
  const auto names = MakeRef<SheetNames>(sheet);
  return arguments.positional.empty() ? Value(names) : names->Item(arguments.positional[0]);
}

Value PrintOut(const ObjectPtr& sheet, const Arguments& arguments) {
  const ActiveSheet active(sheet);
  return Own(sheet, Access::Call, u"PrintOut", arguments);
}

Value SetDisplayPageBreaks(const ObjectPtr&, const Arguments&) {
  return {};
}

}  // namespace qva::calc
