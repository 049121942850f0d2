// The period dialog's answers for a period in one word. That the dialog takes them, the batch's tests in
// LibreOffice show.
#include "tools/report-runner/PeriodAnswers.h"

#include <gtest/gtest.h>

namespace qva {
namespace {

TEST(PeriodAnswers, ChooseTheKindLast) {
  const auto answers = [](const char* lines) {
    return "[frmReportPeriod]\n" + std::string(lines) + "\nbtOk\n";
  };
  EXPECT_EQ(PeriodAnswers("2025"), answers("optYear\ntxtYear = 2025\noptYear"));
  EXPECT_EQ(PeriodAnswers("2025-H1"), answers("optYear\ntxtYear = 2025\noptHalfYearOwn"));
  EXPECT_EQ(PeriodAnswers("2025-H2"), answers("optYear\ntxtYear = 2025\noptHalfYearTwo"));
  EXPECT_EQ(PeriodAnswers("2025-Q3"), answers("optYear\ntxtYear = 2025\ntxtQuater = 3\noptQuarter"));
  EXPECT_EQ(PeriodAnswers("2025-Q4"), answers("optYear\ntxtYear = 2025\ntxtQuater = 4\noptQuarter\noptUser"));
  EXPECT_EQ(PeriodAnswers("2025-09"), answers("optYear\ntxtYear = 2025\ntxtMonth = 9\noptMonth"));
  EXPECT_EQ(PeriodAnswers("2024-01/2024-02"),
            answers("optUser\nedPrevBegDate = 2023-11-01\nedPrevEndDate = 2023-12-31\n"
                    "edCurrBegDate = 2024-01-01\nedCurrEndDate = 2024-02-29"));
}

TEST(PeriodAnswers, ThereAreNoneForAnyOtherText) {
  for (const char* text : {"",
                           "25",
                           "0099",
                           "2025-",
                           "2025-0",
                           "2025-00",
                           "2025-13",
                           "2025-1",
                           "2025-Q0",
                           "2025-Q5",
                           "2025-H3",
                           "2025-q1",
                           "20255",
                           "2025-01-01",
                           "2025-02-01/2025-01-31",
                           "2025-02-29/2025-03-01",
                           "/2025-01-01",
                           "2025-01/",
                           "0050-01/0050-02",
                           "2025 "}) {
    EXPECT_EQ(PeriodAnswers(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace qva
