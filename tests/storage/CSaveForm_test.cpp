#include "storage/CSaveForm.h"

#include "tests/storage/save_form_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using SaveForm = SaveFormTest;

// --- Fields

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
  EXPECT_EQ(RaisedBy([&] {
              Call(fresh, u"FileName", {workbook, u"a", u"b", u"c", Day(2010, 11, 12)});
            }),
            kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"ReportExistEx", {u"a", 2010, 1}); }), kObjectNotSet);
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
  EXPECT_EQ(RaisedBy([&] { Put(form, u"ErrorStatus", 256); }), kOverflow);
}

TEST_F(SaveForm, ACodeWithoutTextIsSetAndRaisesTheResourcesError) {
  Put(form, u"ErrorDescr", u"senas");
  EXPECT_EQ(RaisedBy([&] { Put(form, u"ErrorStatus", 99); }), kSubscriptOutOfRange);
  EXPECT_EQ(Status(), 99);
  EXPECT_EQ(Description(), u"senas");
}

// --- Init

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
  EXPECT_EQ(RaisedBy([&] { Call(form, u"Init"); }), kAutomationFailed);
}

TEST_F(SaveForm, InitAsksTheHostAloneWithThreeCalls) {
  Call(form, u"Init");
  EXPECT_EQ(count.calls(), 3) << trace.Text();
}

// --- Names and checks of forms

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
  platform.faults.files.FailAt(0, kDeviceError);
  StartOver();
  FileName(workbook, u"a", u"b", u"c", Day(2024, 1, 2));
  EXPECT_EQ(count.calls(), 0);
  EXPECT_EQ(platform.faults.files.calls(), 0);
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
    EXPECT_EQ(Call(form, u"FileExist", c.parts), Value(false));
  }
}

TEST_F(SaveForm, AForbiddenCharacterAloneIsNoEmptyPart) {
  EXPECT_EQ(FileName(workbook, u".", u"?", u"*", Day(2010, 11, 12)), u"______20101112.xls");
}

TEST_F(SaveForm, TheLastFailingCheckDecides) {
  FileName(workbook, u"", u"", u"12", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(Description(), u"klaida 2");
  FileName(workbook, u"a", u"", u"", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 3);
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
  platform.faults.files.FailAt(0, kDeviceError);
  FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(platform.faults.files.calls(), 0);
}

TEST_F(SaveForm, AFolderThatCannotBeCreatedIsTold) {
  platform.faults.files.Refuse(FaultyFiles::Operation::CreateFolder, kPathFileAccess);
  EXPECT_EQ(FileExist(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)), Value(false));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\AtaskaitosPVM\\");
  EXPECT_EQ(FullPath(), u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls");
  platform.faults.files.Allow(FaultyFiles::Operation::CreateFolder);
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
  platform.faults.files.Refuse(FaultyFiles::Operation::CreateFolder, kPathFileAccess);
  Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12));
  EXPECT_EQ(Status(), 8);
  EXPECT_EQ(Description(), u"klaida 8\r\nC:\\AtaskaitosPVM\\");
  EXPECT_FALSE(excel->HasFile(u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls"));
  EXPECT_TRUE(Alerts());
}

TEST_F(SaveForm, SaveEndsAsAgreedWhicheverCallFails) {
  const std::u16string_view path = u"C:\\AtaskaitosPVM\\F_PVM_1_20101112.xls";
  for (long n = 1; n <= 8; ++n) {
    SCOPED_TRACE(n);
    Put(excel, u"DisplayAlerts", true);
    StartOver(n);
    const std::int32_t raised = RaisedBy([&] { Save(workbook, u"F", u"PVM", u"1", Day(2010, 11, 12)); });
    failure.Reset(0);
    EXPECT_EQ(raised, n <= 4 ? kAutomationFailed : 0);
    EXPECT_EQ(Status(), n >= 5 && n <= 7 ? 8 : 0);
    EXPECT_EQ(Alerts(), n <= 5 || n == 8);
    EXPECT_EQ(excel->HasFile(path), n >= 7);
  }
}

}  // namespace
}  // namespace qva
