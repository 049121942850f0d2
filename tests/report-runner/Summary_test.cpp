// What a batch tells of its jobs.
#include "tools/report-runner/Summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace qva {
namespace {

using testing::HasSubstr;
using testing::Not;

class BatchSummary : public testing::Test {
 protected:
  const std::vector<Job> jobs = {{.line = 2, .workbook = "/a.fods", .book = "MEDVILNE", .output = "/o/1"},
                                 {.line = 3, .workbook = "/a.fods", .output = "/o/2"},
                                 {.line = 5, .workbook = "/b, c.fods", .output = "/o/3"},
                                 {.line = 6, .workbook = "/d.fods", .output = "/o/4"}};
  const Outcomes outcomes = {{JobOutcome::Kind::Ended, ReportStatus::Ok, "", 1.25, 1},
                             {JobOutcome::Kind::Earlier, ReportStatus::Ok, "", 2, 1},
                             {JobOutcome::Kind::Ended, ReportStatus::TimeLimit, "stopped\nmore", 120, 2},
                             {}};
};

TEST_F(BatchSummary, AsCsvHasARowForEachJob) {
  EXPECT_EQ(SummaryCsv(jobs, outcomes),
            "line,workbook,book,output,status,exit_status,seconds,tries,text\r\n"
            "2,/a.fods,MEDVILNE,/o/1,ok,0,1.250,1,\r\n"
            "3,/a.fods,,/o/2,ok,0,2.000,1,\r\n"
            "5,\"/b, c.fods\",,/o/3,time-limit,8,120.000,2,stopped\r\n"
            "6,/d.fods,,/o/4,,,,,\r\n");
}

TEST_F(BatchSummary, AsJsonHasTheNumbersAndTheJobs) {
  const auto json = SummaryJson(jobs, outcomes, 7.5);
  for (const char* count : {"done", "done_earlier", "failed", "not_begun"})
    EXPECT_EQ(json[count], 1) << count;
  EXPECT_EQ(json["seconds"], 7.5);
  ASSERT_EQ(json["jobs"].size(), 4U);
  EXPECT_FALSE(json["jobs"][0]["earlier"]);
  EXPECT_TRUE(json["jobs"][1]["earlier"]);
  EXPECT_EQ(json["jobs"][2]["status"], "time-limit");
  EXPECT_EQ(json["jobs"][2]["text"], "stopped\nmore");
  EXPECT_TRUE(json["jobs"][3]["status"].is_null());
}

TEST_F(BatchSummary, ForPeopleHasTheNumbersAndTheFailures) {
  std::ostringstream out;
  PrintSummary(jobs, outcomes, 125, out);
  EXPECT_EQ(out.str(),
            "1 done in 2 min, 1 done before, 1 failed, 1 not begun\n"
            "  line 5  time-limit       /o/3  stopped\n");
}

TEST(BatchProgress, TellsRateAndTimeLeft) {
  EXPECT_EQ(ProgressText(0, 0, 20, 3), "0 of 20 done");
  EXPECT_EQ(ProgressText(5, 1, 20, 10), "5 of 20 done, 1 failed, 30.0 a minute, 30 s left");
  EXPECT_EQ(ProgressText(1, 0, 201, 60), "1 of 201 done, 1.0 a minute, 3 h 20 min left");
  EXPECT_EQ(ProgressText(20, 0, 20, 10), "20 of 20 done, 120.0 a minute, 0 s left");
}

}  // namespace
}  // namespace qva
