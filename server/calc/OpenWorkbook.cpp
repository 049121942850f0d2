#include "server/calc/OpenWorkbook.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/XEmbeddedScripts.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XInvocation.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/ScriptFrameworkErrorException.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <vector>

#include "period/CRepPeriod.h"
#include "platform/calc/OwnModule.h"
#include "platform/calc/SystemPaths.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/date.h"
#include "platform/text.h"
#include "server/calc/entry_macro.h"

namespace qva::calc {
namespace {

using css::beans::PropertyValue;

using css::script::provider::XScript;
using css::script::provider::XScriptProvider;

using css::container::XNameContainer;
using css::script::XLibraryContainer;

/// The library that LibreOffice gives every document.
constexpr char kStandardLibrary[] = "Standard";

PropertyValue Property(const char* name, const Any& value) {
  PropertyValue property;
  property.Name = OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

/// A module's own spelling of a name in any letter case, as Basic finds it; nothing where there is none.
std::optional<OUString> FindModule(const Reference<XNameContainer>& modules, const OUString& name) {
  for (const OUString& module : modules->getElementNames()) {
    if (module.equalsIgnoreAsciiCase(name)) return module;
  }
  return std::nullopt;
}

MacroFailure NoModule(const OUString& name) {
  return {MacroFailure::Reason::NoMacro, "the workbook has no module " + ToUtf8(FromUno(name))};
}

/// Takes the next word off a line of Basic, in lower case: what stands before a blank, a parenthesis, an
/// apostrophe or a colon.
std::u16string TakeWord(std::u16string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(u" \t"), line.size()));
  const std::u16string_view word = line.substr(0, line.find_first_of(u" \t('\":"));
  line.remove_prefix(word.size());
  return ToLower(word);
}

/// Whether a line of Basic begins a public Sub of that name, in lower case, that can be called without
/// arguments.
bool BeginsSub(std::u16string_view line, std::u16string_view name) {
  std::u16string word = TakeWord(line);
  if (word == u"public") word = TakeWord(line);
  if (word == u"static") word = TakeWord(line);
  if (word != u"sub" || TakeWord(line) != name) return false;
  line = Trim(line);
  if (!line.starts_with(u'(')) return true;
  line.remove_prefix(1);
  return Trim(line.substr(0, line.find(u')'))).empty();
}

/// Whether a module has such a Sub.
bool HasSub(const Reference<XNameContainer>& modules, const OUString& module, std::u16string_view name) {
  OUString text;
  modules->getByName(module) >>= text;
  const std::u16string source = FromUno(text);
  std::u16string_view rest = source;
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find_first_of(u"\r\n"), rest.size());
    if (BeginsSub(rest.substr(0, length), name)) return true;
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return false;
}

/// The module of a library that holds the entry macro: kEntryModule alone, or the first of any name.
std::optional<OUString> FindEntryModule(const Reference<XNameContainer>& modules, bool any_name) {
  for (const OUString& module : modules->getElementNames()) {
    if ((any_name || EqualIgnoringCase(FromUno(module), FromUtf8(kEntryModule))) &&
        HasSub(modules, module, u"main"))
      return module;
  }
  return std::nullopt;
}

Reference<XLibraryContainer> LibrariesOf(const Reference<css::lang::XComponent>& model) {
  return {Reference<css::beans::XPropertySet>(model, UNO_QUERY_THROW)->getPropertyValue("BasicLibraries"),
          UNO_QUERY_THROW};
}

Reference<XNameContainer> ModulesOf(const Reference<XLibraryContainer>& libraries, const OUString& library) {
  libraries->loadLibrary(library);
  return {libraries->getByName(library), UNO_QUERY_THROW};
}

/// The names of the libraries, LibreOffice's own last.
std::vector<OUString> LibraryNames(const Reference<XLibraryContainer>& libraries) {
  std::vector<OUString> names;
  for (const OUString& name : libraries->getElementNames()) names.push_back(name);
  std::stable_partition(names.begin(), names.end(),
                        [](const OUString& name) { return name != kStandardLibrary; });
  return names;
}

OUString LibraryWithModule(const Reference<XLibraryContainer>& libraries, const OUString& module) {
  for (const OUString& library : LibraryNames(libraries)) {
    if (FindModule(ModulesOf(libraries, library), module)) return library;
  }
  throw NoModule(module);
}

/// Whether a document counts as modified stays as it is while this lives.
class KeptModification {
 public:
  explicit KeptModification(const Reference<css::lang::XComponent>& model)
      : model_(model, UNO_QUERY_THROW), is_modified_(model_->isModified()) {}
  ~KeptModification() {
    // Otherwise LibreOffice asks whether to save it, and no more.
    if (!is_modified_) IgnoreFailures([&] { model_->setModified(false); });
  }
  KeptModification(const KeptModification&) = delete;
  KeptModification& operator=(const KeptModification&) = delete;

 private:
  Reference<css::util::XModifiable> model_;
  bool is_modified_;
};

/// Where a module's options end, with the comments among them.
std::size_t EndOfOptions(std::u16string_view source) {
  std::size_t begin = 0;
  while (begin < source.size()) {
    std::u16string_view line = source.substr(begin, source.find_first_of(u"\r\n", begin) - begin);
    const std::size_t length = line.size();
    const std::u16string word = TakeWord(line);
    if (!word.empty() && word != u"option" && word != u"attribute" && word != u"rem") break;
    begin += length + 1;
  }
  return std::min(begin, source.size());
}

/// Whether the module of a library compiles. LibreOffice would pass over one that does not. Asked of a copy,
/// which can be run without effect. What is called stands in front of all that is the macros' own, since
/// within a macro that runs LibreOffice does not come back from one behind a mistake; what that calls stands
/// behind them, where it is missing after a mistake. Under Option Explicit the macro that runs gets the error
/// then.
bool Compiles(const Reference<XScriptProvider>& scripts, const OUString& library,
              const Reference<css::container::XNameContainer>& modules, const OUString& module) {
  OUString text;
  modules->getByName(module) >>= text;
  std::u16string source = FromUno(text);
  source += u"\nFunction QVA_VarnholtLast()\nQVA_VarnholtLast = 1\nEnd Function\n";
  source.insert(EndOfOptions(source),
                u"Function QVA_VarnholtFirst()\nQVA_VarnholtFirst = QVA_VarnholtLast()\nEnd Function\n");
  const OwnModule copy(scripts, library, modules, ToUno(source));
  try {
    return RunScript(copy.Find("QVA_VarnholtFirst"), {}).hasValue();
  } catch (const css::uno::Exception&) {
    return false;  // without a script there is no result, nor where it fails
  }
}

/// A macro as our own calls it. Behind it, where the error has ended it and has not yet come to ours, Basic
/// still knows the error's line.
class Called : public cppu::WeakImplHelper1<css::script::XInvocation> {
 public:
  Called(const Reference<XScript>& macro, const Reference<XScript>& line_of_error, int& line)
      : macro_(macro), line_of_error_(line_of_error), line_(line) {}
  Reference<css::beans::XIntrospectionAccess> SAL_CALL getIntrospection() override { return {}; }
  sal_Bool SAL_CALL hasMethod(const OUString&) override { return true; }
  sal_Bool SAL_CALL hasProperty(const OUString&) override { return false; }
  void SAL_CALL setValue(const OUString&, const Any&) override {}
  Any SAL_CALL getValue(const OUString&) override { return {}; }
  Any SAL_CALL invoke(const OUString&, const Sequence<Any>&, Sequence<sal_Int16>&, Sequence<Any>&) override {
    RunScript(macro_, {});
    RunScript(line_of_error_, {}) >>= line_;
    return {};
  }

 private:
  Reference<XScript> macro_;
  Reference<XScript> line_of_error_;
  int& line_;
};

/// A macro of ours that calls another one and gives back the error that it did not handle, which LibreOffice
/// would end it with without a word.
constexpr char kCaller[] =
    "Option VBASupport 1\n"
    "Function Run(Macro)\n"
    "  On Error GoTo Failed\n"
    "  Err.Clear\n"
    "  Macro.Run\n"
    "  Run = Array()\n"
    "  Exit Function\n"
    "Failed:\n"
    "  Run = Array(Err.Number, Err.Source, Err.Description)\n"
    "End Function\n"
    "Function LineOfError()\n"
    "  LineOfError = Erl\n"
    "End Function\n";

}  // namespace

OpenWorkbook::OpenWorkbook(const Reference<css::uno::XComponentContext>& context, const std::string& path)
    : context_(context) {
  const OUString url = FileUrl(path);
  // Not hidden, since LibreOffice refuses part of its Excel model to the window of a hidden workbook, or
  // crashes on it.
  std::vector<PropertyValue> properties{
      Property("MacroExecutionMode", Any(sal_Int16{css::document::MacroExecMode::ALWAYS_EXECUTE_NO_WARN})),
  };
  // LibreOffice takes a flat document for one of another format when it meets certain words in its macros.
  if (url.endsWithIgnoreAsciiCase(".fods")) {
    properties.push_back(Property("FilterName", Any(OUString("OpenDocument Spreadsheet Flat XML"))));
  }
  model_ = css::frame::Desktop::create(context)->loadComponentFromURL(
      url, "_blank", 0,
      Sequence<PropertyValue>(properties.data(), static_cast<sal_Int32>(properties.size())));
  if (!model_.is()) {
    throw MacroFailure(MacroFailure::Reason::NoWorkbook, "the workbook cannot be opened");
  }
}

OpenWorkbook::~OpenWorkbook() {
  // The end of LibreOffice closes it, too.
  if (!is_kept_)
    IgnoreFailures([&] { Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true); });
}

void OpenWorkbook::HideCells() const {
  IgnoreFailures([&] {
    const Reference<css::frame::XModel> model(model_, UNO_QUERY_THROW);
    const Reference<css::frame::XController> controller(model->getCurrentController(), UNO_SET_THROW);
    const Reference<css::frame::XFrame> frame(controller->getFrame(), UNO_SET_THROW);
    Reference<css::awt::XWindow>(frame->getComponentWindow(), UNO_SET_THROW)->setVisible(false);
  });
}

std::optional<std::string> OpenWorkbook::FindMain() const {
  const Reference<XLibraryContainer> libraries = LibrariesOf(model_);
  const std::vector<OUString> names = LibraryNames(libraries);
  for (const bool any_name : {false, true}) {
    for (const OUString& library : names) {
      if (const auto module = FindEntryModule(ModulesOf(libraries, library), any_name)) {
        return ToUtf8(FromUno(library + "." + *module + ".Main"));
      }
    }
  }
  return std::nullopt;
}

bool OpenWorkbook::AllowsMacros() const {
  const Reference<css::document::XEmbeddedScripts> scripts(model_, UNO_QUERY);
  return scripts.is() && scripts->getAllowMacroExecution();
}

void OpenWorkbook::RunMacro(const std::string& macro) const {
  using Reason = MacroFailure::Reason;
  const std::size_t last_point = macro.rfind('.');
  if (last_point == macro.npos) {
    throw MacroFailure(Reason::NoMacro, "the macro is not named as Module.Procedure");
  }
  const std::size_t point = macro.find('.');
  const bool names_library = point != last_point;
  const std::string procedure = names_library ? macro.substr(point + 1) : macro;
  const OUString module_name = ToUno(FromUtf8(procedure.substr(0, procedure.find('.'))));
  const Reference<XLibraryContainer> libraries = LibrariesOf(model_);
  const OUString library_name =
      names_library ? ToUno(FromUtf8(macro.substr(0, point))) : LibraryWithModule(libraries, module_name);
  if (!libraries->hasByName(library_name)) {
    throw MacroFailure(Reason::NoMacro, "the workbook has no library " + ToUtf8(FromUno(library_name)));
  }
  const Reference<XNameContainer> modules = ModulesOf(libraries, library_name);
  const Reference<XScriptProvider> scripts =
      Reference<css::script::provider::XScriptProviderSupplier>(model_, UNO_QUERY_THROW)->getScriptProvider();
  const std::optional<OUString> module = FindModule(modules, module_name);
  if (!module) throw NoModule(module_name);
  const Reference<XScript> called = [&] {
    try {
      return FindScript(scripts, library_name + "." + ToUno(FromUtf8(procedure)), "document");
    } catch (const css::script::provider::ScriptFrameworkErrorException&) {
      throw MacroFailure(Reason::NoMacro, "the workbook has no macro " + macro);
    }
  }();
  const bool compiles = [&] {
    const KeptModification kept(model_);
    return Compiles(scripts, library_name, modules, *module);
  }();
  if (!compiles) throw MacroFailure(Reason::DoesNotCompile, "the macro " + macro + " does not compile");
  Call(called, macro);
}

void OpenWorkbook::RunAutoClose() const {
  const Reference<XLibraryContainer> libraries = LibrariesOf(model_);
  const Reference<XScriptProvider> scripts =
      Reference<css::script::provider::XScriptProviderSupplier>(model_, UNO_QUERY_THROW)->getScriptProvider();
  for (const OUString& library : libraries->getElementNames()) {
    // In one that is not loaded no macro has run. To load it may ask the user for a password.
    if (!libraries->isLibraryLoaded(library)) continue;
    const Reference<XNameContainer> modules = ModulesOf(libraries, library);
    for (const OUString& module : modules->getElementNames()) {
      if (!HasSub(modules, module, u"auto_close")) continue;
      const OUString macro = library + "." + module + ".Auto_Close";
      Call(FindScript(scripts, macro, "document"), ToUtf8(FromUno(macro)));
    }
  }
}

void OpenWorkbook::Call(const Reference<XScript>& called, const std::string& macro) const {
  int line = 0;
  const OwnModule caller(context_, kCaller);
  const Reference<css::script::XInvocation> macro_call(new Called(called, caller.Find("LineOfError"), line));
  // Nothing when the macro was ended by an End statement.
  const Any outcome = RunScript(caller.Find("Run"), SequenceOf({Any(macro_call)}));

  Sequence<Any> error;
  if (!(outcome >>= error)) {
    throw MacroFailure(MacroFailure::Reason::Ended,
                       "the macro " + macro + " was ended by an End statement or by quitting Excel");
  }
  if (error.getLength() != 3) return;
  throw MacroError(
      AutomationError(FromAny(error[0]).ToInt32(), FromAny(error[1]).ToText(), FromAny(error[2]).ToText()),
      line);
}

void OpenWorkbook::PrintToPdf(const std::string& path) const {
  Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)
      ->storeToURL(FileUrl(path), SequenceOf({Property("FilterName", Any(OUString("calc_pdf_Export")))}));
}

std::optional<std::pair<std::string, std::string>> OpenWorkbook::Period() const {
  try {
    const Reference<css::beans::XPropertySet> properties(model_, UNO_QUERY_THROW);
    const Reference<css::container::XNameAccess> names(properties->getPropertyValue("NamedRanges"),
                                                       UNO_QUERY_THROW);
    css::util::Date null_date;
    properties->getPropertyValue("NullDate") >>= null_date;
    const Date start = DateFromParts(null_date.Year, null_date.Month, null_date.Day);
    const auto day = [&](std::u16string_view name) {
      const Reference<css::sheet::XCellRangeReferrer> named(names->getByName(ToUno(name)), UNO_QUERY_THROW);
      const Reference<css::table::XCellRange> cells(named->getReferredCells(), UNO_QUERY_THROW);
      return ToUtf8(FormatByWindowsPattern(
          Date{start.serial + std::floor(cells->getCellByPosition(0, 0)->getValue())}, u"yyyy-MM-dd"));
    };
    return std::pair(day(kFirstDayCell), day(kLastDayCell));
  } catch (...) {
    return std::nullopt;
  }
}

}  // namespace qva::calc
