// The report's date asked for by a macro in LibreOffice, unattended.

#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

class CalcReadDate : public CalcTest {};

TEST_F(CalcReadDate, WritesTheCellsOfEachTypeOfDate) {
  WriteFile(folder / "forms",
            "[frmDatePic]\nMonthView1 double 2025-01-31\n"
            "[frmDatePic]\nMonthView1 = 2026-12-05\nMonthView1 key 13\n"
            "[frmDatePic]\nMonthView1 double 2024-10-31\n"
            "[frmDatePic]\nMonthView1 key 13\n"
            "[frmDatePic]\nMonthView1 key 65\nMonthView1 key 27\n");
  const RunResult run = RunMacro("read_date", {"--form-answers", (folder / "forms").string()});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("1: True 2025 1 31 2", "2: True 2026 12 31 2", "3: True 2024 12 31 4",
                                     "4: True 2024 12 31 4", "cancelled: False 2024 12 31 4", "too great: 6",
                                     "no number: 13"));
}

}  // namespace
}  // namespace qva
