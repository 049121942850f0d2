// A sample report of a user who sits at the screen.
#include <sstream>

#include "tests/calc/windows_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::IsSupersetOf;

TEST_F(CalcWindows, ASampleReportIsOfThePeriodThatTheUserChose) {
  StartWorkbook(SourceFolder() / "samples/balance.fods", {"--show", "--log", "balance.log"},
                desktop.environment());
  const Desktop::Window period = desktop.WaitForWindow(kPeriod);
  Fill(period, 250, 55, "PAGR");
  Fill(period, 180, 95, "2024");
  desktop.Click(period, 440, 106);  // "Metinės"
  desktop.Click(period, 492, 378);
  desktop.WaitUntilGone(period);
  Leave(desktop.WaitForWindow(kDate), "Return");
  desktop.WaitFor("the end of the report", [&] {
    if (desktop.HasWindow(kMessage)) desktop.TryKey(kMessage, "Return");
    return !IsRunning();
  });
  const RunResult run = Finish();
  ASSERT_EQ(run.exit_status, 0) << run.errors;
  std::vector<std::string> log;
  std::istringstream lines(Contents(output / "balance.log"));
  for (std::string line; std::getline(lines, line);) log.push_back(line.substr(line.find("  :  ") + 5));
  EXPECT_THAT(log, IsSupersetOf<std::string>({"Laikotarpis 2024-01-01 – 2024-12-31",
                                              "Išsaugota archyve: Balansas_2024.xls",
                                              "Baigta: balansas, laikotarpis 2024-01-01 – 2024-12-31"}));
  EXPECT_TRUE(fs::exists(output / "drives/C/Ataskaitos/Archyvas/2024/Balansas_2024.xls"));
}

}  // namespace
}  // namespace qva
