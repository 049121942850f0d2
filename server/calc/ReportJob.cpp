#include "server/calc/ReportJob.h"

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/supportsservice.hxx>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/failure_listener.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"
#include "server/calc/OpenWorkbook.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

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

void WriteStep(const std::string& step) {
  std::ofstream(Variable("QVA_JOB_STEPS"), std::ios::app) << step << '\n';
}

void WriteResult(const std::string& result) {
  std::ofstream(Variable("QVA_JOB_RESULT")) << result << '\n';
}

class Failures : public FailureListener {
 public:
  void Failed(std::u16string_view what) override {
    if (first_.empty()) first_ = what.empty() ? "an error without a text" : ToUtf8(what);
  }
  void WronglyAnswered(std::u16string_view what) override {
    WriteResult("wrong answer: " + ToUtf8(what));
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

}  // namespace

void ReportJob::trigger(const OUString&) {
  ListenForFailures(&TheFailures());
  try {
    Run();
    WriteResult(TheFailures().first().empty() ? "ok" : TheFailures().first());
  } catch (const AutomationError& error) {
    WriteResult("error in the macro: " + std::to_string(error.number()) + " (" + ToUtf8(error.source()) +
                ") " + ToUtf8(error.description()));
  } catch (const css::uno::Exception&) {
    WriteResult("error: " + ToUtf8(ErrorOf(cppu::getCaughtException()).description()));
  } catch (const std::exception& exception) {
    WriteResult(std::string("error: ") + exception.what());
  } catch (...) {
    WriteResult("error");
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
  WriteStep("Opening " + workbook);
  const OpenWorkbook open(context_, workbook);
  const std::string macro = Variable("QVA_JOB_MACRO");
  WriteStep("Running " + macro);
  open.RunMacro(macro);
  if (const std::string pdf = Variable("QVA_JOB_PDF"); !pdf.empty()) {
    WriteStep("Storing " + pdf);
    open.PrintToPdf(pdf);
  }
  open.RunAutoClose();
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
