#include "platform/calc/toolbars/DocumentMacro.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
#include <rtl/uri.hxx>

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/error.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

/// The open document whose file has a name; null when there is none.
Reference<css::frame::XModel> DocumentNamed(std::u16string_view file_name) {
  const auto components = css::frame::Desktop::create(Context())->getComponents()->createEnumeration();
  while (components->hasMoreElements()) {
    const Reference<css::frame::XModel> model(components->nextElement(), UNO_QUERY);
    if (model.is() && EqualIgnoringCase(FileNameOf(model), file_name)) return model;
  }
  return {};
}

/// Null when the module has no such macro.
Reference<css::script::provider::XScript> Find(const Reference<css::frame::XModel>& document,
                                               const OUString& library, const OUString& module,
                                               const OUString& macro) {
  const Reference<css::script::provider::XScriptProviderSupplier> supplier(document, UNO_QUERY_THROW);
  try {
    return supplier->getScriptProvider()->getScript("vnd.sun.star.script:" + library + "." + module + "." +
                                                    macro + "?language=Basic&location=document");
  } catch (const css::uno::Exception&) {
    return {};
  }
}

/// The names of a library's modules; none of one that cannot be loaded, such as a locked one.
Sequence<OUString> ModulesOf(const Reference<css::script::XLibraryContainer>& libraries,
                             const OUString& library) {
  try {
    libraries->loadLibrary(library);
    return Reference<css::container::XNameAccess>(libraries->getByName(library), UNO_QUERY_THROW)
        ->getElementNames();
  } catch (const css::uno::Exception&) {
    return {};
  }
}

/// A file name as it is, of one that may stand in apostrophes.
std::u16string Unquoted(std::u16string_view name) {
  const bool is_quoted = name.size() >= 2 && name.starts_with(u'\'') && name.ends_with(u'\'');
  if (!is_quoted) return std::u16string(name);
  return ReplaceAll(std::u16string(name.substr(1, name.size() - 2)), u"''", u"'");
}

Reference<css::script::provider::XScript> Find(const Reference<css::frame::XModel>& document,
                                               std::u16string_view module, const OUString& macro) {
  const Reference<css::script::XLibraryContainer> libraries(
      Reference<css::beans::XPropertySet>(document, UNO_QUERY_THROW)->getPropertyValue("BasicLibraries"),
      UNO_QUERY_THROW);
  for (const OUString& library : libraries->getElementNames()) {
    for (const OUString& candidate : ModulesOf(libraries, library)) {
      if (!module.empty() && !EqualIgnoringCase(FromUno(candidate), module)) continue;
      if (const auto script = Find(document, library, candidate, macro); script.is()) return script;
    }
  }
  return {};
}

}  // namespace

std::u16string FileNameOf(const Reference<css::frame::XModel>& document) {
  const OUString url = document->getURL();
  return FromUno(
      rtl::Uri::decode(url.copy(url.lastIndexOf('/') + 1), rtl_UriDecodeWithCharset, RTL_TEXTENCODING_UTF8));
}

void RunDocumentMacro(const Reference<css::frame::XModel>& document, const std::set<std::u16string>& names,
                      std::u16string_view name) {
  Reference<css::frame::XModel> owner = document;
  std::u16string_view macro = name;
  if (const std::size_t mark = name.rfind(u'!'); mark != name.npos) {
    macro = name.substr(mark + 1);
    const std::u16string file_name = Unquoted(name.substr(0, mark));
    const bool is_own = std::ranges::any_of(
        names, [&](const std::u16string& own) { return EqualIgnoringCase(own, file_name); });
    if (!is_own) owner = DocumentNamed(file_name);
    // A workbook that was never saved has no file.
    if (!owner.is() && FileNameOf(document).empty()) owner = document;
  }
  std::u16string_view module;
  if (const std::size_t point = macro.rfind(u'.'); point != macro.npos) {
    module = macro.substr(0, point);
    macro.remove_prefix(point + 1);
  }
  Reference<css::script::provider::XScript> script;
  if (owner.is()) script = Find(owner, module, ToUno(macro));
  if (!script.is()) throw Refused(u"There is no macro '" + std::u16string(name) + u"'");
  Sequence<sal_Int16> changed;
  Sequence<Any> values;
  script->invoke({}, changed, values);
}

}  // namespace qva::calc
