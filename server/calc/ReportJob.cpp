#include "server/calc/ReportJob.h"

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/supportsservice.hxx>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/failure_listener.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"
#include "server/calc/JobServer.h"
#include "server/calc/OpenWorkbook.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using css::uno::XComponentContext;
using rtl::OUString;

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

/// Something to do in LibreOffice's event loop.
class Event : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Event(std::function<void()> action) : action_(std::move(action)) {}
  void SAL_CALL notify(const Any&) override { action_(); }

 private:
  std::function<void()> action_;
};

/// Has it done once what is under way has returned to the event loop, and what was to be done before is done.
void DoLater(const Reference<XComponentContext>& context, std::function<void()> action) {
  try {
    const Reference<css::awt::XRequestCallback> loop(
        context->getServiceManager()->createInstanceWithContext("com.sun.star.awt.AsyncCallback", context),
        UNO_QUERY_THROW);
    loop->addCallback(new Event(std::move(action)), Any());
  } catch (const css::uno::Exception&) {
    // The runner's time limit ends it.
  }
}

void WriteStep(const std::string& step) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  std::ofstream(Variable("QVA_JOB_STEPS"), std::ios::app)
      << std::chrono::duration_cast<std::chrono::milliseconds>(now).count() << '\t' << step << '\n';
}

using Json = nlohmann::json;

void WriteResult(const Json& result) {
  std::ofstream(Variable("QVA_JOB_RESULT")) << result.dump(-1, ' ', false, Json::error_handler_t::replace);
}

class Failures : public FailureListener {
 public:
  void Failed(std::u16string_view what) override {
    if (first_.empty()) first_ = what.empty() ? "an error without a text" : ToUtf8(what);
  }
  void WronglyAnswered(std::u16string_view what) override {
    WriteResult({{"status", "wrong-answer"}, {"text", "wrong answer: " + ToUtf8(what)}});
    // The macro that asked must not get an answer any more, nor the workbook its closing.
    std::_Exit(EXIT_FAILURE);
  }

  const std::string& first() const { return first_; }

 private:
  std::string first_;
};

Failures& TheFailures() {
  static auto& failures = *new Failures;
  return failures;
}

void AddPeriod(const OpenWorkbook& open, Json& result) {
  if (const auto period = open.Period()) result["period"] = {{"from", period->first}, {"to", period->second}};
}

/// `is_macros` becomes true when what fails is the macro's doing.
void RunJob(const Reference<XComponentContext>& context, Json& result, bool& is_macros) {
  const std::string workbook = Variable("QVA_JOB_WORKBOOK");
  WriteStep("Opening " + workbook);
  const OpenWorkbook open(context, workbook);
  const std::string macro = Variable("QVA_JOB_MACRO");
  WriteStep("Running " + macro);
  is_macros = true;
  try {
    open.RunMacro(macro);
  } catch (...) {
    AddPeriod(open, result);
    throw;
  }
  AddPeriod(open, result);
  if (const std::string pdf = Variable("QVA_JOB_PDF"); !pdf.empty()) {
    WriteStep("Storing " + pdf);
    open.PrintToPdf(pdf);
  }
  WriteStep("Closing the workbook");
  open.RunAutoClose();
}

/// Runs the job of the environment and writes what became of it.
void Run(const Reference<XComponentContext>& context) {
  ListenForFailures(&TheFailures());
  Json result = Json::object();
  bool is_macros = false;
  const auto fail = [&](const std::string& text) {
    result["status"] = is_macros ? "failed" : "no-macro";
    result["text"] = text;
  };
  try {
    RunJob(context, result, is_macros);
    result["status"] = "ok";
    if (const std::string& told = TheFailures().first(); !told.empty()) fail(told);
  } catch (const AutomationError& error) {
    const std::string source = ToUtf8(error.source()), text = ToUtf8(error.description());
    fail("error in the macro: " + std::to_string(error.number()) + " (" + source + ") " + text);
    result["error"] = {{"number", error.number()}, {"source", source}, {"text", text}};
    if (const auto* own = dynamic_cast<const MacroError*>(&error)) result["error"]["line"] = own->line();
  } catch (const MacroFailure& failure) {
    is_macros = failure.reason() == MacroFailure::Reason::Ended;
    fail(std::string("error: ") + failure.what());
  } catch (const css::uno::Exception&) {
    fail("error: " + ToUtf8(ErrorOf(cppu::getCaughtException()).description()));
  } catch (const std::exception& exception) {
    fail(std::string("error: ") + exception.what());
  } catch (...) {
    fail("error");
  }
  WriteResult(result);
  ReleaseErrors();
}

void EndOffice(const Reference<XComponentContext>& context) {
  try {
    css::frame::Desktop::create(context)->terminate();
  } catch (const css::uno::Exception&) {
    // The runner's time limit ends it.
  }
}

/// In the event loop, where LibreOffice's start is over. A job ends without LibreOffice's own farewell, which
/// would wait for threads that the copy of the process does not have.
void Serve(const Reference<XComponentContext>& context) {
  if (!ServeJobs(Variable("QVA_JOB_REQUESTS"), Variable("QVA_JOB_REPLIES"))) return EndOffice(context);
  Run(context);
  DoLater(context, [] { std::_Exit(EXIT_SUCCESS); });
}

}  // namespace

void ReportJob::trigger(const OUString&) {
  Run(context_);
  const bool serves = !Variable("QVA_JOB_REQUESTS").empty();
  DoLater(context_, [context = context_, serves] { serves ? Serve(context) : EndOffice(context); });
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
