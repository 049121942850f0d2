#include "server/calc/ReportJob.h"

#include <com/sun/star/frame/Desktop.hpp>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
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
#include "server/calc/JobServer.h"
#include "server/calc/OpenWorkbook.h"
#include "server/calc/job_protocol.h"

namespace qva::calc {
namespace {

using css::uno::XComponentContext;

void WriteStep(const std::string& step) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  std::ofstream(EnvironmentVariable(variables::kJobSteps), std::ios::app)
      << std::chrono::duration_cast<std::chrono::milliseconds>(now).count() << '\t' << step << '\n';
}

/// A text as JSON has it.
std::string Quoted(const std::string& text) {
  using Json = nlohmann::json;
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// The members of a JSON object, by name, with their values as JSON has them. A tree of the library's would
/// need memory when it goes.
using JsonMembers = std::map<std::string, std::string>;

std::string JsonOf(const JsonMembers& members) {
  std::string json;
  for (const auto& [name, value] : members) {
    json.append(json.empty() ? "{" : ",").append(Quoted(name)).append(":").append(value);
  }
  return json.append("}");
}

void WriteResult(const JsonMembers& result) {
  std::ofstream(EnvironmentVariable(variables::kJobResult)) << JsonOf(result);
}

class Failures : public FailureListener {
 public:
  void Failed(std::u16string_view what) override {
    if (std::exchange(has_failed_, true)) return;
    first_ = ToUtf8(what);
  }
  void WronglyAnswered(std::u16string_view what) override {
    IgnoreFailures([&] {
      WriteResult(
          {{kResultStatus, Quoted(kJobWrongAnswer)}, {kResultText, Quoted("wrong answer: " + ToUtf8(what))}});
    });
    // The macro that asked must not get an answer any more, nor the workbook its closing.
    std::_Exit(EXIT_FAILURE);
  }

  bool has_failed() const { return has_failed_; }
  std::string first() const { return first_.empty() ? "an error without a text" : first_; }

 private:
  bool has_failed_ = false;
  std::string first_;  ///< its text, where there was memory for it
};

Failures& TheFailures() {
  static auto& failures = *new Failures;
  return failures;
}

void AddPeriod(const OpenWorkbook& open, JsonMembers& result) {
  const auto period = open.Period();
  if (!period) return;
  result[kResultPeriod] = JsonOf({{kPeriodFrom, Quoted(period->first)}, {kPeriodTo, Quoted(period->second)}});
}

/// `is_macros` becomes true when what fails is the macro's doing.
void RunJob(const Reference<XComponentContext>& context, JsonMembers& result, bool& is_macros) {
  const std::string workbook = EnvironmentVariable(variables::kJobWorkbook);
  WriteStep("Opening " + workbook);
  const OpenWorkbook open(context, workbook);
  // To paint what nobody sees takes an eighth of a report's time.
  if (EnvironmentVariable(variables::kJobShown).empty()) open.HideCells();
  const std::string macro = EnvironmentVariable(variables::kJobMacro);
  WriteStep("Running " + macro);
  is_macros = true;
  try {
    open.RunMacro(macro);
  } catch (...) {
    AddPeriod(open, result);
    throw;
  }
  AddPeriod(open, result);
  if (const std::string pdf = EnvironmentVariable(variables::kJobPdf); !pdf.empty()) {
    WriteStep("Storing " + pdf);
    open.PrintToPdf(pdf);
  }
  WriteStep("Closing the workbook");
  open.RunAutoClose();
}

/// Runs the job of the environment and writes what became of it.
void Run(const Reference<XComponentContext>& context) {
  ListenForFailures(&TheFailures());
  JsonMembers result;
  bool is_macros = false;
  const auto fail = [&](const std::string& text) {
    result[kResultStatus] = Quoted(is_macros ? kJobFailed : kJobNoMacro);
    result[kResultText] = Quoted(text);
  };
  try {
    RunJob(context, result, is_macros);
    result[kResultStatus] = Quoted(kJobOk);
    if (TheFailures().has_failed()) fail(TheFailures().first());
  } catch (const AutomationError& error) {
    const std::string source = ToUtf8(error.source()), text = ToUtf8(error.description());
    fail("error in the macro: " + std::to_string(error.number()) + " (" + source + ") " + text);
    JsonMembers told = {{kErrorNumber, std::to_string(error.number())},
                        {kErrorSource, Quoted(source)},
                        {kErrorText, Quoted(text)}};
    if (const auto* own = dynamic_cast<const MacroError*>(&error))
      told[kErrorLine] = std::to_string(own->line());
    result[kResultError] = JsonOf(told);
  } catch (const MacroFailure& failure) {
    is_macros = failure.reason() == MacroFailure::Reason::Ended;
    fail(std::string("error: ") + failure.what());
  } catch (...) {
    fail("error: " + ToUtf8(CaughtError().description()));
  }
  WriteResult(result);
  ReleaseErrors();
}

/// The same, and that there was not even memory to tell what.
void RunAndTell(const Reference<XComponentContext>& context) noexcept {
  if (IgnoreFailures([&] { Run(context); })) return;
  IgnoreFailures([] {
    std::ofstream(EnvironmentVariable(variables::kJobResult))
        << "{\"" << kResultStatus << "\":\"" << kJobFailed << "\",\"" << kResultText
        << "\":\"error: there is no memory left\"}";
  });
}

void EndOffice(const Reference<XComponentContext>& context) {
  css::frame::Desktop::create(context)->terminate();
}

/// In the event loop, where LibreOffice's start is over. A job ends without LibreOffice's own farewell, which
/// would wait for threads that the copy of the process does not have.
void Serve(const Reference<XComponentContext>& context) {
  if (!ServeJobs(EnvironmentVariable(variables::kJobRequests), EnvironmentVariable(variables::kJobReplies))) {
    return EndOffice(context);
  }
  RunAndTell(context);
  Post([] { std::_Exit(EXIT_SUCCESS); }, context);
}

}  // namespace

void ReportJob::trigger(const OUString&) {
  RunAndTell(context_);
  // What fails is left to the runner's time limit.
  IgnoreFailures([&] {
    const bool serves = !EnvironmentVariable(variables::kJobRequests).empty();
    Post([context = context_, serves] { serves ? Serve(context) : EndOffice(context); }, context_);
  });
}

}  // namespace qva::calc
