#include "server/calc/ReportJob.h"

#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/exc_hlp.hxx>
#include <cppuhelper/supportsservice.hxx>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/calc/EventLoop.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/failure_listener.h"
#include "platform/filesystem/native_file.h"
#include "platform/text.h"
#include "platform/variables.h"
#include "server/calc/BasicError.h"
#include "server/calc/OpenWorkbook.h"

namespace qva::calc {
namespace {

using css::uno::Sequence;
using rtl::OUString;

void WriteStep(const std::string& step) {
  std::ofstream(EnvironmentVariable(variables::kJobSteps), std::ios::app) << step << '\n';
}

void WriteResult(const std::string& result) {
  std::ofstream(EnvironmentVariable(variables::kJobResult)) << result << '\n';
}

class Failures : public FailureListener {
 public:
  void Failed(std::u16string_view what) override {
    if (std::exchange(has_failed_, true)) return;
    first_ = ToUtf8(what);
  }
  void WronglyAnswered(std::u16string_view what) override {
    IgnoreFailures([&] { WriteResult("wrong answer: " + ToUtf8(what)); });
    // The macro that asked must not get an answer any more, nor the workbook its closing.
    std::_Exit(EXIT_FAILURE);
  }

  /// What is written for the runner.
  std::string Result() const {
    if (!has_failed_) return "ok";
    return first_.empty() ? "an error without a text" : first_;
  }

 private:
  bool has_failed_ = false;
  std::string first_;  ///< its text, where there was memory for it
};

Failures& TheFailures() {
  static auto& failures = *new Failures;
  return failures;
}

}  // namespace

void ReportJob::trigger(const OUString&) {
  IgnoreFailures([&] { WriteResult(Outcome()); });
  ReleaseErrors();
  // Once the job has returned to LibreOffice's event loop. What fails is left to the runner's time limit.
  IgnoreFailures(
      [&] { Post([context = context_] { css::frame::Desktop::create(context)->terminate(); }, context_); });
}

std::string ReportJob::Outcome() {
  try {
    ListenForFailures(&TheFailures());
    Run();
    return TheFailures().Result();
  } catch (const AutomationError& error) {
    return "error in the macro: " + std::to_string(error.number()) + " (" + ToUtf8(error.source()) + ") " +
           ToUtf8(error.description());
  } catch (const css::uno::Exception&) {
    return "error: " + ToUtf8(ErrorOf(cppu::getCaughtException()).description());
  } catch (const std::exception& exception) {
    return std::string("error: ") + exception.what();
  } catch (...) {
    return "error";
  }
}

void ReportJob::Run() {
  const std::string workbook = EnvironmentVariable(variables::kJobWorkbook);
  WriteStep("Opening " + workbook);
  const OpenWorkbook open(context_, workbook);
  const std::string macro = EnvironmentVariable(variables::kJobMacro);
  WriteStep("Running " + macro);
  open.RunMacro(macro);
  if (const std::string pdf = EnvironmentVariable(variables::kJobPdf); !pdf.empty()) {
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
