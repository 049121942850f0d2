#include "tools/report-runner/Check.h"

#include <stdlib.h>
#include <unistd.h>

#include <ostream>
#include <sstream>
#include <string>

#include "host/HostOptions.h"
#include "platform/host.h"
#include "platform/text.h"
#include "tools/report-runner/MacroWorkbook.h"
#include "tools/report-runner/Process.h"
#include "tools/report-runner/ReportRun.h"
#include "tools/report-runner/TextFiles.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

/// A report that does nothing but connect to the book.
constexpr std::string_view kConnects =
    "  Dim oExcel As Object\n"
    "  Set oExcel = CreateObject(\"QVA_Varnholt.gExcelObject\")\n"
    "  oExcel.InitConnectEX Application, ThisWorkbook\n";

/// Prints what there is.
class Findings {
 public:
  explicit Findings(std::ostream& out) : out_(out) {}

  /// `advice` is for what is missing.
  void Needs(bool is_there, const std::string& what, const std::string& advice) {
    out_ << (is_there ? "ok       " : "MISSING  ") << what << (is_there ? "" : ": " + advice) << std::endl;
    all_there_ = all_there_ && is_there;
  }
  /// The same of what reports can do without.
  void Wants(bool is_there, const std::string& what, const std::string& advice) {
    out_ << (is_there ? "ok       " : "without  ") << what << (is_there ? "" : ": " + advice) << std::endl;
  }

  bool all_there() const { return all_there_; }

 private:
  std::ostream& out_;
  bool all_there_ = true;
};

/// Whether something can be made in a folder or, where it is missing, in the one that it would be made in. By
/// trying, since permissions alone do not tell; nothing is left behind.
bool CanBeWritten(const fs::path& folder) {
  fs::path there = fs::absolute(folder);
  while (there.has_relative_path() && !fs::exists(there)) there = there.parent_path();
  std::string pattern = (there / "qva-check-XXXXXX").string();
  return mkdtemp(pattern.data()) && rmdir(pattern.c_str()) == 0;
}

}  // namespace

ReportStatus CheckMachine(const CheckOptions& options, std::ostream& out) {
  Findings findings(out);
  const auto office = FindProgram("soffice");
  findings.Needs(office.has_value(), "LibreOffice" + (office ? " (" + office->string() + ")" : std::string()),
                 "there is no soffice on the search path; install libreoffice-calc");
  const fs::path modules = fs::absolute(options.office.build_folder);
  for (const auto& [file, what] : {std::pair(kComponentFile, "the library's component"),
                                   std::pair(QVA_HOST_MODULE_NAME, "the embedded host")}) {
    findings.Needs(fs::is_regular_file(modules / file), what + (" (" + (modules / file).string() + ")"),
                   "there is no such file; --build-folder names where it stands");
  }
  const fs::path resources = fs::absolute(options.office.host_resources);
  for (const std::string& file :
       {std::string(embedded::kSampleFile), ToUtf8(host::kMessageResourceLibrary) + ".txt"}) {
    findings.Needs(fs::is_regular_file(resources / file), "the host's " + (resources / file).string(),
                   "there is no such file; --host-resources names its folder");
  }
  const fs::path temporary = fs::temp_directory_path();
  findings.Needs(CanBeWritten(temporary), "temporary folder " + temporary.string(),
                 "nothing can be written there; TMPDIR names another one");
  findings.Needs(CanBeWritten(options.output_folder),
                 "output folder " + fs::absolute(options.output_folder).lexically_normal().string(),
                 "nothing can be written there; --output-folder names another one");
  findings.Wants(FindProgram("pdftoppm").has_value(), "pictures (pdftoppm)",
                 "reports come without a PNG; install poppler-utils");
  if (!findings.all_there()) return ReportStatus::NoLibreOffice;

  const ProfileFolder folder;
  ReportRunOptions run;
  run.workbook = folder.path() / "check.fods";
  WriteText(run.workbook, WorkbookWithMain(kConnects));
  run.output_folder = folder.path() / "out";
  run.office = options.office;
  run.picture = false;
  run.own_drives = true;
  run.interrupted = options.interrupted;
  std::ostringstream steps;
  const ReportResult result = RunReport(run, OwnOffices(options.office), steps, steps);
  findings.Needs(result.status == ReportStatus::Ok, "a macro that uses the library runs in LibreOffice",
                 result.text);
  return result.status;
}

}  // namespace qva
