#include "storage/CFile.h"

#include "tests/storage/file_fixture.h"

namespace qva {
namespace {

using Operation = FaultyFiles::Operation;
using File = FileTest;

// Names and folders.

TEST_F(File, IsEmptyAndAnsiAtFirst) {
  const CFile fresh;
  EXPECT_FALSE(fresh.IsUnicode());
  EXPECT_EQ(fresh.FileName(), u"");
  EXPECT_FALSE(fresh.FileIsOpen());
}

TEST_F(File, IsOfTheKindThatWasSet) {
  file.SetIsUnicode(true);
  EXPECT_TRUE(file.IsUnicode());
  file.SetIsUnicode(false);
  EXPECT_FALSE(file.IsUnicode());
}

TEST_F(File, PathIsTheCurrentFolderUntilOneIsSet) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  CFile fresh;
  EXPECT_EQ(fresh.Path(), u"C:\\Log");
  platform.files.SetCurrentFolder(u"C:\\");
  EXPECT_EQ(fresh.Path(), u"C:\\") << "looked up anew";
  fresh.SetPath(u"D:\\Kita");
  EXPECT_EQ(fresh.Path(), u"D:\\Kita");
}

TEST_F(File, CrFullNameOfAnEmptyPathLeavesTheCurrentFolderInPath) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  CFile fresh;
  fresh.SetFileName(u"y.txt");
  EXPECT_EQ(fresh.CrFullName(), u"C:\\Log\\y.txt");
  platform.files.SetCurrentFolder(u"C:\\");
  EXPECT_EQ(fresh.Path(), u"C:\\Log\\");
}

TEST_F(File, CrFullNameAddsTheMissingSeparatorToPath) {
  EXPECT_EQ(file.CrFullName(), u"C:\\Log\\x.txt");
  EXPECT_EQ(file.Path(), u"C:\\Log\\");
  EXPECT_EQ(file.CrFullName(), u"C:\\Log\\x.txt");
}

TEST_F(File, CrFullNameTakesEitherSeparator) {
  file.SetPath(u"C:/Log/");
  EXPECT_EQ(file.CrFullName(), u"C:/Log/x.txt");
  EXPECT_EQ(file.Path(), u"C:/Log/");
}

TEST_F(File, CrFullNameInADrivesRootAddsNothing) {
  CFile fresh;
  fresh.SetFileName(u"y.txt");
  EXPECT_EQ(fresh.CrFullName(), u"C:\\y.txt");
  EXPECT_EQ(fresh.Path(), u"C:\\");
}

TEST_F(File, CrFullName2TakesTheFolderOfAPathKey) {
  EXPECT_EQ(file.CrFullName2(u"BookRepSave", u"y.txt"), u"C:\\Ataskaitos\\y.txt");
  EXPECT_EQ(file.Path(), u"C:\\Ataskaitos\\");
  EXPECT_EQ(file.FileName(), u"y.txt");
}

TEST_F(File, CrFullName2OfAKeyWithoutAFolderMeansTheCurrentFolder) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  EXPECT_EQ(file.CrFullName2(u"NoSuchKey", u"y.txt"), u"C:\\Log\\y.txt");
}

TEST_F(File, CrFullName2ThatFailsLeavesPathAndName) {
  failure.Reset(1);
  EXPECT_EQ(RaisedBy([&] { file.CrFullName2(u"BookRepSave", u"y.txt"); }), kAutomationFailed);
  EXPECT_EQ(file.Path(), u"C:\\Log");
  EXPECT_EQ(file.FileName(), u"x.txt");
}

TEST_F(File, GetShortFileNameDropsFolders) {
  const std::pair<std::u16string, std::u16string> names[] = {
      {u"x.txt", u"x.txt"},
      {u"a\\b\\x.txt", u"x.txt"},
      {u"a/b/x.txt", u"x.txt"},
      {u"a\\b/x.txt", u"b/x.txt"},
      {u"a/b\\x.txt", u"x.txt"},
      {u"a\\", u""},
      {u"", u""},
  };
  for (const auto& [name, expected] : names) {
    file.SetFileName(name);
    EXPECT_EQ(file.GetShortFileName(), expected) << ToUtf8(name);
  }
}

TEST_F(File, GetValidFileNameReplacesWhatNamesCannotHave) {
  file.SetFileName(u"a/b:c?.xls");
  EXPECT_EQ(file.GetValidFileName(u"_"), u"a_b_c_.xls");
  EXPECT_EQ(file.FileName(), u"a/b:c?.xls");
  file.SetFileName(u"\\/:*?\"<>|[ąž].");
  EXPECT_EQ(file.GetValidFileName(u"-"), u"---------[ąž].");
  EXPECT_EQ(file.GetValidFileName(u""), u"[ąž].");
  file.SetFileName(u"a~1 & 'b'.xls");
  EXPECT_EQ(file.GetValidFileName(u"-"), u"a~1 & 'b'.xls") << "these it can have";
}

TEST_F(File, GetValidFileNameReplacesInOrderSoThatALaterCharacterOfTheReplacementGoesToo) {
  file.SetFileName(u"a\\b");
  EXPECT_EQ(file.GetValidFileName(u":"), u"a:b") << "replaced by itself";
  EXPECT_EQ(file.GetValidFileName(u"(*)"), u"a((*))b") << "the asterisk of the first replacement";
}

// The host's path keys.

TEST_F(File, PathByPathKeyAsksTheHostForItsLookupWithoutABook) {
  EXPECT_EQ(CFile::PathByPathKey(u"BookRepSave"), u"C:\\Ataskaitos");
  const std::string calls = trace.Text();
  EXPECT_THAT(calls, testing::HasSubstr("CreateObject(\"NVXCommonObjects.DataAccess\")"));
  EXPECT_THAT(calls, testing::HasSubstr("Lookup(\"PathKey\", Nothing)"));
  EXPECT_THAT(calls, testing::HasSubstr("\"BookRepSave\""));
}

TEST_F(File, PathByPathKeyOfAnUnknownKeyIsEmpty) {
  EXPECT_EQ(CFile::PathByPathKey(u"NoSuchKey"), u"");
}

TEST_F(File, PathByPathKeyOfTheEmptyKeyAsksNobody) {
  EXPECT_EQ(CFile::PathByPathKey(u""), u"");
  EXPECT_EQ(count.calls(), 0);
}

TEST_F(File, PathByPathKeyKeepsTheDataAccessForTheLibrary) {
  CFile::PathByPathKey(u"BookRepSave");
  trace.Clear();
  CFile::PathByPathKey(u"BookRepSave");
  EXPECT_THAT(trace.Text(), testing::Not(testing::HasSubstr("CreateObject")));
}

TEST_F(File, PathByPathKeyLetsTheHostsErrorsThrough) {
  for (long call = 1;; ++call) {
    ShutDown();
    failure.Reset(call);
    const std::int32_t raised = RaisedBy([&] { CFile::PathByPathKey(u"BookRepSave"); });
    if (!failure.has_failed()) break;
    EXPECT_EQ(raised, kAutomationFailed) << call;
  }
  failure.Reset(0);
  platform.faults.object_factory.Refuse(host::kDataAccess);
  ShutDown();
  EXPECT_EQ(RaisedBy([&] { CFile::PathByPathKey(u"BookRepSave"); }), kCannotCreateObject);
}

// Backups.

class Backup : public FileTest {
 protected:
  Backup() {
    file.SetPath(u"C:\\Log\\");
    SetContent("x");
  }
};

TEST_F(Backup, SaveFileAsBackupRenamesTheFileAndStaysWithIt) {
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(file.FileName(), u"x.txt.bak");
  EXPECT_EQ(Content(), "(no file)");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "x");
}

TEST_F(Backup, SaveFileAsBackupTwiceAddsTheEndingTwice) {
  file.SaveFileAsBackup();
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(file.FileName(), u"x.txt.bak.bak");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "(no file)");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak.bak"), "x");
}

TEST_F(Backup, SaveFileAsBackupReplacesTheLastOne) {
  platform.files.SetFile(u"C:\\Log\\x.txt.bak", "older");
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "x");
}

TEST_F(Backup, SaveFileAsBackupInsertsNoSeparator) {
  platform.files.SetFile(u"C:\\Logx.txt", "beside");
  file.SetPath(u"C:\\Log");
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(Content(u"C:\\Logx.txt.bak"), "beside");
  EXPECT_EQ(Content(), "x");
}

TEST_F(Backup, SaveFileAsBackupWithoutAPathMeansTheCurrentFolder) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  file.SetPath(u"");
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "x");
}

TEST_F(Backup, SaveFileAsBackupOfNoNameIsFalseAndLeavesTheFileOpen) {
  file.OpenFileForAppend(no_name);
  file.SetFileName(u"");
  EXPECT_FALSE(file.SaveFileAsBackup());
  file.WriteStr(u"1");
  EXPECT_EQ(Content(), "x1\r\n");
}

TEST_F(Backup, SaveFileAsBackupClosesTheChannel) {
  file.OpenFileForAppend(no_name);
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(platform.files.FreeNumber(), 1);
}

TEST_F(Backup, SaveFileAsBackupOfAMissingFileRaisesAndKeepsTheName) {
  platform.files.Delete(u"C:\\Log\\x.txt");
  EXPECT_EQ(RaisedBy([&] { file.SaveFileAsBackup(); }), kFileNotFound);
  EXPECT_EQ(file.FileName(), u"x.txt");
}

TEST_F(Backup, SaveFileAsBackupIgnoresThatTheLastOneCannotBeDeletedButNotThatTheNameIsTaken) {
  platform.files.SetFile(u"C:\\Log\\x.txt.bak", "older");
  platform.faults.files.Refuse(Operation::Delete, kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { file.SaveFileAsBackup(); }), kFileAlreadyExists);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "older");
}

TEST_F(Backup, SaveFileAsBackupThatCannotRenameHasDeletedTheLastOne) {
  platform.files.SetFile(u"C:\\Log\\x.txt.bak", "older");
  platform.faults.files.Refuse(Operation::Rename, kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { file.SaveFileAsBackup(); }), kPermissionDenied);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "(no file)");
}

TEST_F(Backup, MoveFileToBackupCreatesTheFolderBesideTheFile) {
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_EQ(Content(), "(no file)");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "x");
}

TEST_F(Backup, MoveFileToBackupPutsOneSeparatorBeforeTheName) {
  class CopyTargets : public ForwardingFiles {
   public:
    using ForwardingFiles::ForwardingFiles;
    void Copy(std::u16string_view from, std::u16string_view to) override {
      targets.emplace_back(to);
      ForwardingFiles::Copy(from, to);
    }
    std::vector<std::u16string> targets;
  } files(platform.files);
  SetContent("x");
  Services services = GetServices();
  Files* const own = std::exchange(services.files, &files);
  InstallServices(services);
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_THAT(files.targets, testing::ElementsAre(u"C:\\Log\\BACKUP\\x.txt"));
  services.files = own;
  InstallServices(services);
}

TEST_F(Backup, MoveFileToBackupReplacesAnEarlierBackup) {
  platform.files.SetFile(u"C:\\Log\\BACKUP\\x.txt", "older");
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "x");
}

TEST_F(Backup, MoveFileToBackupTakesAFolderWithAndWithoutSeparator) {
  for (const auto* folder : {u"C:\\Kopijos", u"C:\\Kopijos\\", u"C:/Kopijos/"}) {
    SetContent(ToUtf8(folder));
    EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", folder));
    EXPECT_EQ(Content(u"C:\\Kopijos\\x.txt"), ToUtf8(folder));
    EXPECT_EQ(Content(), "(no file)");
  }
}

TEST_F(Backup, MoveFileToBackupOfNoFileIsFalse) {
  EXPECT_FALSE(CFile::MoveFileToBackup(u"", u"C:\\Kopijos"));
  EXPECT_FALSE(platform.files.FolderExists(u"C:\\Kopijos"));
}

TEST_F(Backup, MoveFileToBackupIsFalseWithoutAFolderAndKeepsTheFile) {
  EXPECT_FALSE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u"C:\\None\\Kopijos"));
  platform.faults.files.Refuse(Operation::CreateFolder, kPathFileAccess);
  EXPECT_FALSE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_EQ(Content(), "x");
}

TEST_F(Backup, MoveFileToBackupDoesNotNeedToCreateTheFolder) {
  platform.files.SetFolder(u"C:\\Kopijos");
  platform.faults.files.Refuse(Operation::CreateFolder, kPathFileAccess);
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u"C:\\Kopijos"));
}

TEST_F(Backup, MoveFileToBackupThatCannotCopyKeepsTheFile) {
  platform.files.SetFile(u"C:\\Log\\BACKUP\\x.txt", "older");
  platform.faults.files.Refuse(Operation::Copy, kDiskFull);
  EXPECT_EQ(RaisedBy([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); }), kDiskFull);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "older");
}

TEST_F(Backup, MoveFileToBackupThatCannotDeleteLeavesBoth) {
  platform.faults.files.Refuse(Operation::Delete, kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); }), kPermissionDenied);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "x");
}

TEST_F(Backup, MoveFileToBackupOfAMissingFileRaises) {
  EXPECT_EQ(RaisedBy([&] { CFile::MoveFileToBackup(u"C:\\Log\\y.txt", u""); }), kFileNotFound);
}

TEST_F(Backup, MoveFileToBackupOfAPathWithoutBackslashKnowsNoName) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  EXPECT_EQ(RaisedBy([&] { CFile::MoveFileToBackup(u"x.txt", u""); }), kPathFileAccess);
  EXPECT_EQ(Content(), "x") << "not lost";
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\Log\\BACKUP"));
}

TEST_F(Backup, MoveFileToBackupSplitsAtTheLastBackslashAlone) {
  EXPECT_EQ(RaisedBy([&] { CFile::MoveFileToBackup(u"C:\\Log/x.txt", u""); }), kPathNotFound)
      << "the name is \"Log/x.txt\", and the backup folder has no folder \"Log\"";
  EXPECT_EQ(Content(), "x");
}

TEST_F(Backup, MoveFileToBackupNeverLosesTheFile) {
  for (long call = 1;; ++call) {
    SetContent("x");
    IgnoreErrors([&] { platform.files.Delete(u"C:\\Log\\BACKUP\\x.txt"); });
    platform.faults.files.FailAt(call, kDeviceError);
    IgnoreErrors([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); });
    EXPECT_TRUE(Content() == "x" || Content(u"C:\\Log\\BACKUP\\x.txt") == "x") << call;
    const bool has_failed = platform.faults.files.calls() >= call;
    platform.faults.files.FailAt(0, kDeviceError);
    if (!has_failed) break;
  }
}

// Copies.

class Copy : public FileTest {
 protected:
  static constexpr Date kTime{40494.5};
  Copy() {
    platform.files.SetFile(u"C:\\Log\\new.txt", "new", Date{40495});
    platform.files.SetFile(u"C:\\Log\\x.txt", "old", kTime);
  }
};

TEST_F(Copy, CopyFileWithTheTargetsOwnTimeAndLengthCopiesNothing) {
  CFile::CopyFile(u"C:\\Log\\new.txt", kTime, 3, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "old");
}

TEST_F(Copy, CopyFileWithAnotherTimeOrLengthCopies) {
  CFile::CopyFile(u"C:\\Log\\new.txt", Date{40495}, 3, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "new");
  EXPECT_EQ(CFile::FileDateTimeAttr(u"C:\\Log\\x.txt"), Date{40495});
  platform.files.SetFile(u"C:\\Log\\x.txt", "older", kTime);
  CFile::CopyFile(u"C:\\Log\\new.txt", kTime, 3, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "new");
}

TEST_F(Copy, CopyFileOnceMoreCopiesNothing) {
  const Date time = CFile::FileDateTimeAttr(u"C:\\Log\\new.txt");
  const auto length = static_cast<std::int32_t>(CFile::FileLenAttr(u"C:\\Log\\new.txt"));
  CFile::CopyFile(u"C:\\Log\\new.txt", time, length, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "new");
  platform.faults.files.Refuse(Operation::Copy, kDeviceError);
  platform.faults.files.FailAt(0, kDeviceError);
  CFile::CopyFile(u"C:\\Log\\new.txt", time, length, u"C:\\Log\\x.txt");
  EXPECT_EQ(platform.faults.files.calls(), 2) << "time and length, no copy";
}

TEST_F(Copy, CopyFileToAMissingTargetCopiesNothingSilently) {
  CFile::CopyFile(u"C:\\Log\\new.txt", Date{40495}, 3, u"C:\\Log\\y.txt");
  EXPECT_EQ(Content(u"C:\\Log\\y.txt"), "(no file)");
}

TEST_F(Copy, CopyFileEndsSilentlyAfterAnyError) {
  CFile::CopyFile(u"C:\\Log\\none.txt", Date{1}, 1, u"C:\\Log\\x.txt");
  for (long call = 1; call <= 3; ++call) {
    platform.faults.files.FailAt(call, kPermissionDenied);
    CFile::CopyFile(u"C:\\Log\\new.txt", Date{1}, 1, u"C:\\Log\\x.txt");
    EXPECT_EQ(platform.faults.files.calls(), call) << "goes on after an error";
    EXPECT_EQ(Content(), "old");
  }
}

TEST_F(Copy, FileDateTimeAttrAndFileLenAttrTellTheFiles) {
  EXPECT_EQ(CFile::FileDateTimeAttr(u"C:\\Log\\x.txt"), kTime);
  EXPECT_EQ(CFile::FileLenAttr(u"C:\\Log\\x.txt"), 3);
}

TEST_F(Copy, FileDateTimeAttrAndFileLenAttrAre0AfterAnyError) {
  EXPECT_EQ(CFile::FileDateTimeAttr(u"C:\\None\\x.txt"), Date{});
  EXPECT_EQ(CFile::FileLenAttr(u"C:\\None\\x.txt"), 0);
  platform.faults.files.Refuse(Operation::LastModified, kPathFileAccess);
  platform.faults.files.Refuse(Operation::Length, kPathFileAccess);
  EXPECT_EQ(CFile::FileDateTimeAttr(u"C:\\Log\\x.txt"), Date{});
  EXPECT_EQ(CFile::FileLenAttr(u"C:\\Log\\x.txt"), 0);
}

}  // namespace
}  // namespace qva
