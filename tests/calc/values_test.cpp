// Values at the edges of their types, on their way between macros in LibreOffice, the library and the host;
// and paths that lead nowhere.

#include "tests/calc/calc_fixture.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAreArray;

class CalcValues : public CalcTest {};

TEST_F(CalcValues, AreWholeOrAnErrorAndPathsStayWithinTheDrives) {
  const fs::path outside = output / "outside";
  fs::create_directories(outside);
  fs::create_directories(output / "drives/UNC");
  WriteFile(outside / "secret.xls", "not for reports");
  StartMacro("values",
             {"--host-resources", ResourcesWith(Contents(SourceFolder() / "tests/host/great_amounts.sql"))},
             {{"QVA_VARNHOLT_SHORT_DATE", "yyyy 'm.' MMMM d 'd.'"}});
  const RunResult run = Finish();
  EXPECT_EQ(run.exit_status, 1) << "the library told of a failure";
  std::vector<std::string> expected = {"cents of 2 months: 922337203685477",
                                       "found: True Currency -3000000000",
                                       "GLDocumentPosting: 6 | NVXCommonObjects | Overflow",
                                       "GLAccountMonth: 6 | NVXCommonObjects | Overflow",
                                       "THDocument: 6 | NVXCommonObjects | Overflow",
                                       "amount: Currency 922337203685477.5807",
                                       "amount: Currency -922337203685477.5807",
                                       "amount: Currency 123456789012345.6789",
                                       "amount: Currency 0.0000",
                                       "text of a date: 2024 m. kovo 5 d.",
                                       "date of that text: 2024-03-05"};
  for (const std::string number : {"10000000000", "-10000000000", "1E+300", "-1E+300"}) {
    for (const std::string what : {"cell ", "variable ", "picker "}) {
      expected.push_back(what + number + ": 6 | QVA_Varnholt | Overflow");
    }
  }
  for (const std::string path : {"\\\\..\\..\\outside\\", "C:\\..\\..\\..\\outside\\"}) {
    expected.push_back(path + ": False True False 8");
  }
  EXPECT_THAT(run.lines, ElementsAreArray(expected));
  EXPECT_EQ(std::distance(fs::directory_iterator(outside), {}), 1) << "something was put beside the drives";
}

}  // namespace
}  // namespace qva
