// Recordsets in LibreOffice: made by macros, and written into cells, which its Excel model cannot do itself.
#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

using testing::ElementsAre;

class CalcRecordset : public CalcTest {};

TEST_F(CalcRecordset, IsWrittenIntoCellsFromItsCurrentRecordOn) {
  const RunResult run = RunMacro("recordset", {"--build-folder", BuildFolderWith(ExcelCallsModuleFile())});
  EXPECT_EQ(run.exit_status, 0) << run.errors;
  EXPECT_THAT(
      run.lines,
      ElementsAre(
          "state: 0", "records: 4, current: ąčę", "written: 3",
          "String ąčę; Double 5; Double 2.5; Empty ; Empty ; ",
          "String 007; Double 6; Empty ; Date 2024-06-12; Boolean -1; ",
          "String =1+1; Double 7; Empty ; Empty ; Empty ; ", "Empty ; Empty ; Empty ; Empty ; Empty ; ",
          "at the end: -1", "again: 0", "kept: ąčę",
          "behind the end: 3021 | ADODB.Recordset | Either BOF or EOF is True, or the current record has "
          "been deleted. Requested operation requires a current record.",
          "Date 2024-05-15; Date 2024-05-15; Double 2.55; String 2024-05-15 d.; Empty ; ",
          "Date 2024-05-15; Date 2024-05-15; Double 2.55; String 2024-05-15 d.; Empty ; ", "hours: 0 18"));
}

}  // namespace
}  // namespace qva
