#include "platform/calc/toolbars/ToolbarMembers.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XViewFreezable.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>

#include "platform/calc/Preview.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/SystemPaths.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/calc/toolbars/DocumentBars.h"
#include "platform/commandbars/CommandBars.h"
#include "platform/excel.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

constexpr char kShowsMarks[] = "ShowNotes";

/// An argument by its place or name; Missing when it was left out.
Value Argument(const Arguments& arguments, std::size_t position, std::u16string_view name) {
  if (position < arguments.positional.size()) return arguments.positional[position];
  for (const NamedArgument& argument : arguments.named) {
    if (EqualIgnoringCase(argument.name, name)) return argument.value;
  }
  return Missing{};
}

/// The settings of the cells' window of an Application's own workbook, whichever is in front.
Reference<css::beans::XPropertySet> ViewSettings(const ObjectPtr& application) {
  const Reference<css::frame::XModel> document = DocumentBars::Of(application)->document();
  LeavePreview(document);
  return Reference<css::beans::XPropertySet>(document->getCurrentController(), UNO_QUERY_THROW);
}

/// Application.CommandBars: the set of bars of the workbook whose macros run, or one of them.
Value CommandBars(const ObjectPtr& application, const Arguments& arguments) {
  const ObjectPtr bars = MakeRef<commandbars::CommandBars>(DocumentBars::Of(application));
  const bool is_one = !arguments.positional.empty() || !arguments.named.empty();
  return is_one ? Get(bars, u"Item", arguments) : Value(bars);
}

/// Application.OnKey(Key, Procedure) for that workbook. LibreOffice's own forgets keys only by half.
Value OnKey(const ObjectPtr& application, const Arguments& arguments) {
  const std::u16string key = Argument(arguments, 0, u"Key").ToText();
  const Value procedure = Argument(arguments, 1, u"Procedure");
  const auto bars = DocumentBars::Of(application);
  if (procedure.Is(Value::Type::Missing)) {
    bars->ResetKey(key);
  } else {
    bars->BindKey(key, procedure.ToText());
  }
  return {};
}

/// Application.DisplayCommentIndicator: the marks of comments in that workbook's window. Comments that are
/// shown in full besides (xlCommentAndIndicator) stay LibreOffice's own affair: the mark alone is switched.
Value DisplayCommentIndicator(const ObjectPtr& application, const Arguments&) {
  bool shows_marks = false;
  ViewSettings(application)->getPropertyValue(kShowsMarks) >>= shows_marks;
  return std::int32_t{shows_marks ? xlCommentIndicatorOnly : xlNoIndicator};
}

Value SetDisplayCommentIndicator(const ObjectPtr& application, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  const bool shows_marks = arguments.positional[0].ToInt32() != xlNoIndicator;
  ViewSettings(application)->setPropertyValue(kShowsMarks, Any(shows_marks));
  return {};
}

/// Window.FreezePanes = …: freezes what is above and left of the active cell, where LibreOffice's own takes
/// the middle of the window.
Value SetFreezePanes(const ObjectPtr& window, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  if (!arguments.positional[0].ToBoolean()) {
    return static_cast<UnoObject&>(*window).InvokeOwn(Access::Put, u"FreezePanes", arguments);
  }
  const excel::Application application(GetObject(window, u"Application"));
  const ObjectPtr cell = application.ActiveCell().object();
  const auto document = DocumentOf(application.ActiveSheet().object());
  const Reference<css::sheet::XViewFreezable> view(document->getCurrentController(), UNO_QUERY_THROW);
  if (!view->hasFrozenPanes()) {
    view->freezeAtPosition(Get(cell, u"Column").ToInt32() - 1, Get(cell, u"Row").ToInt32() - 1);
  }
  return {};
}

/// Application.Help(HelpFile, HelpContextID): shows the file with the program that the desktop has for it, or
/// index.html of a folder beside it that has its name without the extension, where there is one;
/// the topic is not looked up. Raises 1004 when there is no such file or no such program.
Value Help(const ObjectPtr&, const Arguments& arguments) {
  const Value file = Argument(arguments, 0, u"HelpFile");
  const std::u16string name = file.Is(Value::Type::Missing) ? std::u16string() : file.ToText();
  const std::filesystem::path path = SystemPath(name);
  // Few desktops here can show a Windows help file, and each can show pages.
  const std::filesystem::path pages = std::filesystem::path(path).replace_extension() / "index.html";
  const bool has_pages = std::filesystem::exists(pages);
  if (name.empty() || !(has_pages || std::filesystem::exists(path)))
    throw Refused(u"There is no help file '" + name + u"'");
  css::system::SystemShellExecute::create(Context())->execute(FileUrl(has_pages ? pages : path), "", 0);
  return {};
}

/// Shape.Copy for a shape that is a picture: it then is what PasteFace of the same workbook's buttons takes.
/// Raises 1004 for any other shape.
Value CopyShape(const ObjectPtr& shape, const Arguments&) {
  const std::u16string name = Get(shape, u"Name").ToText();
  const ObjectPtr sheet = GetObject(shape, u"Parent");
  ObjectPtr page = GetObject(sheet, u"Cells", {1, 1});
  for (const std::u16string_view step : {u"CellRange", u"Spreadsheet", u"DrawPage"})
    page = GetObject(page, step);
  const Reference<css::container::XIndexAccess> shapes(ToAny(page), UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < shapes->getCount(); ++i) {
    const Reference<css::container::XNamed> candidate(shapes->getByIndex(i), UNO_QUERY_THROW);
    if (FromUno(candidate->getName()) != name) continue;
    const Reference<css::beans::XPropertySet> properties(candidate, UNO_QUERY_THROW);
    if (!properties->getPropertySetInfo()->hasPropertyByName("Graphic")) break;
    const Reference<css::graphic::XGraphic> picture(properties->getPropertyValue("Graphic"), UNO_QUERY_THROW);
    DocumentBars::Of(GetObject(sheet, u"Application"))->CopyPicture(name, picture);
    return {};
  }
  throw Refused(u"The shape '" + name + u"' is no picture");
}

constexpr Override kOverrides[] = {
    {u"Application", u"CommandBars", Use::Read, &CommandBars},
    {u"Application", u"DisplayCommentIndicator", Use::Read, &DisplayCommentIndicator},
    {u"Application", u"DisplayCommentIndicator", Use::Write, &SetDisplayCommentIndicator},
    {u"Application", u"Help", Use::Read, &Help},
    {u"Application", u"OnKey", Use::Read, &OnKey},
    {u"Shape", u"Copy", Use::Read, &CopyShape},
    {u"Window", u"FreezePanes", Use::Write, &SetFreezePanes},
};

}  // namespace

std::span<const Override> ToolbarOverrides() {
  return kOverrides;
}

}  // namespace qva::calc
