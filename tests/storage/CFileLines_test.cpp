// CFile: lines, through channels and streams, and the log.
#include "storage/CFile.h"

#include "tests/storage/file_fixture.h"

namespace qva {
namespace {

using Operation = FaultyFiles::Operation;
using FileLines = FileTest;

class UnicodeFile : public FileTest {
 protected:
  UnicodeFile() { file.SetIsUnicode(true); }
};

// Writing through a channel.

TEST_F(FileLines, CrFileCreatesAnEmptyFile) {
  EXPECT_TRUE(file.CrFile());
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(Content(), "");
}

TEST_F(FileLines, CrFileEmptiesAnExistingFile) {
  SetContent("old");
  EXPECT_TRUE(file.CrFile());
  EXPECT_EQ(Content(), "");
}

TEST_F(FileLines, CrFileClosesTheChannelThatIsOpen) {
  file.CrFile();
  file.SetFileName(u"y.txt");
  EXPECT_TRUE(file.CrFile());
  EXPECT_EQ(platform.files.FreeNumber(), 2);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(FileLines, CrFileIsFalseWhenNoFileNumberIsFree) {
  std::vector<std::unique_ptr<TextChannel>> channels;
  while (const std::int16_t number = platform.files.FreeNumber()) {
    const std::u16string path = u"C:\\Log\\" + NumberText(number);
    channels.push_back(platform.files.OpenChannel(number, path, ChannelMode::Output));
  }
  EXPECT_FALSE(file.CrFile());
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_FALSE(file.WriteStr(u"line"));
  EXPECT_EQ(Content(), "(no file)");
  EXPECT_EQ(RaisedBy([&] { file.OpenFile(no_name); }), kBadFileNameOrNumber);
}

TEST_F(FileLines, CrFileInAMissingFolderRaises) {
  file.SetPath(u"C:\\None");
  EXPECT_EQ(RaisedBy([&] { file.CrFile(); }), kPathNotFound);
}

TEST_F(FileLines, TheNumberOfAFileThatCouldNotBeOpenedStays) {
  SetContent("old\r\n");
  platform.faults.files.Refuse(Operation::OpenChannel, kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { file.OpenFileForAppend(no_name); }), kPermissionDenied);
  platform.faults.files.Allow(Operation::OpenChannel);
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"line"); }), kBadFileNameOrNumber);
  EXPECT_EQ(Content(), "old\r\n") << "the file that could not be opened must not be emptied";
}

TEST_F(FileLines, WriteStrWritesLinesInTheAnsiCodePage) {
  EXPECT_TRUE(file.WriteStr(u"Ąžuolas"));
  EXPECT_TRUE(file.WriteStr(u""));
  EXPECT_EQ(Content(), "\xC0\xFEuolas\r\n\r\n");
}

TEST_F(FileLines, TheFirstWriteStrOfAFreshInstanceStartsTheFileAnew) {
  SetContent("old\r\n");
  file.WriteStr(u"new");
  EXPECT_EQ(Content(), "new\r\n");
}

TEST_F(FileLines, WriteStrAfterOpenFileForAppendGrowsTheFile) {
  SetContent("old\r\n");
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  file.WriteStr(u"new");
  EXPECT_EQ(Content(), "old\r\nnew\r\n");
}

TEST_F(FileLines, WriteStrAfterCloseFileRaisesInsteadOfEmptyingTheFile) {
  file.WriteStr(u"1");
  file.CloseFile();
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"2"); }), kBadFileNameOrNumber);
  EXPECT_EQ(Content(), "1\r\n");
}

TEST_F(FileLines, AnotherFileUnderAClosedNumberIsNotTouched) {
  file.WriteStr(u"1");
  file.CloseFile();
  CFile other;
  other.SetPath(u"C:\\Log");
  other.SetFileName(u"y.txt");
  other.CrFile();
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"2"); }), kBadFileNameOrNumber);
  file.CloseFile();
  other.WriteStr(u"3");
  EXPECT_EQ(Content(u"C:\\Log\\y.txt"), "3\r\n");
}

TEST_F(FileLines, WriteStrThatFailsLeavesTheLinesBefore) {
  file.WriteStr(u"1");
  platform.faults.files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"2"); }), kDiskFull);
  platform.faults.files.Allow(Operation::Write);
  EXPECT_TRUE(file.WriteStr(u"3"));
  EXPECT_EQ(Content(), "1\r\n3\r\n");
}

TEST_F(FileLines, WriteStrToAFileThatIsOpenForReadingRaises) {
  SetContent("old");
  file.OpenFile(no_name);
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"new"); }), kBadFileMode);
  EXPECT_EQ(Content(), "old");
}

TEST_F(FileLines, AnotherInstanceCannotOpenAFileThatIsWritten) {
  file.WriteStr(u"1");
  CFile other;
  other.SetPath(u"C:\\Log");
  other.SetFileName(u"x.txt");
  EXPECT_EQ(RaisedBy([&] { other.OpenFileForAppend(no_name); }), kFileAlreadyOpen);
}

TEST_F(FileLines, CloseFileGivesTheFileFreeAndKeepsTheNumber) {
  file.CrFile();
  file.CloseFile();
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(platform.files.FreeNumber(), 1);
  platform.files.Delete(u"C:\\Log\\x.txt");
}

TEST_F(FileLines, CloseFileOfAFreshInstanceDoesNothing) {
  file.CloseFile();
  EXPECT_FALSE(file.FileIsOpen());
}

TEST_F(FileLines, TheInstanceClosesItsChannelWhenItGoes) {
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

TEST_F(FileLines, OpenFilePutsTheFullNameInAnEmptyVariable) {
  SetContent("");
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_EQ(no_name, u"C:\\Log\\x.txt");
  std::u16string name;
  EXPECT_TRUE(file.OpenFileForAppend(name));
  EXPECT_EQ(name, u"C:\\Log\\x.txt");
}

TEST_F(FileLines, OpenFileOpensTheNamedFileInstead) {
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

TEST_F(FileLines, OpenFileOfAMissingFileRaisesAndTellsTheName) {
  EXPECT_EQ(RaisedBy([&] { file.OpenFile(no_name); }), kFileNotFound);
  EXPECT_EQ(no_name, u"C:\\Log\\x.txt");
  EXPECT_EQ(Content(), "(no file)");
}

TEST_F(FileLines, OpenFileForAppendCreatesTheFile) {
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  EXPECT_EQ(Content(), "");
}

TEST_F(FileLines, OpeningClosesTheChannelThatIsOpen) {
  file.CrFile();
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_TRUE(file.OpenFileForAppend(no_name));
  EXPECT_EQ(platform.files.FreeNumber(), 2);
}

TEST_F(FileLines, ReadStrReadsLineByLine) {
  SetContent("\xC0\xFEuolas\r\n\r\nlast");
  file.OpenFile(no_name);
  std::u16string line;
  std::vector<std::u16string> lines;
  while (file.ReadStr(line)) lines.push_back(line);
  EXPECT_THAT(lines, testing::ElementsAre(u"Ąžuolas", u"", u"last"));
  EXPECT_EQ(line, u"last") << "untouched at the end";
}

TEST_F(FileLines, ReadStrIsFalseWhenNothingIsOpen) {
  SetContent("line");
  std::u16string line = u"-";
  EXPECT_FALSE(file.ReadStr(line));
  EXPECT_EQ(line, u"-");
}

TEST_F(FileLines, ReadStrIsFalseOnAFileThatIsWritten) {
  SetContent("line\r\n");
  file.OpenFileForAppend(no_name);
  std::u16string line;
  EXPECT_FALSE(file.ReadStr(line));
}

TEST_F(FileLines, ReadStrAfterCloseFileRaises) {
  SetContent("line");
  file.OpenFile(no_name);
  file.CloseFile();
  std::u16string line;
  EXPECT_EQ(RaisedBy([&] { file.ReadStr(line); }), kBadFileNameOrNumber);
}

TEST_F(FileLines, ReadStrThatFailsRaises) {
  SetContent("line");
  file.OpenFile(no_name);
  platform.faults.files.Refuse(Operation::Read, kDeviceError);
  std::u16string line;
  EXPECT_EQ(RaisedBy([&] { file.ReadStr(line); }), kDeviceError);
}

// The log.

TEST_F(FileLines, LogLinesHaveTheUsersDateAndTime) {
  EXPECT_TRUE(file.StartLog());
  EXPECT_TRUE(file.WriteStrLog(u"Išsaugota"));
  EXPECT_TRUE(file.EndLog());
  EXPECT_EQ(Content(),
            "--- New sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n"
            "2010.11.12 14:05:09  :  I\xF0saugota\r\n"
            "--- End sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n");
}

TEST_F(FileLines, LogLinesFollowTheRegionalSettings) {
  struct {
    const char16_t* date;
    const char16_t* time;
    const char* text;
  } const cases[] = {
      {u"d/M/yy", u"h:mm:ss tt", "12/11/10 2:05:09 PM"},
      {u"d.M.y", u"H.m.s", "12.11.10 14.5.9"},
      {u"dd-MMM-yyyy", u"hh:mm t", "12-lapkr.-2010 02:05 P"},
      {u"yyyy 'm.' MMMM d 'd.'", u"H 'val.' m 'min.'", "2010 m. lapkri\xE8io 12 d. 14 val. 5 min."},
      {u"ddd yyyy''MM''dd", u"H 'o''clock'", "pn 2010'11'12 14 o'clock"},
      {u"dddd", u"tt", "penktadienis PM"}};
  platform.locale.am = u"AM";
  platform.locale.pm = u"PM";
  for (const auto& c : cases) {
    platform.locale.short_date_pattern = c.date;
    platform.locale.long_time_pattern = c.time;
    file.CrFile();
    file.StartLog();
    file.WriteStrLog(u"a");
    file.EndLog();
    const std::string now = c.text;
    EXPECT_EQ(Content(), "--- New sesion ----- [" + now + "] -------------------------------\r\n" + now +
                             "  :  a\r\n--- End sesion ----- [" + now +
                             "] -------------------------------\r\n");
  }
}

TEST_F(FileLines, LogLinesNameTheHalfOfTheDayAsTheUserDoes) {
  platform.locale.long_time_pattern = u"h:mm:ss tt";
  for (const double hour : {0, 11, 12, 23}) {
    platform.clock.Set(Date{40494 + hour / 24});
    file.WriteStrLog(u"a");
  }
  EXPECT_EQ(Content(),
            "2010.11.12 12:00:00 prie\xF0piet  :  a\r\n2010.11.12 11:00:00 prie\xF0piet  :  a\r\n"
            "2010.11.12 12:00:00 popiet  :  a\r\n2010.11.12 11:00:00 popiet  :  a\r\n");
}

TEST_F(FileLines, LogLinesAtMidnightHaveTheirTime) {
  platform.clock.Set(*ParseDate(u"2010.11.12", platform.locale));
  file.WriteStrLog(u"a");
  EXPECT_EQ(Content(), "2010.11.12 00:00:00  :  a\r\n");
}

TEST_F(FileLines, AFreshInstanceStartsTheLogAnewAndAnAppendingOneContinuesIt) {
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

TEST_F(FileLines, LogLinesPassOnWhatWriteStrSays) {
  platform.faults.files.Refuse(Operation::OpenChannel, kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { file.StartLog(); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { file.WriteStrLog(u"a"); }), kBadFileNameOrNumber);
  EXPECT_EQ(RaisedBy([&] { file.EndLog(); }), kBadFileNameOrNumber);
}

// Unicode mode.

TEST_F(UnicodeFile, CrFileIsFalseWhenTheFileWasCreated) {
  SetContent("old and longer");
  EXPECT_FALSE(file.CrFile());
  EXPECT_EQ(Content(), "\xFF\xFE");
}

TEST_F(UnicodeFile, CrFileIsTrueWhenThereIsNoStream) {
  platform.faults.files.KeepStreams(true);
  EXPECT_TRUE(file.CrFile());
}

TEST_F(UnicodeFile, OpeningIsFalseWithAStreamAndTrueWithoutOne) {
  EXPECT_FALSE(file.OpenFile(no_name));
  EXPECT_FALSE(file.OpenFileForAppend(no_name));
  platform.faults.files.KeepStreams(true);
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
  platform.faults.files.KeepStreams(true);
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"line"); }), kObjectNotSet);
}

TEST_F(UnicodeFile, WriteStrToAStreamThatReadsRaises) {
  SetContent("old");
  file.OpenFile(no_name);
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"new"); }), kBadFileMode);
  EXPECT_EQ(Content(), "old");
}

TEST_F(UnicodeFile, WriteStrThatFailsLeavesTheLinesBefore) {
  file.WriteStr(u"1");
  platform.faults.files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(RaisedBy([&] { file.WriteStr(u"2"); }), kDiskFull);
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
  EXPECT_EQ(RaisedBy([&] { file.ReadStr(line); }), kObjectNotSet);
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
  platform.faults.files.Refuse(Operation::CreateTextStream, kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { file.CrFile(); }), kPermissionDenied);
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

}  // namespace
}  // namespace qva
