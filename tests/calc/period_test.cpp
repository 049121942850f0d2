// The report period asked for by a macro in LibreOffice, unattended, on the embedded host.

#include "tests/calc/calc_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CalcPeriod : public CalcTest {};

TEST_F(CalcPeriod, IsChosenKeptAndLeftAlone) {
  WriteFile(folder / "forms",
            "[frmReportPeriod]\n"
            "txtQuater = 3\n"
            "SpecGrid 2 BookCode = MEDVILNE\n"
            "SpecGrid 2 PlanCode = O'BRIEN\n"
            "optYear\n"
            "SpecGrid 2 BudgetCurrDocCode\n"
            "list = BIU-2024-01\n"
            "optQuarter\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "txtYear = 2026\n"
            "btSpecDelete\n"
            "btCancel\n"
            "[frmReportPeriod]\n"
            "txtQuater = 4\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "SpecGrid 1\n"
            "btSpecDelete\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "btOk\n");
  const RunResult run = RunMacro("period", {"--form-answers", (folder / "forms").string()});
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  const std::string period = ": BIUDZ 2024 3 0 2 2024-04-01 2024-06-30 2024-07-01 2024-09-30 0,,";
  const std::string kept = period + "2";
  const std::string first = " 1: MEDVILNE BIUDZ 0 102 BIU-2024-01  ";
  const std::string second = " 2: MEDVILNE O'BRIEN -1 102 BIU-2024-01 0 ";
  const std::string fewer = period + "1";
  const std::string only = " 1: MEDVILNE O'BRIEN -1 102 BIU-2024-01 0 ";
  const std::string cleared = " 2:       ";
  EXPECT_THAT(
      run.lines,
      ElementsAre("no sheet: -2147221503 Wrong parameter|", "names: 16", "year: $A$3 2024",
                  "created: $B$3 $P$3 5", "before: BIUDZ 2024        102,BIU-2024-01,",
                  "before 1:       ", "before 2:       ", "confirmed: True", "after" + kept, "after" + first,
                  "after" + second, "cancelled: False", "cancelled" + kept, "cancelled" + first,
                  "cancelled" + second, "refused: False", "refused" + kept, "refused" + first,
                  "refused" + second, "fewer: True", "fewer" + fewer, "fewer" + only, "fewer" + cleared,
                  "again: True", "again" + fewer, "again" + only, "again" + cleared, "below: |kept",
                  "no answers: False", "no answers" + fewer, "no answers" + only, "no answers" + cleared));
  EXPECT_THAT(run.messages, HasSubstr("Neteisingai nurodytas ataskaitinis laikotarpis."));
  EXPECT_THAT(run.messages, HasSubstr("(btOk): The form refuses what it was given"));
  EXPECT_THAT(run.messages, HasSubstr("There are no answers for the form frmReportPeriod"));
}

TEST_F(CalcPeriod, KeepsPlanCodesAsTheListHasThem) {
  const std::string resources = ResourcesWith(
      "INSERT INTO GLAccountSet (BookCode, Code, Name, IsBudget) VALUES "
      "('MEDVILNE', '0012', 'Nuliai', 1), ('MEDVILNE', '1-2', 'Data', 1), "
      "('MEDVILNE', '12', 'Dvylika', 1);");
  WriteFile(folder / "forms",
            "[frmReportPeriod]\n"
            "cbAccPlan = 0012\n"
            "SpecGrid 1 BookCode = MEDVILNE\n"
            "SpecGrid 1 PlanCode = 0012\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "cbAccPlan = 1-2\n"
            "SpecGrid 1 PlanCode = 1-2\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "cbAccPlan = biudz\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "cbAccPlan = NERA\n"
            "btOk\n"
            "[frmReportPeriod]\n"
            "cbAccPlan = 12\n"
            "btOk\n");
  const RunResult run = RunMacro(
      "period_codes", {"--form-answers", (folder / "forms").string(), "--host-resources", resources});
  EXPECT_EQ(run.exit_status, 1) << "the refused code is a failure: " << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("True: String 0012, String 0012", "True: String 0012, String 0012",
                                     "True: String 1-2, String 1-2", "True: String BIUDZ, String 1-2",
                                     "False: String BIUDZ, String 1-2", "True: Double 12, String 1-2"))
      << "a cell that had a text code is no cell of texts";
  EXPECT_THAT(run.messages, HasSubstr("Ataskaitinio periodo nustatymai"));
}

TEST_F(CalcPeriod, OffersTheBudgetsOfWholeMonthsForDatesOfTheUsersOwn) {
  // Budgets of the first days of 2024 and 2025 and of the last one of 2024.
  WriteFile(folder / "forms",
            "[frmReportPeriod]\n"
            "optUser\n"
            "edCurrBegDate = 2025-01-15\n"
            "edCurrEndDate = 2025-12-03\n"
            "edPrevBegDate = 2024-01-20\n"
            "edPrevEndDate = 2024-12-03\n"
            "SpecGrid 1 BookCode = MEDVILNE\n"
            "SpecGrid 1 PlanCode = BIUDZ\n"
            "SpecGrid 1 BudgetCurrDocCode\n"
            "list = BIU-2025-01\n"
            "SpecGrid 1 BudgetLastDocCode\n"
            "list = BIU-2024-01\n"
            "SpecGrid 2 BookCode = MEDVILNE\n"
            "SpecGrid 2 PlanCode = GAMYBA\n"
            "SpecGrid 2 BudgetLastDocCode\n"
            "list = BIU-2024-03\n"
            "btOk\n");
  const RunResult run = RunMacro("shown_period", {"--form-answers", (folder / "forms").string()});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("edited: True BIUDZ 2025 1 1 6 2024-01-01 2024-12-31 2025-01-01 "
                                     "2025-12-31 2: MEDVILNE BIUDZ -1 105 BIU-2025-01 102 BIU-2024-01 "
                                     "MEDVILNE GAMYBA -1 0  104 BIU-2024-03"));
}

TEST_F(CalcPeriod, StaysInItsWorkbookWhenAnotherOneHasASheetOfThatName) {
  const RunResult run = RunMacro("two_books");
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(run.lines, ElementsAre("active: True, before: 0", "own: 16", "other: 0"));
}

}  // namespace
}  // namespace qva
