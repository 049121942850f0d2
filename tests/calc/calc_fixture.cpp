#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <thread>

namespace qva {
namespace {

namespace fs = std::filesystem;

constexpr char kEmptySheet[] =
    "<table:table table:name=\"Lapas\"><table:table-row><table:table-cell/></table:table-row></table:table>";

}  // namespace

RunResult CalcTest::RunMacro(const std::string& name, std::vector<std::string> options) {
  StartMacro(name, std::move(options), {});
  return Finish();
}

RunResult CalcTest::RunWorkbook(const fs::path& workbook, std::vector<std::string> options,
                                std::map<std::string, std::string> environment) {
  StartWorkbook(workbook, std::move(options), std::move(environment));
  return Finish();
}

std::string CalcTest::XmlText(const std::string& text) {
  std::string out;
  for (const char c : text)
    out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
  return out;
}

std::string CalcTest::ResourcesWith(const std::string& sql) const {
  const fs::path resources = folder / "resources";
  fs::copy(SourceFolder() / "host", resources);
  const fs::path sample = resources / "sample.sql";
  WriteFile(sample, FileContent(sample) + "\n" + sql + "\n");
  return resources.string();
}

fs::path CalcTest::WriteWorkbook(const std::string& macro, const std::string& project,
                                 const std::string& sheets) {
  const fs::path macros = SourceFolder() / "tests/calc/macros";
  const std::string source = FileContent(macros / (macro + ".bas"));
  const fs::path workbook = folder / (macro + ".fods");
  WriteFile(workbook, R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:ooo="http://openoffice.org/2004/office" office:version="1.3"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
 <office:scripts><office:script script:language="ooo:Basic"><ooo:libraries>
  <ooo:library-embedded ooo:name=")" +
                          project + R"("><ooo:module ooo:name="Ataskaita"><ooo:source-code>)" +
                          XmlText(source + Contents(macros / "log.bas")) +
                          R"(</ooo:source-code></ooo:module></ooo:library-embedded>
 </ooo:libraries></office:script></office:scripts>
 <office:body><office:spreadsheet>
)" + sheets + R"(
 </office:spreadsheet></office:body>
</office:document>
)");
  return workbook;
}

fs::path CalcTest::BuildFolderWith(const fs::path& host_module) const {
  const fs::path build = folder / "build";
  fs::create_directory(build);
  fs::create_symlink(CalcComponentFile(), build / CalcComponentFile().filename());
  fs::create_symlink(host_module, build / fs::path(HostModuleFile()).filename());
  return build;
}

std::string CalcTest::PdfText(const fs::path& pdf) const {
  Process process({"pdftotext", "-layout", pdf.string(), (folder / "pdf-text.txt").string()}, {},
                  folder / "pdftotext.txt");
  EXPECT_EQ(process.Wait(std::chrono::seconds(20)), 0) << Contents(folder / "pdftotext.txt");
  return Contents(folder / "pdf-text.txt");
}

void CalcTest::StartMacro(const std::string& name, std::vector<std::string> options,
                          std::map<std::string, std::string> environment) {
  options.push_back("--no-picture");
  StartWorkbook(WriteWorkbook(name, "VBAProject", kEmptySheet), std::move(options), std::move(environment));
}

void CalcTest::StartWorkbook(const fs::path& workbook, std::vector<std::string> options,
                             std::map<std::string, std::string> environment) {
  options.insert(options.begin(), {"--output-folder", output.string(), "--timeout", "60", "--host-resources",
                                   (SourceFolder() / "host").string()});
  options.push_back(workbook.string());
  StartRunner(options, std::move(environment));
}

void CalcTest::StartRunner(const std::vector<std::string>& arguments,
                           std::map<std::string, std::string> environment) {
  // Through a shell for the output; everything that goes in is our own.
  std::string command = "exec " + launcher + " '" + ReportRunnerFile() + "'";
  for (const std::string& argument : arguments) command += " '" + argument + "'";
  command += " > '" + (folder / "printed.txt").string() + "'";
  environment["QVA_TEST_LOG"] = (folder / "macro.log").string();
  if (!getenv("LC_ALL")) environment.emplace("LC_ALL", "C.UTF-8");
  // LibreOffice itself is built without the sanitizers, which must be there before our component is; it
  // keeps memory to its end, and so do we for it.
  if (!SanitizerRuntime().empty()) {
    std::string& preloaded = environment["LD_PRELOAD"];
    preloaded.insert(0, SanitizerRuntime() + (preloaded.empty() ? "" : ":"));
    environment["ASAN_OPTIONS"] = "detect_leaks=0";
  }
  fs::remove(folder / "printed.txt");  // of an earlier run
  run_ = std::make_unique<Process>(std::vector<std::string>{"sh", "-c", command}, environment,
                                   folder / "errors.txt");
}

void CalcTest::WaitForOutput(const std::string& text) const {
  for (int i = 0; i < 600 && Contents(folder / "printed.txt").find(text) == std::string::npos; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

void CalcTest::WaitForLine(const std::string& line) const {
  for (int i = 0; i < 600; ++i) {
    const std::vector<std::string> lines = Lines();
    if (std::find(lines.begin(), lines.end(), line) != lines.end()) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
}

pid_t CalcTest::OfficePid() const {
  struct Facts {
    std::string name;
    pid_t parent = 0;
  };
  std::map<pid_t, Facts> processes;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::string line;
    std::getline(std::ifstream(entry.path() / "stat"), line);  // 12 (name) S 11 …
    const std::size_t open = line.find('('), close = line.rfind(')');
    if (close == std::string::npos) continue;
    processes[std::stoi(line)] = {line.substr(open + 1, close - open - 1), std::stoi(line.substr(close + 4))};
  }
  for (const auto& [pid, facts] : processes) {
    if (facts.name != "soffice.bin" || processes[facts.parent].name == "soffice.bin") continue;
    pid_t ancestor = facts.parent;
    while (ancestor > 1 && ancestor != RunnerPid()) ancestor = processes[ancestor].parent;
    if (ancestor == RunnerPid()) return pid;
  }
  throw std::runtime_error("LibreOffice does not run");
}

RunResult CalcTest::Finish() {
  RunResult run;
  run.exit_status = run_->Wait(std::chrono::seconds(90));
  run.output = Contents(folder / "printed.txt");
  run.errors = Contents(folder / "errors.txt");
  run.messages = Contents(output / "messages.txt");
  run.lines = Lines();
  return run;
}

std::vector<std::string> CalcTest::Lines() const {
  std::vector<std::string> result;
  std::istringstream lines(Contents(folder / "macro.log"));
  for (std::string line; std::getline(lines, line);) result.push_back(line);
  return result;
}

void CalcTest::ExpectNoWordOfUno(const RunResult& run) {
  std::string all = run.messages + run.output + run.errors;
  for (const std::string& line : run.lines) all += line + "\n";
  for (const char* word : {"unsatisfied", ".cxx", ".hxx", "com.sun.star"}) {
    EXPECT_THAT(all, testing::Not(testing::HasSubstr(word)));
  }
}

}  // namespace qva
