#include "tools/report-runner/ReportRun.h"

#include <langinfo.h>
#include <locale.h>

#include <fstream>
#include <map>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "platform/filesystem/native_file.h"
#include "platform/host.h"
#include "platform/posix/RegistryText.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "platform/variables.h"
#include "server/call_log.h"
#include "tools/report-runner/OutputFolder.h"
#include "tools/report-runner/Process.h"
#include "tools/report-runner/Xml.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr int kMacroFailed = 1;
constexpr int kNoLibreOffice = 3;

void Write(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
}

std::string UrlOf(const fs::path& path) {
  std::ostringstream url;
  url << "file://" << std::hex << std::uppercase;
  for (const unsigned char c : path.string()) {
    if (std::isalnum(c) || std::string_view("/._-").find(static_cast<char>(c)) != std::string_view::npos) {
      url << c;
    } else {
      url << '%' << (c >> 4) << (c & 15);
    }
  }
  return url.str();
}

/// Settings of the private profile: macros run, no first-start questions.
std::string ProfileSettings() {
  const auto item = [](const char* path, const char* name, const char* value) {
    return std::string("<item oor:path=\"/org.openoffice.") + path + "\"><prop oor:name=\"" + name +
           "\" oor:op=\"fuse\"><value>" + value + "</value></prop></item>\n";
  };
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\" "
         "xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n" +
         item("Office.Common/Security/Scripting", "MacroSecurityLevel", "0") +
         item("Setup/Office", "ooSetupInstCompleted", "true") +
         item("Office.Common/Misc", "FirstRun", "false") +
         item("Office.Common/Misc", "ShowTipOfTheDay", "false") +
         item("Setup/Product", "ooSetupLastVersion", "99.9") + "</oor:items>\n";
}

/// The one printer of the private profile: each job becomes a PDF file, printed-1.pdf and so on, whose path
/// without number and ending the environment variable QVA_JOB_PRINTED gives.
constexpr std::string_view kPrinterSettings =
    "[__Global_Printer_Defaults__]\n"
    "DisableCUPS=1\n"
    "PDFDevice=1\n"
    "PPD_PageSize=A4\n"
    "[PDF]\n"
    "Printer=SGENPRT/PDF\n"
    "DefaultPrinter=1\n"
    "PDFDevice=1\n"
    "PPD_PageSize=A4\n"
    "Command=n=1; while [ -e \"$QVA_JOB_PRINTED-$n.pdf\" ]; do n=$((n+1)); done; "
    "cat > \"$QVA_JOB_PRINTED-$n.pdf\"\n";
constexpr std::string_view kPrinted = "printed";

/// Removes what an earlier run printed.
void RemovePrinted(const fs::path& folder) {
  for (int n = 1; fs::remove(folder / (std::string(kPrinted) + "-" + std::to_string(n) + ".pdf")); ++n) {
  }
}

/// What LibreOffice reads to find our services.
std::string Components(const fs::path& library) {
  const auto implementation = [](const char* name, const char* constructor, const char* service,
                                 const char* more) {
    return std::string("  <implementation name=\"") + name + "\" constructor=\"" + constructor + "\"" + more +
           "><service name=\"" + service + "\"/></implementation>\n";
  };
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<components xmlns=\"http://openoffice.org/2010/uno-components\">\n"
         " <component loader=\"com.sun.star.loader.SharedLibrary\" environment=\"gcc3\" uri=\"" +
         XmlText(UrlOf(library)) + "\">\n" +
         implementation("QVA_Varnholt.ObjectFactory", "qva_create_object_factory",
                        "com.sun.star.bridge.OleObjectFactory", " single-instance=\"true\"") +
         implementation("QVA_Varnholt.ReportJob", "qva_create_report_job", "QVA_Varnholt.ReportJob", "") +
         implementation("QVA_Varnholt.MenuJob", "qva_create_menu_job", "QVA_Varnholt.MenuJob", "") +
         " </component>\n</components>\n";
}

/// The registry of the run: the host settings that name the book and the folder of the installation.
std::string RegistryWithBook(std::string_view book) {
  RegistryText registry;
  const auto set = [&](std::u16string_view section, std::u16string_view setting, std::u16string_view value) {
    registry.Set(u"HKEY_CURRENT_USER\\" + SettingsKeyPath(host::kSettingsApplication, section), setting,
                 {.type = kRegSz, .text = std::u16string(value) + u'\0', .bytes = {}});
  };
  set(host::kFormsSection, host::kBookSetting, FromUtf8(book));
  set(host::kGeneralSection, u"AppPath", u"C:\\Quillon");
  return registry.Utf8();
}

/// Where the sample companies keep their reports (table PathKey of host/sample.sql). Of an archive, the
/// library makes no more than its last folder.
constexpr std::string_view kArchives[] = {"C/Ataskaitos/Archyvas", "C/Ataskaitos/Baltija",
                                          "C/Ataskaitos/Formos"};

/// The drives that macros save to: in the output folder, unless the user's environment has others.
void MakeDrives(const fs::path& output, std::map<std::string, std::string>& environment) {
  if (!EnvironmentVariable(variables::kDrives).empty()) return;
  for (const std::string_view archive : kArchives) fs::create_directories(output / "drives" / archive);
  environment[variables::kDrives] = (output / "drives").string();
}

void PrintStep(std::string_view step, std::ostream& out) {
  out << "  " << step << std::endl;
}

/// What a line of the log of calls says without time, process, duration and arguments.
std::string StepOfCall(const std::string& line) {
  std::vector<std::string> columns(1);
  for (const char c : line) c == '\t' ? void(columns.emplace_back()) : columns.back().push_back(c);
  if (columns.size() != static_cast<std::size_t>(CallLogColumn::Outcome) + 1) return line;
  const auto column = [&](CallLogColumn which) { return columns[static_cast<std::size_t>(which)]; };
  const std::string outcome = column(CallLogColumn::Outcome);
  return column(CallLogColumn::Member) + (outcome.empty() ? "" : " " + outcome);
}

/// The lines that a growing file gains.
class Follower {
 public:
  explicit Follower(fs::path path) : path_(std::move(path)) {}

  /// What came since the last call.
  std::vector<std::string> NewLines() {
    std::vector<std::string> lines;
    // A log that was full has another name by now.
    std::error_code missing;
    const std::uintmax_t size = fs::file_size(path_, missing);
    if (!missing && size < read_) {
      Read(fs::path(path_) += ".1", lines);
      read_ = 0;
    }
    Read(path_, lines);
    return lines;
  }

 private:
  void Read(const fs::path& path, std::vector<std::string>& lines) {
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(read_));
    std::string line;
    while (std::getline(file, line) && !file.eof()) {
      read_ += line.size() + 1;
      lines.push_back(line);
    }
  }

  fs::path path_;
  std::size_t read_ = 0;
};

/// Prints what the files of a run gain, in the order in which things happen.
class Narrator {
 public:
  /// `job` is the file of the job's own steps, `report` that of the macro's - or the log of calls -,
  /// `messages` that of the messages.
  Narrator(const fs::path& job, const fs::path& report, bool is_call_log, const fs::path& messages,
           std::ostream& out)
      : job_(job), report_(report), is_call_log_(is_call_log), messages_(messages), out_(out) {}

  void GoOn() {
    // The job is asked first: whatever the macro wrote before a step of the job is there by then.
    const std::vector<std::string> steps = job_.NewLines();
    auto step = steps.begin();
    for (; step != steps.end() && steps_before_macro_ > 0; ++step, --steps_before_macro_)
      PrintStep(*step, out_);
    for (const std::string& line : report_.NewLines())
      PrintStep(is_call_log_ ? StepOfCall(line) : line, out_);
    for (const std::string& line : messages_.NewLines()) PrintStep(line, out_);
    for (; step != steps.end(); ++step) PrintStep(*step, out_);
  }

 private:
  Follower job_;
  Follower report_;
  bool is_call_log_;
  Follower messages_;
  std::ostream& out_;
  int steps_before_macro_ = 2;  ///< as in server/calc/ReportJob.h
};

/// The file's text without the line feed at its end.
std::string Contents(const fs::path& path) {
  std::ostringstream contents;
  contents << std::ifstream(path).rdbuf();
  std::string text = contents.str();
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

/// True when file names are UTF-8 in the user's locale. In any other one LibreOffice could not open some.
bool LocaleIsUtf8() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (!locale) return false;
  const bool is_utf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
  freelocale(locale);
  return is_utf8;
}

/// PNG of the PDF's first page, for whoever wants to look at the result quickly.
void MakePicture(const fs::path& pdf, const fs::path& errors, std::ostream& err) {
  fs::path base = pdf;
  base.replace_extension();
  Process process({"pdftoppm", "-png", "-r", "110", "-singlefile", pdf.string(), base.string()}, {}, errors);
  if (process.Wait(std::chrono::seconds(60)) != 0) err << "No PNG was made: pdftoppm is missing or failed\n";
}

/// Runs a step when it goes.
class AtEnd {
 public:
  explicit AtEnd(std::function<void()> step) : step_(std::move(step)) {}
  ~AtEnd() { step_(); }
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;

 private:
  std::function<void()> step_;
};

/// The file by which LibreOffice keeps others from a document.
fs::path LockOf(const fs::path& document) {
  return document.parent_path() / (".~lock." + document.filename().string() + "#");
}

/// Where an earlier run was cut off, locks of its LibreOffice are left at what it had open.
void RemoveLocks(const fs::path& output) {
  RemoveDeadLocks(output);
  if (const fs::path own = EnvironmentVariable(variables::kDrives); !own.empty()) RemoveDeadLocks(own);
}

/// Prints the files of a run, by name.
void PrintFiles(const OutputFolder& output, std::ostream& out) {
  for (const auto& [name, size] : output.NewFiles())
    out << "  " << name << " (" << size << " bytes)" << std::endl;
}

}  // namespace

int RunReport(const ReportRunOptions& options, std::ostream& out, std::ostream& err) {
  const auto office = FindProgram("soffice");
  if (!office) {
    err << "LibreOffice is missing: there is no soffice on the search path. Install libreoffice-calc.\n";
    return kNoLibreOffice;
  }
  const fs::path component = fs::absolute(options.build_folder) / "libqva_calc.so";
  for (const fs::path& needed : {component, options.workbook}) {
    if (!fs::exists(needed)) {
      err << "There is no " << needed.string() << '\n';
      return kNoLibreOffice;
    }
  }

  const fs::path output = fs::absolute(options.output_folder).lexically_normal();
  OutputFolder output_folder(output);
  if (!output_folder.IsOurs()) {
    err << "Another run is working in the output folder " << output.string() << '\n';
    return kMacroFailed;
  }
  const fs::path workbook = output / options.workbook.filename();
  if (fs::exists(workbook) && fs::equivalent(workbook, options.workbook)) {
    err << "The workbook stands in the output folder " << output.string() << ", where its copy would go\n";
    return kMacroFailed;
  }
  RemoveLocks(output);
  if (const fs::path lock = LockOf(workbook); fs::exists(lock)) {
    err << workbook.string() << " is open in another program: close it there. Where none has it, delete "
        << lock.string() << '\n';
    return kMacroFailed;
  }
  output_folder.Remember();
  fs::copy_file(options.workbook, workbook, fs::copy_options::overwrite_existing);
  fs::path pdf = workbook;
  pdf.replace_extension(".pdf");

  // When the profile is gone again, so that its locks count as dead.
  const AtEnd remove_locks([&] { RemoveLocks(output); });
  const ProfileFolder folder;
  const fs::path profile = folder.path() / "profile";
  fs::create_directories(profile / "user");
  Write(profile / "user" / "registrymodifications.xcu", ProfileSettings());
  fs::create_directories(profile / "user" / "psprint");
  Write(profile / "user" / "psprint" / "psprint.conf", std::string(kPrinterSettings));
  Write(folder.path() / "qva.components", Components(component));
  Write(folder.path() / "registry.reg", RegistryWithBook(options.book));
  const fs::path steps = folder.path() / "steps.txt";
  const fs::path job_steps = folder.path() / "job.txt";
  const fs::path result = folder.path() / "result.txt";
  const fs::path errors = folder.path() / "errors.txt";
  const fs::path messages = output / "messages.txt";
  fs::remove(messages);
  if (!options.log.empty()) fs::remove(output / options.log);
  RemovePrinted(output);

  std::map<std::string, std::string> environment = {
      {variables::kJobWorkbook, workbook.string()},
      {variables::kJobMacro, options.macro},
      {variables::kJobPdf, options.picture ? pdf.string() : ""},
      {variables::kJobPrinted, (output / kPrinted).string()},
      {variables::kJobResult, result.string()},
      {variables::kJobSteps, job_steps.string()},
      {variables::kCallLog, steps.string()},
      {variables::kRegistry, (folder.path() / "registry.reg").string()},
      {variables::kHostDatabase, (folder.path() / "host.sqlite").string()},
      {variables::kHostResources, fs::absolute(options.host_resources).string()},
  };
  std::vector<std::string> arguments = {office->string(), "--norestore", "--nologo", "--nodefault",
                                        "--nolockcheck"};
  if (!options.show) {
    arguments.emplace_back("--headless");
    environment["SAL_USE_VCLPLUGIN"] = "svp";
  }
  // A log means that nobody sits at the screen; without one message boxes are shown there.
  if (!options.show || !options.answers.empty()) environment[variables::kMessageLog] = messages.string();
  MakeDrives(output, environment);
  if (!LocaleIsUtf8()) environment["LC_ALL"] = "C.UTF-8";
  if (!options.answers.empty()) environment[variables::kAnswers] = fs::absolute(options.answers).string();
  if (!options.form_answers.empty()) {
    environment[variables::kFormAnswers] = fs::absolute(options.form_answers).string();
  }

  out << "Report " << options.workbook.filename().string() << ", book " << options.book << std::endl;
  const fs::path office_folder = fs::canonical(*office).parent_path();
  arguments.push_back("-env:UserInstallation=" + UrlOf(profile));
  arguments.push_back("-env:URE_MORE_SERVICES=<" + UrlOf(office_folder / "services") + ">* " +
                      UrlOf(folder.path() / "qva.components"));
  arguments.emplace_back("service:QVA_Varnholt.ReportJob");
  PrintStep("Starting LibreOffice", out);
  Process process(arguments, environment, errors);
  const bool has_own_log = !options.log.empty();
  Narrator narrator(job_steps, has_own_log ? output / options.log : steps, !has_own_log, messages, out);
  const auto deadline = std::chrono::steady_clock::now() + options.timeout;
  while (process.IsRunning() && std::chrono::steady_clock::now() < deadline && !options.interrupted()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    narrator.GoOn();
  }
  const bool timed_out = process.IsRunning();
  process.Kill();
  narrator.GoOn();
  if (options.interrupted()) {
    err << "Interrupted; LibreOffice was stopped\n";
    return kNoLibreOffice;
  }
  if (timed_out) {
    err << "LibreOffice did not finish within " << options.timeout.count() << " seconds and was stopped\n";
    return kNoLibreOffice;
  }
  const std::string outcome = Contents(result);
  if (outcome.empty()) {
    err << "LibreOffice ended without running the report (exit status " << process.ExitStatus() << ")\n"
        << std::ifstream(errors).rdbuf();
    return kNoLibreOffice;
  }
  if (outcome != "ok") {
    err << "The report failed: " << outcome << '\n';
    return kMacroFailed;
  }
  if (!options.expect.empty() && !output_folder.IsNew(options.expect)) {
    err << "The report failed: its macro did not leave " << options.expect
        << (fs::exists(output / options.expect) ? "; the one that is there is of an earlier run" : "")
        << '\n';
    return kMacroFailed;
  }
  if (options.picture) MakePicture(pdf, errors, err);
  out << "Results in " << output.string() << ':' << std::endl;
  PrintFiles(output_folder, out);
  return 0;
}

}  // namespace qva
