#include "server/calc/ReportJob.h"

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/script/XLibraryContainer.hpp>
#include <com/sun/star/script/provider/XScriptProviderSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <osl/file.hxx>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"
#include "server/calc/CallLog.h"

namespace qva::calc {
namespace {

using css::beans::PropertyValue;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

const OUString kRunModule("QVA_VarnholtRun");

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

OUString UrlOf(const std::string& path) {
  OUString url;
  osl::FileBase::getFileURLFromSystemPath(ToUno(FromUtf8(path)), url);
  return url;
}

PropertyValue Property(const char* name, const Any& value) {
  PropertyValue property;
  property.Name = OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

/// The library of the workbook's own macros: the first that LibreOffice did not put there itself.
OUString OwnLibrary(const Reference<css::script::XLibraryContainer>& libraries) {
  for (const OUString& name : libraries->getElementNames()) {
    if (name != "Standard") return name;
  }
  throw std::runtime_error("the workbook has no library of macros");
}

/// The workbook, closed when the job leaves it, however it does.
class OpenWorkbook {
 public:
  OpenWorkbook(const Reference<css::uno::XComponentContext>& context, const OUString& url) {
    // Not hidden, since LibreOffice refuses part of its Excel model to the window of a hidden workbook, or
    // crashes on it; without a display nothing is seen of it anyway.
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
    if (!model_.is()) throw std::runtime_error("the workbook cannot be opened");
  }
  ~OpenWorkbook() {
    try {
      Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true);
    } catch (const css::uno::Exception&) {
      // The end of LibreOffice closes it, too.
    }
  }
  OpenWorkbook(const OpenWorkbook&) = delete;
  OpenWorkbook& operator=(const OpenWorkbook&) = delete;

  /// Runs a macro of the workbook, named as Library.Module.Procedure or, in its own library, as
  /// Module.Procedure. Raises the error that it did not handle. LibreOffice would end such a
  /// macro without a word, so it is called by a module of ours, which is in the workbook for that long.
  void RunMacro(const std::string& macro) const {
    const std::size_t last_point = macro.rfind('.');
    if (last_point == macro.npos) throw std::runtime_error("the macro is not named as Module.Procedure");
    const std::size_t point = macro.find('.');
    const bool names_library = point != last_point;
    const std::string procedure = names_library ? macro.substr(point + 1) : macro;
    const Reference<css::script::XLibraryContainer> libraries(
        Reference<css::beans::XPropertySet>(model_, UNO_QUERY_THROW)->getPropertyValue("BasicLibraries"),
        UNO_QUERY_THROW);
    const OUString library_name =
        names_library ? ToUno(FromUtf8(macro.substr(0, point))) : OwnLibrary(libraries);
    if (!libraries->hasByName(library_name))
      throw std::runtime_error("the workbook has no library " + ToUtf8(FromUno(library_name)));
    libraries->loadLibrary(library_name);
    const Reference<css::container::XNameContainer> modules(libraries->getByName(library_name),
                                                            UNO_QUERY_THROW);
    modules->insertByName(kRunModule,
                          Any(ToUno(FromUtf8("Option VBASupport 1\n"
                                             "Function Run()\n"
                                             "  On Error GoTo Failed\n"
                                             "  Err.Clear\n"
                                             "  " +
                                             procedure +
                                             "\n"
                                             "  Run = Array()\n"
                                             "  Exit Function\n"
                                             "Failed:\n"
                                             "  Run = Array(Err.Number, Err.Source, Err.Description)\n"
                                             "End Function\n"))));
    const Reference<css::script::provider::XScriptProviderSupplier> supplier(model_, UNO_QUERY_THROW);
    const auto script = supplier->getScriptProvider()->getScript(
        "vnd.sun.star.script:" + library_name + "." + kRunModule + ".Run?language=Basic&location=document");
    Any outcome;
    try {
      Sequence<sal_Int16> changed;
      Sequence<Any> values;
      outcome = script->invoke({}, changed, values);
    } catch (const css::uno::Exception&) {
      modules->removeByName(kRunModule);
      throw;
    }
    modules->removeByName(kRunModule);

    Sequence<Any> error;
    if (!(outcome >>= error)) {
      throw std::runtime_error("the macro " + macro +
                               " does not compile, or it was ended by an End statement or by quitting Excel");
    }
    if (error.getLength() != 3) return;
    throw AutomationError(FromAny(error[0]).ToInt32(), FromAny(error[1]).ToText(),
                          FromAny(error[2]).ToText());
  }

  void PrintToPdf(const OUString& url) const {
    Reference<css::frame::XStorable>(model_, UNO_QUERY_THROW)
        ->storeToURL(url, SequenceOf({Property("FilterName", Any(OUString("calc_pdf_Export")))}));
  }

 private:
  Reference<css::lang::XComponent> model_;
};

/// Ends LibreOffice from its event loop, once the job has returned to it.
class Terminator : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Terminator(const Reference<css::uno::XComponentContext>& context) : context_(context) {}
  void SAL_CALL notify(const Any&) override {
    try {
      css::frame::Desktop::create(context_)->terminate();
    } catch (const css::uno::Exception&) {
      // The runner's time limit ends it.
    }
  }

 private:
  Reference<css::uno::XComponentContext> context_;
};

void WriteResult(const std::string& result) {
  std::ofstream(Variable("QVA_JOB_RESULT")) << result << '\n';
}

}  // namespace

void ReportJob::trigger(const OUString&) {
  try {
    Run();
    WriteResult("ok");
  } catch (const AutomationError& error) {
    WriteResult("error in the macro: " + std::to_string(error.number()) + " (" + ToUtf8(error.source()) +
                ") " + ToUtf8(error.description()));
  } catch (const css::uno::Exception& exception) {
    const Any caught = cppu::getCaughtException();
    WriteResult("error: " + ToUtf8(FromUno(caught.getValueTypeName())) + ": " +
                ToUtf8(FromUno(exception.Message)));
  } catch (const std::exception& exception) {
    WriteResult(std::string("error: ") + exception.what());
  }
  ReleaseErrors();
  try {
    const Reference<css::awt::XRequestCallback> loop(
        context_->getServiceManager()->createInstanceWithContext("com.sun.star.awt.AsyncCallback", context_),
        UNO_QUERY_THROW);
    loop->addCallback(new Terminator(context_), Any());
  } catch (const css::uno::Exception&) {
    // As in Terminator.
  }
}

void ReportJob::Run() {
  const std::string workbook = Variable("QVA_JOB_WORKBOOK");
  CallLog::Write(u"Opening " + FromUtf8(workbook));
  const OpenWorkbook open(context_, UrlOf(workbook));
  const std::string macro = Variable("QVA_JOB_MACRO");
  CallLog::Write(u"Running " + FromUtf8(macro));
  open.RunMacro(macro);
  if (const std::string pdf = Variable("QVA_JOB_PDF"); !pdf.empty()) {
    CallLog::Write(u"Printing to " + FromUtf8(pdf));
    open.PrintToPdf(UrlOf(pdf));
  }
}

OUString ReportJob::getImplementationName() {
  return "QVA_Varnholt.ReportJob";
}

sal_Bool ReportJob::supportsService(const OUString& name) {
  return cppu::supportsService(this, name);
}

Sequence<OUString> ReportJob::getSupportedServiceNames() {
  return SequenceOf({OUString("QVA_Varnholt.ReportJob")});
}

}  // namespace qva::calc
