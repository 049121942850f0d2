#include "tools/report-runner/Office.h"

#include <fcntl.h>
#include <locale.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cctype>
#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/HostOptions.h"
#include "platform/posix/SystemLocale.h"
#include "platform/variables.h"
#include "server/calc/Xml.h"
#include "server/calc/entry_macro.h"
#include "server/calc/job_protocol.h"
#include "server/calc/service_names.h"
#include "tools/report-runner/MacroWorkbook.h"
#include "tools/report-runner/TextFiles.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

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

/// Settings of the private profile: macros run, no first-start questions; and where nobody looks, no sidebar,
/// which takes longer to make than the rest of a workbook's window.
std::string ProfileSettings(bool show) {
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
         item("Setup/Product", "ooSetupLastVersion", "99.9") +
         (show ? std::string()
               : item("Office.Views/Windows/org.openoffice.Office.Views:WindowType['scalc/10336']/UserData",
                      "Data\" oor:type=\"xs:string", "V2,H,0")) +
         "</oor:items>\n";
}

/// The one printer of the private profile: each job becomes a PDF file, printed-1.pdf and so on, whose path
/// without number and ending an environment variable gives.
std::string PrinterSettings() {
  const std::string file = std::string("\"$") + variables::kJobPrinted + "-$n.pdf\"";
  return "[__Global_Printer_Defaults__]\n"
         "DisableCUPS=1\n"
         "PDFDevice=1\n"
         "PPD_PageSize=A4\n"
         "[PDF]\n"
         "Printer=SGENPRT/PDF\n"
         "DefaultPrinter=1\n"
         "PDFDevice=1\n"
         "PPD_PageSize=A4\n"
         "Command=n=1; while [ -e " +
         file + " ]; do n=$((n+1)); done; cat > " + file + "\n";
}

/// What LibreOffice reads to find our services.
std::string Components(const fs::path& library) {
  using calc::kMenuJob, calc::kObjectFactory, calc::kOleObjectFactory, calc::kReportJob;
  const auto implementation = [](const char* name, const char* constructor, const char* service,
                                 const char* more) {
    return std::string("  <implementation name=\"") + name + "\" constructor=\"" + constructor + "\"" + more +
           "><service name=\"" + service + "\"/></implementation>\n";
  };
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<components xmlns=\"http://openoffice.org/2010/uno-components\">\n"
         " <component loader=\"com.sun.star.loader.SharedLibrary\" environment=\"gcc3\" uri=\"" +
         XmlText(UrlOf(library)) + "\">\n" +
         implementation(kObjectFactory, "qva_create_object_factory", kOleObjectFactory,
                        " single-instance=\"true\"") +
         implementation(kReportJob, "qva_create_report_job", kReportJob, "") +
         implementation(kMenuJob, "qva_create_menu_job", kMenuJob, "") + " </component>\n</components>\n";
}

/// What a warm LibreOffice does first, so that jobs find it loaded: what reports use of Excel, once. It
/// creates nothing of the library's: that takes registry, drives and answers from the environment of the
/// process that first does.
constexpr std::string_view kFirstMacro =
    "  Dim oSheet As Object, oCells As Object, oName As Object, vValues, nFile As Integer\n"
    "  On Error Resume Next\n"
    "  ThisWorkbook.Activate\n"
    "  Set oSheet = ThisWorkbook.Worksheets(\"Lapas\")\n"
    "  oSheet.Activate\n"
    "  Application.ScreenUpdating = False\n"
    "  Set oCells = oSheet.Range(\"A1:D20\")\n"
    "  oCells.Formula = \"=ROW()*COLUMN()/7\"\n"
    "  oSheet.Range(\"A2\").Formula = \"=SUM(B1:B20)+IF(C1>1,ROUND(D1,2),0)\"\n"
    // A text that may be an amount has LibreOffice read the currencies of all countries.
    "  oSheet.Range(\"A3\").Formula = \"=VALUE(\"\"5 EUR\"\")+\"\"2025-12-31\"\"+YEAR(TODAY())\"\n"
    "  oSheet.Range(\"A4\").Value = \"2025-12-31\"\n"
    "  oSheet.Range(\"A5\").Value = \"Ąžuolas\"\n"
    "  oCells.Value = oCells.Value\n"
    "  vValues = oCells.CellRange.getDataArray()\n"
    "  vValues = oCells.CellRange.getFormulaArray()\n"
    "  oCells.NumberFormat = \"#,##0.00\"\n"
    "  oSheet.Range(\"B1\").NumberFormat = \"yyyy-mm-dd\"\n"
    "  oCells.Interior.ColorIndex = 15\n"
    "  oCells.Font.Bold = True\n"
    "  oCells.Font.Italic = oSheet.Range(\"B2\").Font.Italic\n"
    "  oCells.Borders.LineStyle = 1\n"
    "  oCells.HorizontalAlignment = -4152\n"
    "  oCells.Columns(1).ColumnWidth = 20\n"
    "  oCells.Rows(1).RowHeight = 20\n"
    "  oSheet.Cells(1, 1).Resize(1, 2).Merge\n"
    "  oSheet.Cells(1, 1).Offset(0, 2).ClearContents\n"
    "  oCells.Locked = True\n"
    "  oSheet.Protect \"1\"\n"
    "  oSheet.Unprotect \"1\"\n"
    "  oSheet.Range(\"B4\").Select\n"
    "  ThisWorkbook.Names.Add \"Pirmas\", \"=Lapas!$A$1:$D$20\"\n"
    "  Set oName = ThisWorkbook.Names.Item(\"Pirmas\")\n"
    "  oName.RefersToRange.Cells(1, 1).Value = oName.Visible\n"
    "  oSheet.PageSetup.PrintArea = \"$A$1:$D$20\"\n"
    "  ActiveWindow.DisplayGridlines = False\n"
    "  ActiveWindow.ScrollRow = 1\n"
    "  ActiveWindow.Zoom = 100\n"
    "  Application.StatusBar = \"\"\n"
    "  Application.DisplayFormulaBar = False\n"
    "  Application.DisplayFormulaBar = True\n"
    "  oSheet.UsedRange.Calculate\n"
    "  vValues = Application.CommandBars.Count\n"
    "  Application.ScreenUpdating = True\n"
    "  nFile = FreeFile\n"
    "  Open ThisWorkbook.Path & \"/first.log\" For Append As #nFile\n"
    "  Print #nFile, Format(Now, \"yyyy-mm-dd hh:mm:ss\") & Dir(ThisWorkbook.Path & \"/first.*\")\n"
    "  Close #nFile\n"
    "  oSheet.PrintOut\n"
    "  ThisWorkbook.SaveAs ThisWorkbook.Path & \"/first.xls\", -4143\n"
    "  ThisWorkbook.Save\n";

/// The build of the LibreOffice in a folder, by its own settings; nothing where they do not tell.
std::string BuildOf(const fs::path& office_folder) {
  constexpr std::string_view kName = "buildid=";
  std::istringstream lines(ReadText(office_folder / "versionrc"));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(kName)) return line.substr(kName.size());
  }
  return {};
}

/// True when file names are UTF-8 in the user's locale. In any other one LibreOffice could not open some.
bool LocaleIsUtf8() {
  return LocaleText("", LC_CTYPE_MASK, CODESET) == "UTF-8";
}

fs::path ProfileIn(const fs::path& folder) {
  return folder / "profile";
}

fs::path ErrorsIn(const fs::path& folder) {
  return folder / "errors.txt";
}

/// Starts LibreOffice with a profile in a folder, where its error output goes, too.
std::unique_ptr<Process> StartOffice(const OfficeOptions& options, const fs::path& folder,
                                     Variables environment) {
  const auto office = FindProgram("soffice");
  if (!office) throw std::runtime_error(WhyNoOffice(options));
  const fs::path profile = ProfileIn(folder);
  const fs::path office_folder = fs::canonical(*office).parent_path();
  fs::create_directories(profile / "user" / "psprint");
  fs::create_directory(profile / "user" / "extensions");
  WriteText(profile / "user" / "registrymodifications.xcu", ProfileSettings(options.show));
  WriteText(profile / "user" / "psprint" / "psprint.conf", PrinterSettings());
  // A profile of another build, or of none, has LibreOffice clear it of extensions and start once more.
  WriteText(profile / "user" / "extensions" / "buildid", BuildOf(office_folder));
  // LibreOffice leaves its temporary files where it is stopped.
  fs::create_directory(folder / "tmp");
  environment["TMPDIR"] = (folder / "tmp").string();
  WriteText(folder / "qva.components", Components(fs::absolute(options.build_folder) / kComponentFile));

  std::vector<std::string> arguments = {office->string(), "--norestore", "--nologo", "--nodefault",
                                        "--nolockcheck"};
  if (!options.show) {
    arguments.emplace_back("--headless");
    environment["SAL_USE_VCLPLUGIN"] = "svp";
  } else {
    environment[variables::kJobShown] = "1";
  }
  if (!LocaleIsUtf8()) environment["LC_ALL"] = "C.UTF-8";
  arguments.push_back("-env:UserInstallation=" + UrlOf(profile));
  arguments.push_back("-env:URE_MORE_SERVICES=<" + UrlOf(office_folder / "services") + ">* " +
                      UrlOf(folder / "qva.components"));
  arguments.push_back(std::string("service:") + calc::kReportJob);
  return std::make_unique<Process>(arguments, environment, ErrorsIn(folder));
}

class OwnOffice : public RunningJob {
 public:
  OwnOffice(const OfficeOptions& options, const Variables& job)
      : process_(StartOffice(options, folder_.path(), job)) {}

  bool IsRunning() override { return process_->IsRunning(); }
  void Stop() override { process_->Kill(); }
  int ExitStatus() const override { return process_->ExitStatus(); }
  std::optional<pid_t> Pid() const override { return process_->Pid(); }
  std::string Errors() const override { return ReadText(ErrorsIn(folder_.path())); }

 private:
  ProfileFolder folder_;
  std::unique_ptr<Process> process_;  // goes before its profile
};

}  // namespace

std::string WhyNoOffice(const OfficeOptions& options) {
  if (!FindProgram("soffice")) {
    return "LibreOffice is missing: there is no soffice on the search path. Install libreoffice-calc.";
  }
  const fs::path component = fs::absolute(options.build_folder) / kComponentFile;
  return fs::exists(component) ? std::string() : "There is no " + component.string();
}

StartJob OwnOffices(const OfficeOptions& options) {
  return [options](const Variables& job) { return std::make_unique<OwnOffice>(options, job); };
}

/// One job of a warm LibreOffice.
class WarmOffice::Job : public RunningJob {
 public:
  Job(WarmOffice& office, const Variables& job) : office_(office), errors_(job.at(variables::kJobErrors)) {
    for (const auto& [name, value] : job) request_.append(name).append(1, '=').append(value).append(1, '\0');
    request_ += '\0';
  }
  ~Job() override { Job::Stop(); }

  bool IsRunning() override {
    if (status_) return false;
    const bool is_alive = office_.process_->IsRunning();
    office_.Listen();
    if (office_.office_ && !request_.empty()) Send();
    if (office_.job_status_) {
      status_ = office_.job_status_;
    } else if (!is_alive) {
      Stop();
    }
    return !status_;
  }

  void Stop() override {
    if (status_) return;
    office_.process_->Kill();
    status_ = office_.process_->ExitStatus();
    if (!office_.job_) return;
    // The job has a group of its own, and nobody who waits for it any more. It may be writing yet.
    kill(-*office_.job_, SIGKILL);
    for (int n = 0; n < 400 && MemoryOf(*office_.job_) != 0; ++n) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }

  int ExitStatus() const override { return status_.value_or(0); }
  std::optional<pid_t> Pid() const override { return office_.job_; }
  std::string Errors() const override {
    const std::string own = ReadText(errors_);
    return own.empty() ? ReadText(ErrorsIn(office_.folder_.path())) : own;
  }

 private:
  void Send() {
    for (std::string_view rest = request_; !rest.empty();) {
      const ssize_t written = write(office_.requests_.get(), rest.data(), rest.size());
      if (written < 0) throw std::runtime_error("LibreOffice takes no job");
      rest.remove_prefix(static_cast<std::size_t>(written));
    }
    request_.clear();
  }

  WarmOffice& office_;
  fs::path errors_;
  std::string request_;  ///< not sent yet
  std::optional<int> status_;
};

WarmOffice::WarmOffice(const OfficeOptions& options) : profile_(ProfileIn(folder_.path())) {
  const fs::path requests = folder_.path() / "requests", replies = folder_.path() / "replies";
  for (const fs::path& pipe : {requests, replies}) {
    if (mkfifo(pipe.c_str(), 0600) != 0) throw std::runtime_error("cannot make " + pipe.string());
  }
  // For both, so that opening does not wait for LibreOffice. It finds the end of its requests when we are
  // gone.
  requests_ = FileDescriptor(open(requests.c_str(), O_RDWR | O_CLOEXEC));
  replies_ = FileDescriptor(open(replies.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  const fs::path workbook = folder_.path() / "first.fods";
  WriteText(workbook, WorkbookWithMain(kFirstMacro));
  process_ = StartOffice(options, folder_.path(),
                         {{variables::kJobWorkbook, workbook.string()},
                          {variables::kJobMacro, kEntryMacro},
                          {variables::kJobPdf, (folder_.path() / "first.pdf").string()},
                          {variables::kJobPrinted, (folder_.path() / "first").string()},
                          // Names of other modules' functions are looked up once, and not in each job.
                          {"LD_BIND_NOW", "1"},
                          {variables::kHostDatabase, Database().string()},
                          {variables::kHostResources, fs::absolute(options.host_resources).string()},
                          {variables::kJobResult, (folder_.path() / "first.json").string()},
                          {variables::kJobSteps, (folder_.path() / "steps.txt").string()},
                          {variables::kJobRequests, requests.string()},
                          {variables::kJobReplies, replies.string()}});
}

std::unique_ptr<RunningJob> WarmOffice::Start(const Variables& job) {
  ++started_jobs_;
  job_.reset();
  job_status_.reset();
  return std::make_unique<Job>(*this, job);
}

void WarmOffice::Listen() {
  std::array<char, 256> bytes{};
  for (ssize_t count; (count = read(replies_.get(), bytes.data(), bytes.size())) > 0;) {
    heard_.append(bytes.data(), static_cast<std::size_t>(count));
  }
  for (std::size_t end; (end = heard_.find('\n')) != heard_.npos; heard_.erase(0, end + 1)) {
    std::istringstream reply(heard_.substr(0, end));
    std::string what;
    int number = 0;
    reply >> what >> number;
    if (what == kJobsReady) {
      office_ = number;
      profile_.Remember();
    }
    if (what == kJobStarted) job_ = number;
    if (what == kJobEnded) {
      job_.reset();
      job_status_ = number;
    }
  }
}

bool WarmOffice::IsGoodForMore() {
  // LibreOffice reads this file when it starts, and writes what it likes into it.
  return process_->IsRunning() && (!office_ || !profile_.IsChanged("user/registrymodifications.xcu"));
}

fs::path WarmOffice::Database() const {
  return folder_.path() / embedded::kDatabaseFile;
}

std::uintmax_t WarmOffice::Memory() const {
  return office_ ? MemoryOf(*office_) : 0;
}

std::uintmax_t MemoryOf(pid_t process) {
  std::ifstream statm("/proc/" + std::to_string(process) + "/statm");
  std::uintmax_t pages = 0, resident = 0;
  statm >> pages >> resident;
  return resident * static_cast<std::uintmax_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace qva
