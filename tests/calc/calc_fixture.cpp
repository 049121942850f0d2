#include "tests/calc/calc_fixture.h"

#include <stdlib.h>

#include <fstream>
#include <sstream>

#include "tools/report-runner/Process.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

std::string XmlText(const std::string& text) {
  std::string out;
  for (const char c : text)
    out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  return out;
}

std::string Workbook(const std::string& macros) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts><office:script script:language="ooo:Basic"><ooo:libraries>
  <ooo:library-embedded ooo:name="VBAProject"><ooo:module ooo:name="Ataskaita"><ooo:source-code>)" +
         XmlText(macros) + R"(</ooo:source-code></ooo:module></ooo:library-embedded>
 </ooo:libraries></office:script></office:scripts>
 <office:body><office:spreadsheet>
  <table:table table:name="Lapas"><table:table-row><table:table-cell/></table:table-row></table:table>
 </office:spreadsheet></office:body>
</office:document>
)";
}

}  // namespace

CalcTest::CalcTest() {
  std::string pattern = (fs::temp_directory_path() / "qva-calc-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
  folder = pattern;
  output = folder / "out";
}

CalcTest::~CalcTest() {
  fs::remove_all(folder);
}

RunResult CalcTest::RunMacro(const std::string& name, std::vector<std::string> options) {
  const fs::path macros = fs::path(QVA_SOURCE_DIR) / "tests/calc/macros";
  const std::string source = Contents(macros / (name + ".bas"));
  EXPECT_FALSE(source.empty()) << name;
  const fs::path workbook = folder / (name + ".fods");
  std::ofstream(workbook) << Workbook(source + Contents(macros / "log.bas"));
  options.push_back("--no-picture");
  return RunWorkbook(workbook, std::move(options));
}

RunResult CalcTest::RunWorkbook(const fs::path& workbook, std::vector<std::string> options) {
  const fs::path log = folder / "macro.log";
  const fs::path printed = folder / "printed.txt";
  const fs::path errors = folder / "errors.txt";
  // Through a shell for the output; everything that goes in is our own.
  std::string command = "exec '" QVA_REPORT_RUNNER "' --output-folder '" + output.string() +
                        "' --timeout 60 --host-resources '" QVA_SOURCE_DIR "/host'";
  for (const std::string& option : options) command += " '" + option + "'";
  command += " '" + workbook.string() + "' > '" + printed.string() + "'";
  std::map<std::string, std::string> environment = {{"QVA_TEST_LOG", log.string()}};
  if (!getenv("LC_ALL")) environment["LC_ALL"] = "C.UTF-8";
#ifdef QVA_SANITIZER_RUNTIME
  // LibreOffice itself is built without the sanitizers, which must be there before our component is; it
  // keeps memory to its end, and so do we for it.
  environment["LD_PRELOAD"] = QVA_SANITIZER_RUNTIME;
  environment["ASAN_OPTIONS"] = "detect_leaks=0";
#endif
  Process process({"sh", "-c", command}, environment, errors);
  RunResult run;
  run.exit_status = process.Wait(std::chrono::seconds(90));
  run.output = Contents(printed);
  run.errors = Contents(errors);
  run.messages = Contents(output / "messages.txt");
  std::istringstream lines(Contents(log));
  for (std::string line; std::getline(lines, line);) run.lines.push_back(line);
  return run;
}

std::string CalcTest::Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  contents << file.rdbuf();
  return contents.str();
}

}  // namespace qva
