#include "platform/calc/ReportMembers.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/vba/XVBACompatibility.hpp>

#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/excel.h"
#include "platform/member_table.h"
#include "platform/posix/PosixFiles.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

constexpr std::u16string_view kPrintArea = u"Print_Area";
constexpr std::u16string_view kStandardLibrary = u"Standard";
constexpr std::u16string_view kDefaultProject = u"VBAProject";  ///< Excel's name of a project without one

/// Stands for a sheet's name "Print_Area": LibreOffice keeps print areas beside the names.
class PrintAreaName : public Described<PrintAreaName> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription description = ClassBuilder(u"Name", "The name of a sheet's print area")
                                                    .Get<&PrintAreaName::Name>(u"Name")
                                                    .Property<&PrintAreaName::visible_>(u"Visible");
    return description;
  }
  explicit PrintAreaName(excel::Worksheet sheet) : sheet_(std::move(sheet)) {}

 private:
  std::u16string Name() { return sheet_.Name() + u"!" + std::u16string(kPrintArea); }

  excel::Worksheet sheet_;
  bool visible_ = true;
};

class SheetNames : public Described<SheetNames> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription description = ClassBuilder(u"Names", "A sheet's own names")
                                                    .Get<&SheetNames::Item>(u"Item", {{u"Index"}})
                                                    .Default(u"Item");
    return description;
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

/// A document's project of macros as far as its name.
class Project : public Described<Project> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription description =
        ClassBuilder(u"VBProject", "A document's project of macros").Property<&Project::name_>(u"Name");
    return description;
  }
  explicit Project(std::u16string name) : name_(std::move(name)) {}

 private:
  std::u16string name_;
};

/// Nothing for a workbook that was never saved.
std::u16string PathOf(const ObjectPtr& workbook) {
  const std::u16string folder = Get(workbook, u"Path").ToText();
  return folder.empty() ? folder : folder + u"/" + Get(workbook, u"Name").ToText();
}

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

/// The arguments with the first one, a path of Windows' kind, as the system has it. Others LibreOffice knows.
Arguments WithSystemPath(Arguments arguments) {
  const auto* files = dynamic_cast<const PosixFiles*>(GetServices().files);
  Value* path = nullptr;
  if (!arguments.positional.empty()) path = &arguments.positional[0];
  for (NamedArgument& argument : arguments.named) {
    if (EqualIgnoringCase(argument.name, u"Filename")) path = &argument.value;
  }
  if (!files || !path || !path->Is(Value::Type::Text)) return arguments;
  const std::u16string text = path->As<std::u16string>();
  const bool is_windows = text.find(u'\\') != text.npos || text.find(u':') == 1;
  if (is_windows) *path = FromUtf8(files->SystemPath(text).string());
  return arguments;
}

struct CellError {
  std::int32_t code;  ///< LibreOffice's
  XlCVError error;
  std::u16string_view text;
};
constexpr CellError kCellErrors[] = {
    {32767, xlErrNA, u"#N/A"},   {532, xlErrDiv0, u"#DIV/0!"}, {519, xlErrValue, u"#VALUE!"},
    {524, xlErrRef, u"#REF!"},   {525, xlErrName, u"#NAME?"},  {503, xlErrNum, u"#NUM!"},
    {521, xlErrNull, u"#NULL!"},
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

Value WithFolder(const ObjectPtr& workbook, Value name) {
  const std::u16string path = PathOf(workbook);
  if (path.empty()) return name;
  const auto* files = dynamic_cast<const PosixFiles*>(GetServices().files);
  return files ? files->DrivePath(ToUtf8(path)) : path;
}

Value VBProject(const ObjectPtr& workbook, const Arguments&) {
  const Reference<css::beans::XPropertySet> document(DocumentOf(workbook), UNO_QUERY_THROW);
  const css::uno::Any libraries = document->getPropertyValue("BasicLibraries");
  const Reference<css::script::vba::XVBACompatibility> project(libraries, UNO_QUERY);
  std::u16string name = project.is() ? FromUno(project->getProjectName()) : std::u16string();
  if (name.empty()) {
    name = kDefaultProject;
    for (const OUString& library :
         Reference<css::script::XLibraryContainer>(libraries, UNO_QUERY_THROW)->getElementNames()) {
      if (FromUno(library) == kStandardLibrary) continue;
      name = FromUno(library);
      break;
    }
  }
  return ObjectPtr(MakeRef<Project>(std::move(name)));
}

Value SaveAs(const ObjectPtr& workbook, const Arguments& arguments) {
  return Own(workbook, Access::Call, u"SaveAs", WithSystemPath(arguments));
}

// LibreOffice's own only asks for it: the file would get what the workbook holds when the macro gives way.
Value Save(const ObjectPtr& workbook, const Arguments&) {
  Reference<css::frame::XStorable>(DocumentOf(workbook), UNO_QUERY_THROW)->store();
  return {};
}

Value Open(const ObjectPtr& workbooks, const Arguments& arguments) {
  return Own(workbooks, Access::Call, u"Open", WithSystemPath(arguments));
}

Value WithCellError(const ObjectPtr& range, Value value) {
  if (value != Value(0.0)) return value;
  const ObjectPtr cell = GetObject(GetObject(range, u"CellRange"), u"getCellByPosition", {0, 0});
  const std::int32_t code = Call(cell, u"getError").ToInt32();
  return code == 0 ? value : CellErrorOf(code);
}

Value CellErrorOf(std::int32_t code) {
  for (const CellError& known : kCellErrors) {
    if (known.code == code) return ErrorValue{known.error};
  }
  return ErrorValue{xlErrValue};
}

Value SetCellValue(const ObjectPtr& range, const Arguments& arguments) {
  Arguments changed = arguments;
  Value& value = changed.positional.back();
  if (value.Is(Value::Type::Error)) {
    const std::int32_t error = value.As<ErrorValue>().code;
    for (const CellError& known : kCellErrors) {
      if (known.error == error) value = known.text;
    }
  }
  return Own(range, Access::Put, u"Value", changed);
}

}  // namespace qva::calc
