// The command line of report-runner.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <csignal>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "host/HostOptions.h"
#include "server/calc/NewReport.h"
#include "tools/report-runner/Batch.h"
#include "tools/report-runner/Check.h"
#include "tools/report-runner/PeriodAnswers.h"
#include "tools/report-runner/ReportRun.h"
#include "tools/report-runner/TextFiles.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr char kRun[] = "run";

volatile std::sig_atomic_t interrupted = 0;

/// Lets what runs end in order: what was started must not outlive us.
void CatchInterruptions() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, [](int) { interrupted = 1; });
}

bool IsInterrupted() {
  return interrupted != 0;
}

/// Where the modules stand, with "host" and "samples" beside them: lib/qva-varnholt/modules of an
/// installation, which has this program in bin, or the folder of the build, which has it in tools.
fs::path ModulesFolder() {
  std::error_code ignored;
  const fs::path base = fs::read_symlink("/proc/self/exe", ignored).parent_path().parent_path();
  const fs::path installed = base / "lib/qva-varnholt/modules";
  return fs::is_directory(installed, ignored) ? installed : base;
}

/// A text in lines of no more than so many characters.
std::string Wrapped(const std::string& text, std::size_t width) {
  std::string lines;
  std::size_t begin = 0;  // of the last line
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (!lines.empty() && lines.size() + word.size() - begin >= width) {
      lines.back() = '\n';
      begin = lines.size();
    }
    lines += word + ' ';
  }
  if (!lines.empty()) lines.pop_back();
  return lines;
}

class HelpFormatter : public CLI::Formatter {
  std::string make_option_desc(const CLI::Option* option) const override {
    constexpr std::size_t kWidth = 88;
    return Wrapped(option->get_description(), kWidth);
  }
};

/// A subcommand, by name and description.
CLI::App& Add(CLI::App& app, const char* name, const char* description) {
  constexpr std::size_t kWidth = 114;
  return *app.add_subcommand(name, Wrapped(description, kWidth));
}

std::string Quoted(const fs::path& path) {
  return '"' + path.string() + '"';
}

// What the user may name. Each gives an empty text for what is right, as CLI11 has it.

enum class Kind { File, FileOrPipe, Folder };

std::string IsThere(const fs::path& path, Kind kind) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) return "there is no " + Quoted(path);
  const bool is_folder = fs::is_directory(status);
  if (kind == Kind::Folder ? is_folder : kind == Kind::File ? fs::is_regular_file(status) : !is_folder)
    return {};
  return Quoted(path) + (kind == Kind::Folder ? " is no folder" : " is no file");
}

/// A folder that is there or can be made: nothing on its path is anything else.
std::string CanBeFolder(const std::string& text) {
  std::error_code error;
  const fs::path path = text;
  fs::path there = fs::absolute(path, error);
  while (there.has_relative_path() && !fs::exists(fs::status(there, error))) there = there.parent_path();
  if (!text.empty() && fs::is_directory(there, error)) return {};
  return Quoted(there.empty() ? path : there) + " is no folder";
}

std::string StaysInOutputFolder(const std::string& text) {
  return IsInFolder(text) ? std::string()
                          : "takes the path of a file in the output folder, not " + Quoted(text);
}

std::string IsNumber(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = error == std::errc() && end == text.data() + text.size() && number > 0;
  return is_number ? std::string() : "takes a whole number above 0";
}

std::string IsPeriod(const std::string& text) {
  return PeriodAnswers(text) ? std::string() : "takes a period such as 2025, 2025-Q3 or 2025-09";
}

/// The options that tell where LibreOffice's modules are.
void AddOfficeOptions(CLI::App& command, OfficeOptions& office) {
  command
      .add_option("--build-folder", office.build_folder,
                  std::string("where ") + kComponentFile +
                      " and " QVA_HOST_MODULE_NAME " stand (those that came with this program)")
      ->type_name("PATH")
      ->check([](const std::string& path) { return IsThere(fs::path(path) / kComponentFile, Kind::File); });
  command
      .add_option("--host-resources", office.host_resources,
                  "folder of the embedded host's texts and sample company (that came with this program)")
      ->type_name("PATH")
      ->check([](const std::string& path) { return IsThere(path, Kind::Folder); });
}

/// What a command keeps until it is done.
struct RunCommand {
  ReportRunOptions options;
  int timeout = 0;
  bool no_picture = false;
  fs::path result;

  int Do() {
    options.picture = !no_picture;
    if (options.office.show) options.timeout = std::chrono::hours(24);  // users take their time
    if (timeout > 0) options.timeout = std::chrono::seconds(timeout);
    options.interrupted = IsInterrupted;
    CatchInterruptions();
    const ReportResult outcome = RunReport(options, OwnOffices(options.office), std::cout, std::cerr);
    if (!outcome.text.empty()) std::cerr << outcome.text << '\n';
    if (!result.empty()) WriteWhole(result, JsonText(ToJson(outcome)));
    return static_cast<int>(outcome.status);
  }
};

void AddRun(CLI::App& app, RunCommand& run, std::function<int()>& action) {
  CLI::App& command = Add(app, kRun,
                          "Opens a report workbook in LibreOffice, without a display unless told otherwise, "
                          "runs its entry macro, and "
                          "leaves in the output folder what the macro saved, what it printed (printed-1.pdf "
                          "and so on), and a PDF and "
                          "a PNG of the workbook. Each step is printed. The word \"run\" may be left out.");
  const auto file_or_pipe = [](const std::string& path) { return IsThere(path, Kind::FileOrPipe); };
  command.add_option("workbook", run.options.workbook, "the report workbook")
      ->required()
      ->type_name("WORKBOOK")
      ->check([](const std::string& path) { return IsThere(path, Kind::File); });
  command
      .add_option(
          "--macro", run.options.macro,
          "entry macro as Module.Procedure (" + run.options.macro + "), or as Library.Module.Procedure")
      ->type_name("NAME");
  command
      .add_option("--book", run.options.book, "code of the host's book to work on (" + run.options.book + ")")
      ->type_name("CODE");
  command
      .add_option("--output-folder", run.options.output_folder,
                  "where the results go, the archive among them (out)")
      ->type_name("PATH")
      ->check(CanBeFolder);
  AddOfficeOptions(command, run.options.office);
  command
      .add_option(
          "--answers", run.options.answers,
          "answers to message boxes, one on each line, at least one for each question; without it the "
          "first button is pressed")
      ->type_name("PATH")
      ->check(file_or_pipe);
  CLI::Option* form_answers =
      command
          .add_option(
              "--form-answers", run.options.form_answers,
              "answers to the library's dialogs, as the guide's \"Answers files\" has them; without it "
              "they are left")
          ->type_name("PATH")
          ->check(file_or_pipe);
  command
      .add_option("--period", run.options.period,
                  "in their place, what the period dialog is answered: 2025, 2025-H1, 2025-Q3, 2025-09 or "
                  "2025-01/2025-05")
      ->type_name("PERIOD")
      ->check(IsPeriod)
      ->excludes(form_answers);
  command.add_flag(
      "--show", run.options.office.show,
      "on the screen, where windows are shown and wait for the user; --answers and --form-answers "
      "still answer for the user. LibreOffice closes when the macro is through: to press a "
      "report's buttons, open it in LibreOffice with the extension");
  command.add_option("--timeout", run.timeout, "how long LibreOffice may take (120; a day with --show)")
      ->type_name("SECONDS")
      ->check(IsNumber);
  command.add_flag("--no-picture", run.no_picture, "no PDF and no PNG");
  command
      .add_option("--expect", run.options.expect,
                  "the run failed unless the macro leaves this file, a path in the output folder")
      ->type_name("PATH")
      ->check(StaysInOutputFolder);
  command
      .add_option(
          "--log", run.options.log,
          "the macro writes a log of its steps to this path in the output folder, where an earlier one "
          "is deleted first: it is printed as it grows, in place of the calls")
      ->type_name("PATH")
      ->check(StaysInOutputFolder);
  command
      .add_option("--result", run.result,
                  "write what became of the run to this file, as JSON (docs/batch.md)")
      ->type_name("FILE")
      ->check(
          [](const std::string& path) { return IsThere(fs::absolute(path).parent_path(), Kind::Folder); });
  command.add_flag("--keep-database", run.options.keep_database,
                   std::string("leave the database of the embedded host, which each run has of its own, in "
                               "the output folder as ") +
                       embedded::kDatabaseFile);
  command.callback([&] { action = [&] { return run.Do(); }; });
}

struct NewCommand {
  std::string name;
  fs::path template_file;

  int Do() const {
    fs::path workbook = name;
    if (workbook.extension() != ".fods") workbook += ".fods";
    if (!WriteNewReport(template_file, workbook, workbook.stem().string())) {
      throw std::runtime_error("there is a file " + workbook.string() + " already");
    }
    std::cout << workbook.string() << ": project " << ProjectName(workbook.stem().string())
              << "; the report goes into its module Ataskaita, procedure RasytiTurini\n";
    return 0;
  }
};

void AddNew(CLI::App& app, NewCommand& made, std::function<int()>& action) {
  CLI::App& command = Add(app, "new",
                          "Writes a report workbook of that name (NAME.fods, or a path to it) "
                          "from TEMPLATE, else from the one that "
                          "came with this program: it runs as it is, and has one marked place "
                          "for the report itself. A file of that "
                          "name is never replaced.");
  command.add_option("name", made.name, "name of the report, or path of its workbook")
      ->required()
      ->type_name("NAME")
      ->check([](const std::string& name) { return name.empty() ? "takes a name" : std::string(); });
  command.add_option("template", made.template_file, "workbook to take for a template")
      ->type_name("TEMPLATE");
  command.callback([&] { action = [&] { return made.Do(); }; });
}

struct BatchCommand {
  BatchOptions options;
  int timeout = 0;
  int memory_limit = 0;
  bool no_picture = false;

  int Do() {
    options.picture = !no_picture;
    if (timeout > 0) options.timeout = std::chrono::seconds(timeout);
    if (memory_limit > 0)
      options.memory_limit = std::uintmax_t{1024} * 1024 * static_cast<unsigned>(memory_limit);
    options.interrupted = IsInterrupted;
    CatchInterruptions();
    return static_cast<int>(RunBatch(options, std::cerr));
  }
};

void AddBatch(CLI::App& app, BatchCommand& batch, std::function<int()>& action) {
  CLI::App& command = Add(
      app, "batch",
      "Runs the jobs of a CSV file, each row a report workbook with its book, answers or period, and output "
      "folder, in LibreOffices that stay warm (docs/batch.md). Jobs that are done are not done again.");
  command.add_option("jobs", batch.options.jobs_file, "the jobs")
      ->required()
      ->type_name("JOBS.csv")
      ->check([](const std::string& path) { return IsThere(path, Kind::File); });
  const auto number = [&](const char* option, int& value, const char* type, const char* text) {
    command.add_option(option, value, text)->type_name(type)->check(IsNumber);
  };
  number("--workers", batch.options.workers, "N", "how many LibreOffices work at once (1)");
  number("--jobs-per-worker", batch.options.jobs_per_worker, "N",
         "how many jobs a LibreOffice does before a fresh one takes its place (100)");
  number(
      "--memory-limit", batch.memory_limit, "MB",
      "how much memory a LibreOffice may have: one that has more gives way to a fresh one, a job that takes "
      "more is stopped (2048)");
  number("--timeout", batch.timeout, "SECONDS", "how long LibreOffice may take for a job (120)");
  command.add_flag("--no-picture", batch.no_picture, "no PDF and no PNG");
  command
      .add_option("--summary-folder", batch.options.summary_folder,
                  "where summary.csv and summary.json go (JOBS.summary, beside the jobs)")
      ->type_name("PATH")
      ->check(CanBeFolder);
  AddOfficeOptions(command, batch.options.office);
  command.callback([&] { action = [&] { return batch.Do(); }; });
}

void AddCheck(CLI::App& app, CheckOptions& options, std::function<int()>& action) {
  CLI::App& command =
      Add(app, "check",
          "Tells whether all is there that reports need: LibreOffice, the library's component, the embedded "
          "host, "
          "folders that can be written, and whether a macro that uses the library runs in LibreOffice.");
  command.add_option("--output-folder", options.output_folder, "where results are to go (out)")
      ->type_name("PATH");
  AddOfficeOptions(command, options.office);
  command.callback([&] {
    action = [&] {
      options.interrupted = IsInterrupted;
      CatchInterruptions();
      return static_cast<int>(CheckMachine(options, std::cout));
    };
  });
}

std::string Footer() {
  std::string text =
      "An answer that fits no window stops the run with its line, before anything is done by it; so does a "
      "question "
      "for\nwhich no answer is left.\n\nExit status:\n";
  for (const StatusText& status : StatusTexts()) {
    const std::string number = std::to_string(static_cast<int>(status.status));
    text += std::string(5 - number.size(), ' ') + number + "  " + std::string(status.text) + '\n';
  }
  return text +
         "A report that is not saved because a question was answered so (\"Ne\" to message 840) is no "
         "failure: the "
         "exit status\nis 0.";
}

int Main(std::vector<std::string> arguments) {
  CLI::App app("Runs report workbooks in LibreOffice.", "report-runner");
  // A later option goes before an earlier one.
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  app.set_help_flag();
  app.set_help_all_flag("--help", "this text");
  app.formatter(std::make_shared<HelpFormatter>());
  app.get_formatter()->column_width(28);
  app.footer(Footer());
  app.require_subcommand(1);

  OfficeOptions office;
  office.build_folder = ModulesFolder();
  office.host_resources = office.build_folder / "host";
  std::function<int()> action;
  RunCommand run;
  NewCommand made;
  BatchCommand batch;
  CheckOptions check;
  run.options.office = batch.options.office = check.office = office;
  made.template_file = office.build_folder / kTemplate;
  AddRun(app, run, action);
  AddNew(app, made, action);
  AddBatch(app, batch, action);
  AddCheck(app, check, action);
  app.set_version_flag("--version", "report-runner (QVA_Varnholt) " QVA_VERSION, "the version");

  constexpr std::string_view kOthers[] = {kRun, "new", "batch", "check", "--help", "--version"};
  if (!arguments.empty() && std::ranges::find(kOthers, arguments[0]) == std::end(kOthers)) {
    arguments.insert(arguments.begin(), kRun);
  }
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : static_cast<int>(ReportStatus::WrongCommandLine);
  }
  return action();
}

}  // namespace
}  // namespace qva

int main(int argc, char** argv) {
  try {
    return qva::Main({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "report-runner: " << error.what() << '\n';
    return static_cast<int>(qva::ReportStatus::WrongCommandLine);
  }
}
