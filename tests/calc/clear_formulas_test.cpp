// What becomes of formulas of every kind in LibreOffice when a report is frozen.
#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;

using CalcClearFormulas = CalcTest;

TEST_F(CalcClearFormulas, EveryValueStaysWhatItIs) {
  const RunResult run = RunMacro("clear_formulas");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(
      run.lines,
      ElementsAre("String 007", "String 1/4", "String 5%", "String 12:30", "String =B1", "String TRUE",
                  "String 'a=b", "Boolean TRUE", "Boolean FALSE", "Double 0.33 €", "Date 06/12/24",
                  "String #DIV/0!", "String ą", "Double 2", "Empty ", "String a=b String =A1",
                  "1 #,##0.00 € @@", "part: 1004 You cannot change part of an array.", "part of areas: 1004",
                  "={=D1:D2*2} 6 =D1+1",
                  "Double 4 String {=a} Double 6 Double 6 String 007 String 007 Double 12",
                  "whole sheet of 1048576 rows: quick", "Double 2", "totals: Double 10 Double 10"));
}

TEST_F(CalcClearFormulas, OfRandomSheetsStayWhatTheyShowUpToARefusedCell) {
  const RunResult run = RunMacro("clear_formulas_random");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("40 sheets, some refused"));
}

}  // namespace
}  // namespace qva
