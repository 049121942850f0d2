#include "storage/CSaveForm.h"

#include "platform/date.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An instance after Init, connected to an Excel with one workbook; the archive is "C:\Ataskaitos".
class SaveForm : public LibraryTest {
 protected:
  SaveForm() {
    platform.files.SetFolder(kArchive);
    for (const std::int32_t code : {1, 2, 3, 4, 5, 8}) {
      host.texts[800 + code] = u"klaida " + NumberText(code);
    }
    excel->AddWorkbook();
    workbook = GetObject(application, u"ActiveWorkbook");
    Call(form, u"Init");
    StartOver();
  }

  /// Starts the count, the trace and the failures anew.
  void StartOver(long failing_call = 0) {
    count.Reset();
    trace.Clear();
    failure.Reset(failing_call);
  }

  static Value Day(int year, int month, int day) { return DateFromParts(year, month, day); }

  Value Save(const Value& wb, const Value& name, const Value& type, const Value& id, const Value& date) {
    return Call(form, u"Save", {wb, name, type, id, date});
  }
  Value FileExist(const Value& wb, const Value& name, const Value& type, const Value& id, const Value& date) {
    return Call(form, u"FileExist", {wb, name, type, id, date});
  }
  std::u16string FileName(const Value& wb, const Value& name, const Value& type, const Value& id,
                          const Value& date) {
    return Call(form, u"FileName", {wb, name, type, id, date}).ToText();
  }
  void SaveReport(const Value& wb, std::u16string_view name, int year, int period) {
    Call(form, u"SaveReport", {wb, name, year, period});
  }
  bool ReportExist(const Value& wb, std::u16string_view name, int year, int period) {
    return Call(form, u"ReportExist", {wb, name, year, period}).ToBoolean();
  }
  bool ReportExistEx(std::u16string_view name, int year, int period) {
    return Call(form, u"ReportExistEx", {name, year, period}).ToBoolean();
  }

  int Status() const { return Get(form, u"ErrorStatus").ToInt32(); }
  std::u16string Description() const { return Get(form, u"ErrorDescr").ToText(); }
  std::u16string FullPath() const { return Get(form, u"FileFullPath").ToText(); }
  bool Alerts() const { return Get(excel, u"DisplayAlerts").ToBoolean(); }

  static constexpr std::u16string_view kArchive = u"C:\\Ataskaitos";
  ObjectPtr global = Connected();
  ObjectPtr workbook;
  ObjectPtr form = Create(u"CSaveForm");
};

// --- Fields
// ---------------------------------------------------------------------------------------------------

TEST_F(SaveForm, ReadsAndWritesItsTexts) {
  for (const auto* name : {u"ErrorDescr", u"FileFullPath", u"GeneralPath"}) {
    Put(form, name, u"C:\\Archyvas\\ąčę");
    EXPECT_EQ(Get(form, name), Value(u"C:\\Archyvas\\ąčę")) << ToUtf8(name);
  }
}

TEST_F(SaveForm, IsEmptyBeforeInit) {
  const ObjectPtr fresh = Create(u"CSaveForm");
  for (const auto* name : {u"ErrorDescr", u"FileFullPath", u"GeneralPath"}) {
    EXPECT_EQ(Get(fresh, name), Value(u""));
  }
  EXPECT_EQ(Get(fresh, u"ErrorStatus"), Value(std::uint8_t{0}));
}

TEST_F(SaveForm, NeedsInitBeforeItCleansNames) {
  const ObjectPtr fresh = Create(u"CSaveForm");
  EXPECT_EQ(ErrorNumberOf([&] {
              Call(fresh, u"FileName", {workbook, u"a", u"b", u"c", Day(2010, 11, 12)});
            }),
            kObjectNotSet);
  EXPECT_EQ(ErrorNumberOf([&] { Call(fresh, u"ReportExistEx", {u"a", 2010, 1}); }), kObjectNotSet);
}

TEST_F(SaveForm, AnErrorStatusBringsTheHostsDescription) {
  for (int code = 1; code <= 8; ++code) {
    Put(form, u"ErrorStatus", code);
    EXPECT_EQ(Get(form, u"ErrorStatus"), Value(static_cast<std::uint8_t>(code)));
    EXPECT_EQ(Description(), host.texts[800 + code]);
  }
}

TEST_F(SaveForm, ErrorStatus0LeavesTheDescription) {
  Put(form, u"ErrorDescr", u"senas");
  Put(form, u"ErrorStatus", 0);
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(Description(), u"senas");
}

TEST_F(SaveForm, ErrorStatusIsAByte) {
  EXPECT_EQ(ErrorNumberOf([&] { Put(form, u"ErrorStatus", 256); }), kOverflow);
}

TEST_F(SaveForm, ACodeWithoutTextIsSetAndRaisesTheResourcesError) {
  Put(form, u"ErrorDescr", u"senas");
  EXPECT_EQ(ErrorNumberOf([&] { Put(form, u"ErrorStatus", 99); }), kSubscriptOutOfRange);
  EXPECT_EQ(Status(), 99);
  EXPECT_EQ(Description(), u"senas");
}

// --- Init
// -----------------------------------------------------------------------------------------------------

TEST_F(SaveForm, InitTakesTheHostsFolderWithoutBlanksAndSeparator) {
  struct {
    const char16_t* folder;
    const char16_t* path;
  } const cases[] = {{u"C:\\Arch", u"C:\\Arch"},
                     {u"C:\\Arch\\", u"C:\\Arch"},
                     {u"C:\\Arch/", u"C:\\Arch"},
                     {u"  C:\\Mano arch\\  ", u"C:\\Mano arch"},
                     {u"C:\\Arch\\\\", u"C:\\Arch\\"},
                     {u"C:\\Arch \\", u"C:\\Arch "},
                     {u"\\\\srv\\Žiema", u"\\\\srv\\Žiema"},
                     {u"\\", u""},
                     {u"   ", u""},
                     {u"", u""}};
  for (const auto& c : cases) {
    host.path_keys[u"BookRepSave"] = c.folder;
    Call(form, u"Init");
    EXPECT_EQ(Get(form, u"GeneralPath"), Value(c.path)) << ToUtf8(c.folder);
  }
}

TEST_F(SaveForm, InitWithoutAFolderOfTheKeyLeavesTheRootEmpty) {
  host.path_keys.clear();
  Call(form, u"Init");
  EXPECT_EQ(Get(form, u"GeneralPath"), Value(u""));
  ReportExistEx(u"Balansas", 2010, 0);
  EXPECT_EQ(FullPath(), u"\\2010\\Balansas_2010.xls");
}

TEST_F(SaveForm, InitResetsTheStatusAlone) {
  Put(form, u"ErrorStatus", 3);
  Put(form, u"FileFullPath", u"C:\\x.xls");
  Call(form, u"Init");
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(Description(), u"klaida 3");
  EXPECT_EQ(FullPath(), u"C:\\x.xls");
}

TEST_F(SaveForm, InitPassesTheHostsErrorsOn) {
  StartOver(1);
  EXPECT_EQ(ErrorNumberOf([&] { Call(form, u"Init"); }), kAutomationFailed);
}

TEST_F(SaveForm, InitAsksTheHostAloneWithThreeCalls) {
  Call(form, u"Init");
  EXPECT_EQ(count.calls(), 3) << trace.Text();
}

// --- Names and checks of forms
// --------------------------------------------------------------------------------

TEST_F(SaveForm, FileNameIsMadeOfTheCleanedParts) {
  EXPECT_EQ(FileName(workbook, u"Forma 1.2", u"PVM", u"12", Day(2010, 11, 12)),
            u"Forma 1_2_PVM_12_20101112.xls");
  EXPECT_EQ(Status(), 0);
}

TEST_F(SaveForm, EachForbiddenCharacterBecomesAnUnderscoreInEachPart) {
  EXPECT_EQ(FileName(workbook, u"a\\b/c?d*e", u"f[g]h.i", u"j:k", Day(2024, 1, 2)),
            u"a_b_c_d_e_f_g_h_i_j_k_20240102.xls");
}

TEST_F(SaveForm, PartsKeepTheirBlanksAndLithuanianLetters) {
  EXPECT_EQ(FileName(workbook, u" Žiemos ", u"ąč", u"ŪŽ", Day(2024, 1, 2)), u" Žiemos _ąč_ŪŽ_20240102.xls");
}

TEST_F(SaveForm, TheTimeOfDayIsNoPartOfTheName) {
  EXPECT_EQ(FileName(workbook, u"a", u"b", u"c", Date{DateFromParts(2024, 1, 2).serial + 0.75}),
            u"a_b_c_20240102.xls");
}

TEST_F(SaveForm, FileNameLooksAtNoFileAndLeavesTheFullPath) {
  Put(form, u"FileFullPath", u"C:\\senas.xls");
  platform.files.FailAt(0, kDeviceError);
  StartOver();
  FileName(workbook, u"a", u"b", u"c", Day(2024, 1, 2));
  EXPECT_EQ(count.calls(), 0);
  EXPECT_EQ(platform.files.calls(), 0);
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Ataskaitosb"));
  EXPECT_EQ(FullPath(), u"C:\\senas.xls");
}

TEST_F(SaveForm, FileNameIsEmptyAfterAnError) {
  EXPECT_EQ(FileName(workbook, u"", u"b", u"c", Day(2024, 1, 2)), u"");
  EXPECT_EQ(Status(), 1);
}

TEST_F(SaveForm, EachMissingPartHasItsCodeAndDescription) {
  const Value day = Day(2010, 11, 12);
  struct {
    std::vector<Value> parts;
    int code;
  } const cases[] = {{{workbook, u"", u"b", u"c", day}, 1},     {{workbook, u"   ", u"b", u"c", day}, 1},
                     {{workbook, u"a", u"", u"c", day}, 2},     {{workbook, u"a", u"b", u" ", day}, 3},
                     {{workbook, u"a", u"b", u"c", Date()}, 4}, {{Nothing(), u"a", u"b", u"c", day}, 5}};
  for (const auto& c : cases) {
    for (const auto* member : {u"FileName", u"FileExist", u"Save"}) {
      Put(form, u"ErrorStatus", 0);
      Call(form, member, c.parts);
      EXPECT_EQ(Status(), c.code) << ToUtf8(member);
      EXPECT_EQ(Description(), u"klaida " + NumberText(c.code));
    }
  }
}

TEST_F(SaveForm, AForbiddenCharacterAloneIsNoEmptyPart) {
  EXPECT_EQ(FileName(workbook, u".", u"?", u"*", Day(2010, 11, 12)), u"______20101112.xls");
}

TEST_F(SaveForm, TheLastFailingCheckDecides) {
  FileName(workbook, u"", u"", u"12", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(Description(), u"klaida 2");
  FileName(Nothing(), u"", u"", u"", Date());
  EXPECT_EQ(Status(), 4);
  FileName(Nothing(), u"a", u"b", u"c", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 5);
}

TEST_F(SaveForm, ADateAtMidnightOfDayZeroIsNoneAndAnyOtherIsOne) {
  FileName(workbook, u"a", u"b", u"c", Value());
  EXPECT_EQ(Status(), 4);
  EXPECT_EQ(FileName(workbook, u"a", u"b", u"c", Day(1899, 12, 29)), u"a_b_c_18991229.xls");
  EXPECT_EQ(Status(), 0);
}

// --- FileExist
// ------------------------------------------------------------------------------------------------

TEST_F(SaveForm, GeneralPathGetsNoSeparatorBeforeTheType) {
  Put(form, u"GeneralPath", u"C:\\Arch");
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(FullPath(), u"C:\\ArchPVM\\F_PVM_1_20101112.xls");
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\ArchPVM\\"));
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Arch"));
}

TEST_F(SaveForm, AGeneralPathWithASeparatorGivesASubfolder) {
  Put(form, u"GeneralPath", u"C:\\Ataskaitos\\");
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(FullPath(), u"C:\\Ataskaitos\\PVM\\F_PVM_1_20101112.xls");
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\Ataskaitos\\PVM"));
}

TEST_F(SaveForm, FileExistTellsWhatTheToolsFind) {
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  excel->AddFile(u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls");
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(true));
  EXPECT_EQ(Status(), 0);
}

TEST_F(SaveForm, FileExistFindsFilesWhereExcelHasNoSearch) {
  excel->RemoveFileSearch();
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  platform.files.SetFile(u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls", "x");
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(true));
}

TEST_F(SaveForm, AMissingFolderIsCreatedOneLevelDeepOnly) {
  Put(form, u"GeneralPath", u"C:\\Nera\\");
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\Nera\\PVM\\");
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Nera"));
}

TEST_F(SaveForm, AFolderThatIsThereIsNotCreatedAnew) {
  platform.files.SetFolder(u"C:\\AtaskaitosPVM");
  platform.files.FailAt(0, kDeviceError);
  FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(platform.files.calls(), 0);
}

TEST_F(SaveForm, AFolderThatCannotBeCreatedIsTold) {
  platform.files.Refuse(MemoryFiles::Operation::CreateFolder, kPathFileAccess);
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\AtaskaitosPVM\\");
  EXPECT_EQ(FullPath(), u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls");
  platform.files.Allow(MemoryFiles::Operation::CreateFolder);
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\AtaskaitosPVM\\") << "stays with status 0";
}

TEST_F(SaveForm, FileExistForgetsAnEarlierError) {
  Put(form, u"ErrorStatus", 3);
  FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 0);
}

// --- Save
// -----------------------------------------------------------------------------------------------------

TEST_F(SaveForm, SaveStoresTheWorkbookUnderItsParts) {
  Save(workbook, u"Forma 1.2", u"PVM", u"12", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(FullPath(), u"C:\\AtaskaitosPVM\\Forma 1_2_PVM_12_20101112.xls");
  EXPECT_TRUE(excel->HasFile(FullPath()));
  EXPECT_TRUE(Alerts());
}

TEST_F(SaveForm, SaveReplacesAnEarlierFormWithoutAsking) {
  const std::u16string path = u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls";
  excel->AddFile(path);
  StartOver();
  Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(FullPath(), path);
  EXPECT_THAT(trace.lines(),
              ElementsAre("Application.FileSearch", "Application.FileSearch.LookIn = \"C:\\AtaskaitosPVM\\\"",
                          "Application.FileSearch.FileName = \"F_PVM_1_20101112.xls\"",
                          "Application.FileSearch.Execute() -> 1", "Application.DisplayAlerts = False",
                          "Application.ActiveWorkbook.SaveAs(\"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls\")",
                          "Application.DisplayAlerts = True"));
  EXPECT_TRUE(platform.message_box.boxes().empty());
}

TEST_F(SaveForm, SaveWithAWrongPartSavesNothingAndEmptiesTheFullPath) {
  Put(form, u"FileFullPath", u"C:\\senas.xls");
  StartOver();
  Save(workbook, u"F", u"PVM", u"", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 3);
  EXPECT_EQ(FullPath(), u"");
  EXPECT_THAT(trace.lines(), ElementsAre("MessageResource.Text(803) -> \"klaida 3\""));
}

TEST_F(SaveForm, SaveWithoutAFolderSavesNothing) {
  platform.files.Refuse(MemoryFiles::Operation::CreateFolder, kPathFileAccess);
  Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\AtaskaitosPVM\\");
  EXPECT_FALSE(excel->HasFile(u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls"));
  EXPECT_TRUE(Alerts());
}

// --- Reports
// --------------------------------------------------------------------------------------------------

TEST_F(SaveForm, ReportsAreNamedByYearAndPeriod) {
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

TEST_F(SaveForm, AYearBefore1970OrAPeriodAbove12IsCode4) {
  for (const auto& [year, period] : {std::pair{1969, 1}, {0, 0}, {-1, 0}, {2010, 13}, {1969, 13}}) {
    Put(form, u"ErrorStatus", 0);
    Put(form, u"FileFullPath", u"senas");
    EXPECT_FALSE(ReportExistEx(u"Balansas", year, period));
    EXPECT_EQ(Status(), 4);
    EXPECT_EQ(Description(), u"klaida 4");
    EXPECT_EQ(FullPath(), u"senas");
  }
}

TEST_F(SaveForm, AReportWithoutANameIsCode1UnlessTheYearIsWrongToo) {
  EXPECT_FALSE(ReportExistEx(u"  ", 2010, 1));
  EXPECT_EQ(Status(), 1);
  Put(form, u"ErrorStatus", 0);
  EXPECT_FALSE(ReportExistEx(u"", 1969, 1));
  EXPECT_EQ(Status(), 4);
}

TEST_F(SaveForm, ReportExistTellsWhatTheToolsFind) {
  EXPECT_FALSE(ReportExist(workbook, u"Balansas", 2010, 3));
  excel->AddFile(u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
  EXPECT_TRUE(ReportExist(workbook, u"Balansas", 2010, 3));
  EXPECT_TRUE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 4));
}

TEST_F(SaveForm, ReportExistExKeepsACodeOfAnEarlierCall) {
  excel->AddFile(u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
  Put(form, u"ErrorStatus", 2);
  Put(form, u"FileFullPath", u"senas");
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(FullPath(), u"senas");
  EXPECT_TRUE(ReportExist(workbook, u"Balansas", 2010, 3)) << "this one resets it";
}

TEST_F(SaveForm, ReportExistWithoutAWorkbookIsCode5AndGoesNoFurther) {
  EXPECT_FALSE(ReportExist(Nothing(), u"", 1969, 13));
  EXPECT_EQ(Status(), 5);
  EXPECT_EQ(Description(), u"klaida 5");
}

TEST_F(SaveForm, AMissingArchiveIsCode8WithTheFolder) {
  host.path_keys[u"BookRepSave"] = u"D:\\Nera\\";
  Call(form, u"Init");
  EXPECT_FALSE(ReportExistEx(u"Balansas", 2010, 3));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nD:\\Nera\\2010\\");
}

TEST_F(SaveForm, AChangedGeneralPathMovesFormsButNotReports) {
  platform.files.SetFolder(u"D:\\Kitur");
  Put(form, u"GeneralPath", u"D:\\Kitur\\");
  Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(FullPath(), u"D:\\Kitur\\PVM\\F_PVM_1_20101112.xls");
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(FullPath(), u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls");
}

TEST_F(SaveForm, YearAndPeriodAre16Bit) {
  EXPECT_EQ(ErrorNumberOf([&] { ReportExistEx(u"Balansas", 32768, 1); }), kOverflow);
  EXPECT_EQ(ErrorNumberOf([&] { SaveReport(workbook, u"Balansas", 2010, 40000); }), kOverflow);
}

// --- SaveReport
// -----------------------------------------------------------------------------------------------

const char* const kSaveReportCalls[] = {
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2010\\\"",
    "Application.FileSearch.FileName = \"Balansas_2010_03.xls\"",
    "Application.FileSearch.Execute() -> 0",
    "Application.DisplayAlerts = False",
    "Application.ActiveWorkbook.SaveAs(\"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls\")",
    "Application.DisplayAlerts = True"};
const std::u16string_view kReport = u"C:\\Ataskaitos\\2010\\Balansas_2010_03.xls";

TEST_F(SaveForm, SaveReportStoresTheWorkbookWithSevenCalls) {
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(FullPath(), kReport);
  EXPECT_TRUE(excel->HasFile(kReport));
  EXPECT_TRUE(Alerts());
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kSaveReportCalls));
}

TEST_F(SaveForm, SaveReportForgetsAnEarlierErrorAndPath) {
  Put(form, u"ErrorStatus", 2);
  Put(form, u"FileFullPath", u"senas");
  SaveReport(workbook, u"", 2010, 3);
  EXPECT_EQ(Status(), 1);
  EXPECT_EQ(FullPath(), u"");
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
}

TEST_F(SaveForm, SaveReportWithoutAWorkbookIsCode5) {
  SaveReport(Nothing(), u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 5);
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Ataskaitos\\2010"));
}

TEST_F(SaveForm, SetsCode8AndLeavesAlertsOffWhenSaveAsFails) {
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

TEST_F(SaveForm, ASaveAfterAFailedOneSwitchesTheAlertsOnAgain) {
  StartOver(6);
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_FALSE(Alerts());
  StartOver();
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(Status(), 0);
  EXPECT_TRUE(Alerts());
}

// Whichever call fails: an error of the search reaches the caller, one of saving becomes code 8 in silence.
TEST_F(SaveForm, SaveReportEndsAsAgreedWhicheverCallFails) {
  const long live = Object::LiveCount();
  for (long n = 1; n <= static_cast<long>(std::size(kSaveReportCalls)) + 1; ++n) {
    SCOPED_TRACE(n);
    Put(excel, u"DisplayAlerts", true);
    Put(form, u"ErrorDescr", u"senas");
    StartOver(n);
    const std::int32_t raised = ErrorNumberOf([&] { SaveReport(workbook, u"Balansas", 2010, 3); });
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

TEST_F(SaveForm, SaveEndsAsAgreedWhicheverCallFails) {
  const std::u16string_view path = u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls";
  for (long n = 1; n <= 8; ++n) {
    SCOPED_TRACE(n);
    Put(excel, u"DisplayAlerts", true);
    StartOver(n);
    const std::int32_t raised = ErrorNumberOf([&] { Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)); });
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 4 ? kAutomationFailed : 0);
    EXPECT_EQ(Status(), n >= 5 && n <= 7 ? 8 : 0);
    EXPECT_EQ(Alerts(), n <= 5 || n == 8);
    EXPECT_EQ(excel->HasFile(path), n >= 7);
  }
}

// --- Release
// --------------------------------------------------------------------------------------------------

TEST_F(SaveForm, HoldsTheWorkbookUntilItsRelease) {
  const long before = workbook->ReferenceCount();
  SaveReport(workbook, u"Balansas", 2010, 3);
  EXPECT_EQ(workbook->ReferenceCount(), before + 1);
  SaveReport(Nothing(), u"Balansas", 2010, 3);
  EXPECT_EQ(workbook->ReferenceCount(), before) << "Nothing takes its place";
  SaveReport(workbook, u"Balansas", 2010, 3);
  form.reset();
  EXPECT_EQ(workbook->ReferenceCount(), before);
}

}  // namespace
}  // namespace qva
