#include "storage/CFile.h"

#include "platform/date.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

using Operation = MemoryFiles::Operation;

constexpr std::u16string_view kDateAndTime = u"2010.11.12 14:05:09";

/// One CFile for "C:\Log\x.txt".
class File : public LibraryTest {
 protected:
  File() {
    platform.files.SetFolder(u"C:\\Log");
    file.SetPath(u"C:\\Log");
    file.SetFileName(u"x.txt");
    platform.locale.short_date_pattern = u"yyyy.MM.dd";
    platform.clock.Set(*ParseDate(kDateAndTime, platform.locale));
  }

  std::string Content(std::u16string_view path = u"C:\\Log\\x.txt") {
    return platform.files.Content(path).value_or("(no file)");
  }
  void SetContent(std::string bytes) { platform.files.SetFile(u"C:\\Log\\x.txt", std::move(bytes)); }
  /// What a Unicode file holds behind its mark, in UTF-8.
  std::string Utf16Content() {
    const std::string bytes = Content();
    if (!bytes.starts_with("\xFF\xFE")) return "(no mark)";
    std::u16string text;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
      text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                    static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return ToUtf8(text);
  }

  std::u16string no_name;
  CFile file;
};

class UnicodeFile : public File {
 protected:
  UnicodeFile() { file.SetIsUnicode(true); }
};

// Names and folders.

TEST_F(File, IsEmptyAndAnsiAtFirst) {
  const CFile fresh;
  EXPECT_FALSE(fresh.IsUnicode());
  EXPECT_EQ(fresh.FileName(), u"");
  EXPECT_FALSE(fresh.FileIsOpen());
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
  EXPECT_EQ(ErrorNumberOf([&] { file.CrFullName2(u"BookRepSave", u"y.txt"); }), kAutomationFailed);
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
    const std::int32_t raised = ErrorNumberOf([&] { CFile::PathByPathKey(u"BookRepSave"); });
    if (!failure.has_failed()) break;
    EXPECT_EQ(raised, kAutomationFailed) << call;
  }
  failure.Reset(0);
  platform.object_factory.Unregister(host::kDataAccess);
  ShutDown();
  EXPECT_EQ(ErrorNumberOf([&] { CFile::PathByPathKey(u"BookRepSave"); }), kCannotCreateObject);
}

// Writing through a channel.

TEST_F(File, CrFileCreatesAnEmptyFile) {
  EXPECT_TRUE(file.CrFile());
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(Content(), "");
}

TEST_F(File, CrFileEmptiesAnExistingFile) {
  SetContent("old");
  EXPECT_TRUE(file.CrFile());
  EXPECT_EQ(Content(), "");
}

TEST_F(File, CrFileClosesTheChannelThatIsOpen) {
  file.CrFile();
  file.SetFileName(u"y.txt");
  EXPECT_TRUE(file.CrFile());
  EXPECT_EQ(platform.files.FreeNumber(), 2);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(File, CrFileIsFalseWhenNoFileNumberIsFree) {
  std::vector<std::unique_ptr<TextChannel>> channels;
  while (const std::int16_t number = platform.files.FreeNumber()) {
    const std::u16string path = u"C:\\Log\\" + NumberText(number);
    channels.push_back(platform.files.OpenChannel(number, path, ChannelMode::Output));
  }
  EXPECT_FALSE(file.CrFile());
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_FALSE(file.WriteStr(u"line"));
  EXPECT_EQ(Content(), "(no file)");
  EXPECT_EQ(ErrorNumberOf([&] { file.OpenFile(no_name); }), kBadFileNameOrNumber);
}

TEST_F(File, CrFileInAMissingFolderRaises) {
  file.SetPath(u"C:\\None");
  EXPECT_EQ(ErrorNumberOf([&] { file.CrFile(); }), kPathNotFound);
}

TEST_F(File, TheNumberOfAFileThatCouldNotBeOpenedStays) {
  SetContent("old\r\n");
  platform.files.Refuse(Operation::OpenChannel, kPermissionDenied);
  EXPECT_EQ(ErrorNumberOf([&] { file.OpenFileForAppend(no_name); }), kPermissionDenied);
  platform.files.Allow(Operation::OpenChannel);
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"line"); }), kBadFileNameOrNumber);
  EXPECT_EQ(Content(), "old\r\n") << "the file that could not be opened must not be emptied";
}

TEST_F(File, WriteStrWritesLinesInTheAnsiCodePage) {
  EXPECT_TRUE(file.WriteStr(u"Ąžuolas"));
  EXPECT_TRUE(file.WriteStr(u""));
  EXPECT_EQ(Content(), "\xC0\xFEuolas\r\n\r\n");
}

TEST_F(File, TheFirstWriteStrOfAFreshInstanceStartsTheFileAnew) {
  SetContent("old\r\n");
  file.WriteStr(u"new");
  EXPECT_EQ(Content(), "new\r\n");
}

TEST_F(File, WriteStrAfterOpenFileForAppendGrowsTheFile) {
  SetContent("old\r\n");
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  file.WriteStr(u"new");
  EXPECT_EQ(Content(), "old\r\nnew\r\n");
}

TEST_F(File, WriteStrAfterCloseFileRaisesInsteadOfEmptyingTheFile) {
  file.WriteStr(u"1");
  file.CloseFile();
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"2"); }), kBadFileNameOrNumber);
  EXPECT_EQ(Content(), "1\r\n");
}

TEST_F(File, AnotherFileUnderAClosedNumberIsNotTouched) {
  file.WriteStr(u"1");
  file.CloseFile();
  CFile other;
  other.SetPath(u"C:\\Log");
  other.SetFileName(u"y.txt");
  other.CrFile();
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"2"); }), kBadFileNameOrNumber);
  file.CloseFile();
  other.WriteStr(u"3");
  EXPECT_EQ(Content(u"C:\\Log\\y.txt"), "3\r\n");
}

TEST_F(File, WriteStrThatFailsLeavesTheLinesBefore) {
  file.WriteStr(u"1");
  platform.files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"2"); }), kDiskFull);
  platform.files.Allow(Operation::Write);
  EXPECT_TRUE(file.WriteStr(u"3"));
  EXPECT_EQ(Content(), "1\r\n3\r\n");
}

TEST_F(File, WriteStrToAFileThatIsOpenForReadingRaises) {
  SetContent("old");
  file.OpenFile(no_name);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"new"); }), kBadFileMode);
  EXPECT_EQ(Content(), "old");
}

TEST_F(File, AnotherInstanceCannotOpenAFileThatIsWritten) {
  file.WriteStr(u"1");
  CFile other;
  other.SetPath(u"C:\\Log");
  other.SetFileName(u"x.txt");
  EXPECT_EQ(ErrorNumberOf([&] { other.OpenFileForAppend(no_name); }), kFileAlreadyOpen);
}

TEST_F(File, CloseFileGivesTheFileFreeAndKeepsTheNumber) {
  file.CrFile();
  file.CloseFile();
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(platform.files.FreeNumber(), 1);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(File, CloseFileOfAFreshInstanceDoesNothing) {
  file.CloseFile();
  EXPECT_FALSE(file.FileIsOpen());
}

TEST_F(File, TheInstanceClosesItsChannelWhenItGoes) {
  {
    CFile other;
    other.SetPath(u"C:\\Log");
    other.SetFileName(u"x.txt");
    other.WriteStr(u"1");
  }
  EXPECT_EQ(platform.files.FreeNumber(), 1);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

// Reading through a channel.

TEST_F(File, OpenFilePutsTheFullNameInAnEmptyVariable) {
  SetContent("");
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_EQ(no_name, u"C:\\Log\\x.txt");
  std::u16string name;
  EXPECT_TRUE(file.OpenFileForAppend(name));
  EXPECT_EQ(name, u"C:\\Log\\x.txt");
}

TEST_F(File, OpenFileOpensTheNamedFileInstead) {
  platform.files.SetFile(u"C:\\y.txt", "y\r\n");
  std::u16string name = u"C:\\y.txt";
  std::u16string line;
  EXPECT_TRUE(file.OpenFile(name));
  EXPECT_TRUE(file.ReadStr(line));
  EXPECT_EQ(line, u"y");
  EXPECT_TRUE(file.OpenFileForAppend(name));
  file.WriteStr(u"z");
  EXPECT_EQ(Content(u"C:\\y.txt"), "y\r\nz\r\n");
  EXPECT_EQ(file.FileName(), u"x.txt");
}

TEST_F(File, OpenFileOfAMissingFileRaisesAndTellsTheName) {
  EXPECT_EQ(ErrorNumberOf([&] { file.OpenFile(no_name); }), kFileNotFound);
  EXPECT_EQ(no_name, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "(no file)");
}

TEST_F(File, OpenFileForAppendCreatesTheFile) {
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  EXPECT_EQ(Content(), "");
}

TEST_F(File, OpeningClosesTheChannelThatIsOpen) {
  file.CrFile();
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  EXPECT_EQ(platform.files.FreeNumber(), 2);
}

TEST_F(File, ReadStrReadsLineByLine) {
  SetContent("\xC0\xFEuolas\r\n\r\nlast");
  file.OpenFile(no_name);
  std::u16string line;
  std::vector<std::u16string> lines;
  while (file.ReadStr(line)) lines.push_back(line);
  EXPECT_THAT(lines, testing::ElementsAre(u"Ąžuolas", u"", u"last"));
  EXPECT_EQ(line, u"last") << "untouched at the end";
}

TEST_F(File, ReadStrIsFalseWhenNothingIsOpen) {
  SetContent("line");
  std::u16string line = u"-";
  EXPECT_FALSE(file.ReadStr(line));
  EXPECT_EQ(line, u"-");
}

TEST_F(File, ReadStrIsFalseOnAFileThatIsWritten) {
  SetContent("line\r\n");
  file.OpenFileForAppend(no_name);
  std::u16string line;
  EXPECT_FALSE(file.ReadStr(line));
}

TEST_F(File, ReadStrAfterCloseFileRaises) {
  SetContent("line");
  file.OpenFile(no_name);
  file.CloseFile();
  std::u16string line;
  EXPECT_EQ(ErrorNumberOf([&] { file.ReadStr(line); }), kBadFileNameOrNumber);
}

TEST_F(File, ReadStrThatFailsRaises) {
  SetContent("line");
  file.OpenFile(no_name);
  platform.files.Refuse(Operation::Read, kDeviceError);
  std::u16string line;
  EXPECT_EQ(ErrorNumberOf([&] { file.ReadStr(line); }), kDeviceError);
}

// The log.

TEST_F(File, LogLinesHaveTheUsersDateAndTime) {
  EXPECT_TRUE(file.StartLog());
  EXPECT_TRUE(file.WriteStrLog(u"Išsaugota"));
  EXPECT_TRUE(file.EndLog());
  EXPECT_EQ(Content(),
            "--- New sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n"
            "2010.11.12 14:05:09  :  I\xF0saugota\r\n"
            "--- End sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n");
}

TEST_F(File, LogLinesFollowTheRegionalSettings) {
  platform.locale.short_date_pattern = u"d/M/yy";
  platform.locale.long_time_pattern = u"h:mm:ss tt";
  file.WriteStrLog(u"a");
  EXPECT_THAT(Content(), testing::StartsWith("12/11/10 2:05:09"));
}

TEST_F(File, LogLinesAtMidnightHaveTheirTime) {
  platform.clock.Set(*ParseDate(u"2010.11.12", platform.locale));
  file.WriteStrLog(u"a");
  EXPECT_EQ(Content(), "2010.11.12 00:00:00  :  a\r\n");
}

TEST_F(File, AFreshInstanceStartsTheLogAnewAndAnAppendingOneContinuesIt) {
  SetContent("old\r\n");
  file.OpenFileForAppend(no_name);
  file.WriteStrLog(u"1");
  EXPECT_EQ(Content(), "old\r\n2010.11.12 14:05:09  :  1\r\n");
  CFile fresh;
  fresh.SetPath(u"C:\\Log");
  fresh.SetFileName(u"x.txt");
  file.CloseFile();
  fresh.StartLog();
  EXPECT_THAT(Content(), testing::StartsWith("--- New sesion"));
}

TEST_F(File, LogLinesPassOnWhatWriteStrSays) {
  platform.files.Refuse(Operation::OpenChannel, kPathFileAccess);
  EXPECT_EQ(ErrorNumberOf([&] { file.StartLog(); }), kPathFileAccess);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStrLog(u"a"); }), kBadFileNameOrNumber);
  EXPECT_EQ(ErrorNumberOf([&] { file.EndLog(); }), kBadFileNameOrNumber);
}

// Unicode mode.

TEST_F(UnicodeFile, CrFileIsFalseWhenTheFileWasCreated) {
  SetContent("old and longer");
  EXPECT_FALSE(file.CrFile());
  EXPECT_EQ(Content(), "\xFF\xFE");
}

TEST_F(UnicodeFile, CrFileIsTrueWhenThereIsNoStream) {
  platform.files.KeepStreams(true);
  EXPECT_TRUE(file.CrFile());
}

TEST_F(UnicodeFile, OpeningIsFalseWithAStreamAndTrueWithoutOne) {
  EXPECT_FALSE(file.OpenFile(no_name));
  EXPECT_FALSE(file.OpenFileForAppend(no_name));
  platform.files.KeepStreams(true);
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
}

TEST_F(UnicodeFile, OpeningDoesNotUseTheName) {
  std::u16string name = u"C:\\y.txt";
  EXPECT_FALSE(file.OpenFileForAppend(name));
  EXPECT_EQ(name, u"C:\\y.txt");
  EXPECT_EQ(Content(u"C:\\y.txt"), "(no file)");
  EXPECT_EQ(Content(), "") << "created";
  file.OpenFile(no_name);
  EXPECT_EQ(no_name, u"");
}

TEST_F(UnicodeFile, WriteStrCreatesAUtf16File) {
  SetContent("old");
  EXPECT_TRUE(file.WriteStr(u"Žąsis 漢"));
  EXPECT_TRUE(file.WriteStr(u""));
  EXPECT_EQ(Utf16Content(), "Žąsis 漢\r\n\r\n");
}

TEST_F(UnicodeFile, ALogIsWrittenInUtf16) {
  file.StartLog();
  file.WriteStrLog(u"Išsaugota");
  file.EndLog();
  EXPECT_EQ(Utf16Content(),
            "--- New sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n"
            "2010.11.12 14:05:09  :  Išsaugota\r\n"
            "--- End sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n");
}

TEST_F(UnicodeFile, AppendingWritesAnsiEvenToAUtf16File) {
  file.WriteStr(u"Ž");
  const std::string before = Content();
  EXPECT_FALSE(file.OpenFileForAppend(no_name));
  EXPECT_TRUE(file.WriteStr(u"ž"));
  EXPECT_EQ(Content(), before + "\xFE\r\n");
}

TEST_F(UnicodeFile, WriteStrWithoutAStreamIsError91) {
  platform.files.KeepStreams(true);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"line"); }), kObjectNotSet);
}

TEST_F(UnicodeFile, WriteStrToAStreamThatReadsRaises) {
  SetContent("old");
  file.OpenFile(no_name);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"new"); }), kBadFileMode);
  EXPECT_EQ(Content(), "old");
}

TEST_F(UnicodeFile, WriteStrThatFailsLeavesTheLinesBefore) {
  file.WriteStr(u"1");
  platform.files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(ErrorNumberOf([&] { file.WriteStr(u"2"); }), kDiskFull);
  EXPECT_EQ(Utf16Content(), "1\r\n");
}

TEST_F(UnicodeFile, ReadStrReadsNothingFromAnOpenStream) {
  SetContent("line\r\n");
  file.OpenFile(no_name);
  std::u16string line = u"-";
  EXPECT_FALSE(file.ReadStr(line));
  EXPECT_EQ(line, u"-");
}

TEST_F(UnicodeFile, ReadStrWithoutAStreamIsError91) {
  std::u16string line;
  EXPECT_EQ(ErrorNumberOf([&] { file.ReadStr(line); }), kObjectNotSet);
}

TEST_F(UnicodeFile, AnOpenStreamDoesNotCountAsOpenFile) {
  file.WriteStr(u"1");
  EXPECT_FALSE(file.FileIsOpen());
}

TEST_F(UnicodeFile, CloseFileLeavesTheStreamOpen) {
  file.WriteStr(u"1");
  file.CloseFile();
  file.WriteStr(u"2");
  EXPECT_EQ(Utf16Content(), "1\r\n2\r\n");
}

TEST_F(UnicodeFile, CreatingAndOpeningCloseTheStream) {
  file.WriteStr(u"1");
  EXPECT_FALSE(file.CrFile());
  EXPECT_FALSE(file.OpenFileForAppend(no_name));
  EXPECT_FALSE(file.OpenFile(no_name));
  file.SetFileName(u"y.txt");
  file.CrFile();
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(UnicodeFile, AStreamThatCannotBeOpenedLeavesNoneOpen) {
  file.WriteStr(u"1");
  platform.files.Refuse(Operation::CreateTextStream, kPermissionDenied);
  EXPECT_EQ(ErrorNumberOf([&] { file.CrFile(); }), kPermissionDenied);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(UnicodeFile, TheInstanceClosesBothWhenItGoes) {
  {
    CFile other;
    other.SetPath(u"C:\\Log");
    other.SetFileName(u"y.txt");
    other.WriteStr(u"1");
    other.SetIsUnicode(true);
    other.SetFileName(u"z.txt");
    other.WriteStr(u"2");
    EXPECT_TRUE(other.FileIsOpen()) << "the channel of the other mode";
  }
  platform.files.Delete(u"C:\\Log\\y.txt");
  platform.files.Delete(u"C:\\Log\\z.txt");
}

// Backups.

class Backup : public File {
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
  EXPECT_EQ(ErrorNumberOf([&] { file.SaveFileAsBackup(); }), kFileNotFound);
  EXPECT_EQ(file.FileName(), u"x.txt");
}

TEST_F(Backup, SaveFileAsBackupIgnoresThatTheLastOneCannotBeDeletedButNotThatTheNameIsTaken) {
  platform.files.SetFile(u"C:\\Log\\x.txt.bak", "older");
  platform.files.Refuse(Operation::Delete, kPathFileAccess);
  EXPECT_EQ(ErrorNumberOf([&] { file.SaveFileAsBackup(); }), kFileAlreadyExists);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "older");
}

TEST_F(Backup, SaveFileAsBackupThatCannotRenameHasDeletedTheLastOne) {
  platform.files.SetFile(u"C:\\Log\\x.txt.bak", "older");
  platform.files.Refuse(Operation::Rename, kPermissionDenied);
  EXPECT_EQ(ErrorNumberOf([&] { file.SaveFileAsBackup(); }), kPermissionDenied);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\x.txt.bak"), "(no file)");
}

TEST_F(Backup, MoveFileToBackupCreatesTheFolderBesideTheFile) {
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_EQ(Content(), "(no file)");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "x");
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
  platform.files.Refuse(Operation::CreateFolder, kPathFileAccess);
  EXPECT_FALSE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""));
  EXPECT_EQ(Content(), "x");
}

TEST_F(Backup, MoveFileToBackupDoesNotNeedToCreateTheFolder) {
  platform.files.SetFolder(u"C:\\Kopijos");
  platform.files.Refuse(Operation::CreateFolder, kPathFileAccess);
  EXPECT_TRUE(CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u"C:\\Kopijos"));
}

TEST_F(Backup, MoveFileToBackupThatCannotCopyKeepsTheFile) {
  platform.files.SetFile(u"C:\\Log\\BACKUP\\x.txt", "older");
  platform.files.Refuse(Operation::Copy, kDiskFull);
  EXPECT_EQ(ErrorNumberOf([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); }), kDiskFull);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "older");
}

TEST_F(Backup, MoveFileToBackupThatCannotDeleteLeavesBoth) {
  platform.files.Refuse(Operation::Delete, kPermissionDenied);
  EXPECT_EQ(ErrorNumberOf([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); }), kPermissionDenied);
  EXPECT_EQ(Content(), "x");
  EXPECT_EQ(Content(u"C:\\Log\\BACKUP\\x.txt"), "x");
}

TEST_F(Backup, MoveFileToBackupOfAMissingFileRaises) {
  EXPECT_EQ(ErrorNumberOf([&] { CFile::MoveFileToBackup(u"C:\\Log\\y.txt", u""); }), kFileNotFound);
}

TEST_F(Backup, MoveFileToBackupOfAPathWithoutBackslashKnowsNoName) {
  platform.files.SetCurrentFolder(u"C:\\Log");
  EXPECT_EQ(ErrorNumberOf([&] { CFile::MoveFileToBackup(u"x.txt", u""); }), kPathFileAccess);
  EXPECT_EQ(Content(), "x") << "not lost";
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\Log\\BACKUP"));
}

TEST_F(Backup, MoveFileToBackupSplitsAtTheLastBackslashAlone) {
  EXPECT_EQ(ErrorNumberOf([&] { CFile::MoveFileToBackup(u"C:\\Log/x.txt", u""); }), kPathNotFound)
      << "the name is \"Log/x.txt\", and the backup folder has no folder \"Log\"";
  EXPECT_EQ(Content(), "x");
}

TEST_F(Backup, MoveFileToBackupNeverLosesTheFile) {
  for (long call = 1;; ++call) {
    SetContent("x");
    IgnoreErrors([&] { platform.files.Delete(u"C:\\Log\\BACKUP\\x.txt"); });
    platform.files.FailAt(call, kDeviceError);
    IgnoreErrors([&] { CFile::MoveFileToBackup(u"C:\\Log\\x.txt", u""); });
    EXPECT_TRUE(Content() == "x" || Content(u"C:\\Log\\BACKUP\\x.txt") == "x") << call;
    const bool has_failed = platform.files.calls() >= call;
    platform.files.FailAt(0, kDeviceError);
    if (!has_failed) break;
  }
}

// Copies.

class Copy : public File {
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
  platform.files.Refuse(Operation::Copy, kDeviceError);
  platform.files.FailAt(0, kDeviceError);
  CFile::CopyFile(u"C:\\Log\\new.txt", time, length, u"C:\\Log\\x.txt");
  EXPECT_EQ(platform.files.calls(), 2) << "time and length, no copy";
}

TEST_F(Copy, CopyFileToAMissingTargetCopiesNothingSilently) {
  CFile::CopyFile(u"C:\\Log\\new.txt", Date{40495}, 3, u"C:\\Log\\y.txt");
  EXPECT_EQ(Content(u"C:\\Log\\y.txt"), "(no file)");
}

TEST_F(Copy, CopyFileEndsSilentlyAfterAnyError) {
  CFile::CopyFile(u"C:\\Log\\none.txt", Date{1}, 1, u"C:\\Log\\x.txt");
  for (long call = 1; call <= 3; ++call) {
    platform.files.FailAt(call, kPermissionDenied);
    CFile::CopyFile(u"C:\\Log\\new.txt", Date{1}, 1, u"C:\\Log\\x.txt");
    EXPECT_EQ(platform.files.calls(), call) << "goes on after an error";
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
  platform.files.Refuse(Operation::LastModified, kPathFileAccess);
  platform.files.Refuse(Operation::Length, kPathFileAccess);
  EXPECT_EQ(CFile::FileDateTimeAttr(u"C:\\Log\\x.txt"), Date{});
  EXPECT_EQ(CFile::FileLenAttr(u"C:\\Log\\x.txt"), 0);
}

}  // namespace
}  // namespace qva
