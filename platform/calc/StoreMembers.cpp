#include "platform/calc/StoreMembers.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/vba/XVBACompatibility.hpp>

#include "platform/calc/SheetDocument.h"
#include "platform/calc/SystemPaths.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/member_table.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

constexpr std::u16string_view kStandardLibrary = u"Standard";
constexpr std::u16string_view kDefaultProject = u"VBAProject";  ///< Excel's name of a project without one

/// A document's project of macros as far as its name.
class Project : public Described<Project> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"VBProject", "A document's project of macros").Property<&Project::name_>(u"Name");
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

/// The arguments with the first one, a path of Windows' kind, as the system has it. Others LibreOffice knows.
Arguments WithSystemPath(Arguments arguments) {
  Value* path = nullptr;
  if (!arguments.positional.empty()) path = &arguments.positional[0];
  for (NamedArgument& argument : arguments.named) {
    if (EqualIgnoringCase(argument.name, u"Filename")) path = &argument.value;
  }
  if (!path || !path->Is(Value::Type::Text)) return arguments;
  const std::u16string text = path->As<std::u16string>();
  const bool is_windows = text.find(u'\\') != text.npos || text.find(u':') == 1;
  if (is_windows) *path = FromUtf8(SystemPath(text).string());
  return arguments;
}

}  // namespace

Value WithFolder(const ObjectPtr& workbook, Value name) {
  const std::u16string path = PathOf(workbook);
  if (path.empty()) return name;
  return DrivePath(ToUtf8(path));
}

Value VBProject(const ObjectPtr& workbook, const Arguments&) {
  const Reference<css::beans::XPropertySet> document(DocumentOf(workbook), UNO_QUERY_THROW);
  const Any libraries = document->getPropertyValue("BasicLibraries");
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

}  // namespace qva::calc
