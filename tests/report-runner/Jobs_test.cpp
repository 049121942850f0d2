// The jobs of a batch.
#include "tools/report-runner/Jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/files.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class Jobs : public testing::Test {
 protected:
  Jobs() {
    for (const char* file : {"a.fods", "b.fods", "a.answers"}) WriteFile(folder / file, file);
  }

  std::vector<Job> Read(const std::string& csv) const { return ReadJobs(csv, folder); }

  /// All that is wrong.
  std::string Problems(const std::string& csv) const {
    try {
      Read(csv);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }

  const TemporaryFolder temporary_folder;
  const fs::path folder = temporary_folder.path();
};

TEST_F(Jobs, StandInTheirRowsByTheNamesOfTheColumns) {
  const std::vector<Job> jobs = Read(
      "output,workbook,book,macro,answers,period,expect,log\n"
      "out/1,a.fods,BALTIJA,Ataskaita.Kita,a.answers,2025-Q3,drives/C/x.xls,x.log\n"
      "/tmp/2/,b.fods\n");
  ASSERT_EQ(jobs.size(), 2U);
  EXPECT_EQ(jobs[0].line, 2);
  EXPECT_EQ(jobs[0].workbook, folder / "a.fods");
  EXPECT_EQ(jobs[0].output, folder / "out/1");
  EXPECT_EQ(jobs[0].book, "BALTIJA");
  EXPECT_EQ(jobs[0].macro, "Ataskaita.Kita");
  EXPECT_EQ(jobs[0].answers, folder / "a.answers");
  EXPECT_EQ(jobs[0].form_answers, "");
  EXPECT_EQ(jobs[0].period, "2025-Q3");
  EXPECT_EQ(jobs[0].expect, "drives/C/x.xls");
  EXPECT_EQ(jobs[0].log, "x.log");
  EXPECT_EQ(jobs[1].workbook, folder / "b.fods");
  EXPECT_EQ(jobs[1].output, "/tmp/2");
  EXPECT_EQ(jobs[1].book, "");
}

TEST_F(Jobs, AllThatIsWrongIsToldWithItsLine) {
  EXPECT_EQ(Problems(""), "line 1: there are no columns");
  EXPECT_EQ(Problems("workbook,outptu\n"),
            "line 1: there is no column \"outptu\"\nline 1: the column \"output\" is missing");
  EXPECT_EQ(Problems("workbook,output,period,form-answers,log\n"
                     ",,,,\n"
                     "x.fods,1,,,\n"
                     "a.fods,2,2025-13,,../x.log\n"
                     "a.fods,3,2025,a.answers,\n"
                     "a.fods,4,,,,more\n"),
            "line 2: there is no workbook\n"
            "line 2: there is no output\n"
            "line 3: there is no file \"" +
                (folder / "x.fods").string() +
                "\"\n"
                "line 4: \"2025-13\" is no period\n"
                "line 4: \"../x.log\" is no file in the output\n"
                "line 5: period and form-answers exclude each other\n"
                "line 6: there are more fields than columns");
}

TEST_F(Jobs, NoTwoHaveOneOutputNorStandsOneInAnother) {
  EXPECT_EQ(Problems("workbook,output\na.fods,1\nb.fods,x/../1/\n"), "line 3: its output is that of line 2");
  EXPECT_EQ(Problems("workbook,output\na.fods,1/2/3\nb.fods,1\nb.fods,1-2\n"),
            "line 2: its output stands in that of line 3");
  EXPECT_EQ(Problems("workbook,output\na.fods,1/2\nb.fods,1/3\n"), "");
}

TEST_F(Jobs, AreTheSameByWhatTheyDo) {
  const auto jobs = Read("workbook,output,book\na.fods,1,\na.fods,2,\na.fods,3,BALTIJA\n");
  EXPECT_EQ(ToJson(jobs[0]), ToJson(jobs[1]));
  EXPECT_NE(ToJson(jobs[0]), ToJson(jobs[2]));
}

}  // namespace
}  // namespace qva
