// CSaveForm: yearly reports.
#include "storage/CSaveForm.h"

#include "tests/heard_failures.h"
#include "tests/storage/save_form_fixture.h"

namespace qva {
namespace {

using SaveFormReports = SaveFormTest;

// --- Reports

TEST_F(SaveFormReports, ReportsAreNamedByYearAndPeriod) {
  struct {
    const char16_t* name;
    int year, period;
    const char16_t* path;
  } const cases[] = {{u"Balansas", 2010, 3, u"\\2010\\Balansas_2010_03.xls"},
                     {u"Balansas", 2010, 12, u"\\2010\\Balansas_2010_12.xls"},
                     {u"Balansas", 2010, 10, u"\\2010\\Balansas_2010_10.xls"},
                     {u"Balansas", 2010, 0, u"\\2010\\Balansas_2010.xls"},
                     {u"Balansas", 2010, -1, u"\\2010\\Balansas_2010.xls"},
                     {u"Balansas", 2010, -32768, u"\\2010\\Balansas_2010.xls"},
                     {u"Balansas", 1970, 1, u"\\1970\\Balansas_1970_01.xls"},
                     {u"Balansas", 32767, 1, u"\\32767\\Balansas_32767_01.xls"},
                     {u"P/N ataskaita v.2", 2024, 4, u"\\2024\\P_N ataskaita v_2_2024_04.xls"}};
  for (const auto& c : cases) {
    EXPECT_FALSE(ReportExistEx(c.name, c.year, c.period));
    EXPECT_EQ(FullPath(), std::u16string(kArchive) + c.path);
    EXPECT_EQ(Status(), 0);
  }
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\Ataskaitos\\2010"));
}

TEST_F(SaveFormReports, AYearBefore1970OrAPeriodAbove12IsCode4) {
  for (const auto& [year, period] : {std::pair{1969, 1}, {0, 0}, {-1, 0}, {2010, 13}, {1969, 13}}) {
    Put(form, u"ErrorStatus", 0);
    Put(form, u"FileFullPath", u"senas");
    EXPECT_FALSE(ReportExistEx(u"Balansas", year, period));
    EXPECT_EQ(Status(), 4);
    EXPECT_EQ(Description(), u"klaida 4");
    EXPECT_EQ(FullPath(), u"senas");
  }
}

TEST_F(SaveFormReports, AReportWithoutANameIsCode1UnlessTheYearIsWrongToo) {
  EXPECT_FALSE(ReportExistEx(u"  ", 2010, 1));
  EXPECT_EQ(Status(), 1);
  Put(form, u"ErrorStatus", 0);
  EXPECT_FALSE(ReportExistEx(u"", 1969, 1));
  EXPECT_EQ(Status(), 4);
}

TEST_F(SaveFormReports, ReportExistTellsWhatTheToolsFind) {
  EXPECT_FALSE(ReportExist(workbook, u"Balansas", 2010, 3));
  excel->AddFile(u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
  EXPECT_TRUE(ReportExist(workbook, u"Balansas", 2010, 3));
  EXPECT_TRUE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 4));
}

TEST_F(SaveFormReports, ReportExistExKeepsACodeOfAnEarlierCall) {
  excel->AddFile(u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
  Put(form, u"ErrorStatus", 2);
  Put(form, u"FileFullPath", u"senas");
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(FullPath(), u"senas");
  EXPECT_TRUE(ReportExist(workbook, u"Balansas", 2010, 3)) << "this one resets it";
}

TEST_F(SaveFormReports, ReportExistWithoutAWorkbookIsCode5AndGoesNoFurther) {
  EXPECT_FALSE(ReportExist(Nothing(), u"", 1969, 13));
  EXPECT_EQ(Status(), 5);
  EXPECT_EQ(Description(), u"klaida 5");
}

TEST_F(SaveFormReports, AMissingArchiveIsCode8WithTheFolder) {
  host.path_keys[u"BookRepSave"] = u"D:\\Nera\\";
  Call(form, u"Init");
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nD:\\Nera\\2010\\");
}

TEST_F(SaveFormReports, AChangedGeneralPathMovesFormsButNotReports) {
  platform.files.SetFolder(u"D:\\Kitur");
  Put(form, u"GeneralPath", u"D:\\Kitur\\");
  Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(FullPath(), u"D:\\Kitur\\PVM\\F_PVM_1_20101112.xls");
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(FullPath(), u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
}

TEST_F(SaveFormReports, YearAndPeriodAre16Bit) {
  EXPECT_EQ(RaisedBy([&] { ReportExistEx(u"Balansas", 32768, 1); }), kOverflow);
  EXPECT_EQ(RaisedBy([&] { SaveReport(workbook, u"Balansas", 2010, 40000); }), kOverflow);
}

// --- SaveReport

const char* const kSaveReportCalls[] = {
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2010\\\"",
    "Application.FileSearch.FileName = \"Balansas_2010_03.xls\"",
    "Application.FileSearch.Execute() -> 0",
    "Application.DisplayAlerts = False",
    "Application.ActiveWorkbook.SaveAs(\"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls\")",
    "Application.DisplayAlerts = True"};
const std::u16string_view kReport = u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls";

TEST_F(SaveFormReports, SaveReportStoresTheWorkbookWithSevenCalls) {
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(FullPath(), kReport);
  EXPECT_TRUE(excel->HasFile(kReport));
  EXPECT_TRUE(Alerts());
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kSaveReportCalls));
}

TEST_F(SaveFormReports, SaveReportForgetsAnEarlierErrorAndPath) {
  Put(form, u"ErrorStatus", 2);
  Put(form, u"FileFullPath", u"senas");
  SaveReport(workbook, u"", 2010, 3);
  EXPECT_EQ(Status(), 1);
  EXPECT_EQ(FullPath(), u"");
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
}

TEST_F(SaveFormReports, SaveReportWithoutAWorkbookIsCode5) {
  SaveReport(Nothing(), u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 5);
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Ataskaitos\\2010"));
}

TEST_F(SaveFormReports, SetsCode8AndLeavesAlertsOffWhenSaveAsFails) {
  // Excel refuses the name of another open workbook.
  excel->AddFile(u"C:\\Kitur\\Balansas_2010_03.xls");
  Call(GetObject(excel, u"Workbooks"), u"Open", {u"C:\\Kitur\\Balansas_2010_03.xls"});
  Put(form, u"ErrorDescr", u"senas");
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"senas") << "message 808 is not loaded";
  EXPECT_FALSE(Alerts());
  EXPECT_EQ(FullPath(), kReport) << "the path stays where it would have been";
}

TEST_F(SaveFormReports, ASaveAfterAFailedOneSwitchesTheAlertsOnAgain) {
  StartOver(6);
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_FALSE(Alerts());
  StartOver();
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
  EXPECT_TRUE(Alerts());
}

// Whichever call fails: an error of the search reaches the caller, one of saving becomes code 8 in silence.
TEST_F(SaveFormReports, SaveReportEndsAsAgreedWhicheverCallFails) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= static_cast<long>(std::size(kSaveReportCalls)) + 1; ++n) {
    SCOPED_TRACE(n);
    Put(excel, u"DisplayAlerts", true);
    Put(form, u"ErrorDescr", u"senas");
    StartOver(n);
    const std::int32_t raised = RaisedBy([&] { SaveReport(workbook, u"Balansas", 2010, 3); });
    EXPECT_EQ(failure.has_failed(), n <= 7);
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 4 ? kAutomationFailed : 0);
    EXPECT_EQ(Status(), n >= 5 && n <= 7 ? 8 : 0);
    EXPECT_EQ(Description(), u"senas");
    EXPECT_EQ(Alerts(), n <= 5 || n == 8);
    EXPECT_EQ(excel->HasFile(kReport), n >= 7);
    EXPECT_EQ(FullPath(), kReport);
    EXPECT_EQ(Object::LiveCount(), live);
  }
}

// --- Release

TEST_F(SaveFormReports, HoldsTheWorkbookUntilItsRelease) {
  const long before = workbook->ReferenceCount();
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(workbook->ReferenceCount(), before + 1);
  SaveReport(Nothing(), u"Balansas", 2010, 3);
  EXPECT_EQ(workbook->ReferenceCount(), before) << "Nothing takes its place";
  SaveReport(workbook, u"Balansas", 2010, 3);
  form.reset();
  EXPECT_EQ(workbook->ReferenceCount(), before);
}

TEST_F(SaveFormReports, AReportThatIsNotSavedIsAFailureForTheListenerWithItsOwnPathIfItHasOne) {
  const HeardFailures failures;
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_TRUE(failures.failed.empty());
  SaveReport(workbook, u"Balansas", 1900, 3);
  platform.faults.files.Refuse(FaultyFiles::Operation::CreateFolder, kPathFileAccess);
  SaveReport(workbook, u"Balansas", 2011, 3);
  EXPECT_THAT(failures.failed, testing::ElementsAre(u"the report was not saved (ErrorStatus 4) ",
                                                    u"the report was not saved (ErrorStatus 8) "
                                                    u"C:\\Ataskaitos\\2011\\Balansas_2011_03.xls"));
}

}  // namespace
}  // namespace qva
