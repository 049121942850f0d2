// Runs a report workbook in LibreOffice from the command line; see Usage below.
#include <getopt.h>

#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/report-runner/NewReport.h"
#include "tools/report-runner/ReportRun.h"

namespace {

constexpr char kUsage[] =
    R"(Usage: report-runner [options] WORKBOOK
  or:  report-runner new NAME [TEMPLATE]

"new" writes a report workbook of that name (NAME.fods, or a path to it) from TEMPLATE, else from the one that came
with this program: it runs as it is, and has one marked place for the report itself. A file of that name is never
replaced. The other form opens a report workbook in LibreOffice, without a display unless told otherwise, runs its
entry macro, and leaves in the output folder what the macro saved, what it printed (printed-1.pdf and so on), and a PDF
and a PNG of the workbook. Each step is printed.

Options:
  --macro NAME           entry macro as Module.Procedure of the workbook's own library (Ataskaita.Main), or as
                         Library.Module.Procedure
  --book CODE            code of the host's book to work on (MEDVILNE)
  --output-folder PATH   where the results go, the archive among them (out)
  --build-folder PATH    where libqva_calc.so and libqva_host.so stand (those that came with this program)
  --host-resources PATH  folder of the embedded host's texts and sample company (that came with this program)
  --answers PATH         answers to message boxes, one on each line, at least one for each question; without it the
                         first button is pressed
  --form-answers PATH    answers to the library's dialogs, as the guide's "Answers files" has them; without it they
                         are left
  --show                 on the screen, where windows are shown and wait for the user; --answers and --form-answers
                         still answer for the user. LibreOffice closes when the macro is through: to press a report's
                         buttons, open it in LibreOffice with the extension
  --timeout SECONDS      how long LibreOffice may take (120; a day with --show)
  --no-picture           no PDF and no PNG
  --expect PATH          the run failed unless the macro leaves this file, a path in the output folder
  --log PATH             the macro writes a log of its steps to this path in the output folder, where an earlier one
                         is deleted first: it is printed as it grows, in place of the calls
  --help                 this text
  --version              the version

An answer that fits no window stops the run with its line, before anything is done by it; so does a question for
which no answer is left.

Exit status: 0 when the macro went through, 1 when it failed, the library told of a failure (no such book, no
answers, a report that could not be saved), an answer was wrong or missing, or another run has the output folder, 2
for a wrong command line or a path that is not there, 3 when LibreOffice is missing or had to be stopped. A report that
is not saved because a question was answered so ("Ne" to message 840) is no failure: the exit status is 0.
)";

enum Option {
  kMacro = 1,
  kBook,
  kOutput,
  kBuild,
  kHost,
  kAnswers,
  kFormAnswers,
  kShow,
  kTimeout,
  kNoPicture,
  kExpect,
  kLog,
  kHelp,
  kVersion
};

constexpr option kOptions[] = {{"macro", required_argument, nullptr, kMacro},
                               {"book", required_argument, nullptr, kBook},
                               {"output-folder", required_argument, nullptr, kOutput},
                               {"build-folder", required_argument, nullptr, kBuild},
                               {"host-resources", required_argument, nullptr, kHost},
                               {"answers", required_argument, nullptr, kAnswers},
                               {"form-answers", required_argument, nullptr, kFormAnswers},
                               {"show", no_argument, nullptr, kShow},
                               {"timeout", required_argument, nullptr, kTimeout},
                               {"no-picture", no_argument, nullptr, kNoPicture},
                               {"expect", required_argument, nullptr, kExpect},
                               {"log", required_argument, nullptr, kLog},
                               {"help", no_argument, nullptr, kHelp},
                               {"version", no_argument, nullptr, kVersion},
                               {nullptr, 0, nullptr, 0}};

/// The seconds that a text of nothing but digits means; 0 for any other text.
std::chrono::seconds Seconds(std::string_view text) {
  std::int32_t seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size()) seconds = 0;
  return std::chrono::seconds(seconds);
}

/// What the user named, and what it must be.
struct Named {
  enum class Kind { File, FileOrPipe, Folder };
  std::filesystem::path path;
  Kind kind;
};

/// Whether the files and folders that the user named are there; says which one is not.
bool AreThere(const std::vector<Named>& named) {
  for (const auto& [path, kind] : named) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
      std::cerr << "report-runner: there is no " << path << '\n';
      return false;
    }
    const bool is_folder = std::filesystem::is_directory(status);
    if (kind == Named::Kind::Folder ? is_folder
        : kind == Named::Kind::File ? std::filesystem::is_regular_file(status)
                                    : !is_folder) {
      continue;
    }
    std::cerr << "report-runner: " << path
              << (kind == Named::Kind::Folder ? " is no folder\n" : " is no file\n");
    return false;
  }
  return true;
}

/// Whether a folder is there or can be made: nothing on its path is anything else. Says so when that is not
/// so.
bool CanBeFolder(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path there = std::filesystem::absolute(path, error);
  while (there.has_relative_path() && !std::filesystem::exists(std::filesystem::status(there, error))) {
    there = there.parent_path();
  }
  if (std::filesystem::is_directory(there, error)) return true;
  std::cerr << "report-runner: " << (there.empty() ? path : there) << " is no folder\n";
  return false;
}

/// Whether the option's value is the path of a file in the output folder; says so when it is not.
bool StaysInOutputFolder(const char* option, const std::filesystem::path& path) {
  const std::filesystem::path normal = path.lexically_normal();
  if (path.is_relative() && path.has_filename() && normal != "." && *normal.begin() != "..") return true;
  std::cerr << "report-runner: " << option << " takes the path of a file in the output folder, not " << path
            << '\n';
  return false;
}

volatile std::sig_atomic_t interrupted = 0;

/// Lets the run end in order: what was started must not outlive us.
void CatchInterruptions() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, [](int) { interrupted = 1; });
}

/// Where the modules stand, with "host" and "samples" beside them: lib/qva-varnholt/modules of an
/// installation, which has this program in bin, or the folder of the build, which has it in tools.
std::filesystem::path ModulesFolder() {
  std::error_code ignored;
  const std::filesystem::path base =
      std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path().parent_path();
  const std::filesystem::path installed = base / "lib/qva-varnholt/modules";
  return std::filesystem::is_directory(installed, ignored) ? installed : base;
}

/// The exit status of "new".
int MakeNewReport(const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.size() > 2 || arguments[0].empty() || arguments[0].front() == '-') {
    std::cerr << kUsage;
    return 2;
  }
  std::filesystem::path workbook = arguments[0];
  if (workbook.extension() != ".fods") workbook += ".fods";
  const std::filesystem::path template_file =
      arguments.size() == 2 ? std::filesystem::path(arguments[1]) : ModulesFolder() / "samples/sablonas.fods";
  try {
    qva::WriteNewReport(template_file, workbook, workbook.stem().string());
  } catch (const std::exception& exception) {
    std::cerr << "report-runner: " << exception.what() << '\n';
    return 2;
  }
  std::cout << workbook.string() << ": project " << qva::ProjectName(workbook.stem().string())
            << "; the report goes into its module Ataskaita, procedure RasytiTurini\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == "new") return MakeNewReport({argv + 2, argv + argc});
  qva::ReportRunOptions options;
  options.build_folder = ModulesFolder();
  options.host_resources = options.build_folder / "host";
  std::chrono::seconds timeout{0};
  std::vector<Named> named;
  int choice;
  while ((choice = getopt_long(argc, argv, "", kOptions, nullptr)) != -1) {
    switch (choice) {
      case kMacro:
        options.macro = optarg;
        break;
      case kBook:
        options.book = optarg;
        break;
      case kOutput:
        options.output_folder = optarg;
        if (!CanBeFolder(options.output_folder)) return 2;
        break;
      case kBuild:
        options.build_folder = optarg;
        named.push_back({options.build_folder / "libqva_calc.so", Named::Kind::File});
        break;
      case kHost:
        options.host_resources = optarg;
        named.push_back({options.host_resources, Named::Kind::Folder});
        break;
      case kAnswers:
        options.answers = optarg;
        named.push_back({options.answers, Named::Kind::FileOrPipe});
        break;
      case kFormAnswers:
        options.form_answers = optarg;
        named.push_back({options.form_answers, Named::Kind::FileOrPipe});
        break;
      case kShow:
        options.show = true;
        break;
      case kTimeout:
        timeout = Seconds(optarg);
        if (timeout.count() <= 0) {
          std::cerr << "report-runner: --timeout takes a number of seconds above 0\n";
          return 2;
        }
        break;
      case kNoPicture:
        options.picture = false;
        break;
      case kExpect:
        options.expect = optarg;
        if (!StaysInOutputFolder("--expect", options.expect)) return 2;
        break;
      case kLog:
        options.log = optarg;
        if (!StaysInOutputFolder("--log", options.log)) return 2;
        break;
      case kHelp:
        std::cout << kUsage;
        return 0;
      case kVersion:
        std::cout << "report-runner (QVA_Varnholt) " QVA_VERSION "\n";
        return 0;
      default:
        std::cerr << kUsage;
        return 2;
    }
  }
  if (argc - optind != 1) {
    std::cerr << kUsage;
    return 2;
  }
  options.workbook = argv[optind];
  named.push_back({options.workbook, Named::Kind::File});
  if (!AreThere(named)) return 2;
  if (options.show) options.timeout = std::chrono::hours(24);  // users take their time
  if (timeout.count() > 0) options.timeout = timeout;
  options.interrupted = [] { return interrupted != 0; };
  CatchInterruptions();
  try {
    return qva::RunReport(options, std::cout, std::cerr);
  } catch (const std::exception& error) {
    std::cerr << "report-runner: " << error.what() << '\n';
    return 3;
  }
}
