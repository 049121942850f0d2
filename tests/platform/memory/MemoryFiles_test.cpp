#include "platform/memory/MemoryFiles.h"

#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/platform/files_contract.h"
#include "tests/platform/memory/memory_drive.h"
#include "tests/raised_error.h"

namespace qva {

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryFiles, FilesContract, MemoryDrive);

namespace {

class MemoryFilesTest : public testing::Test {
 protected:
  MemoryLocale locale;
  MemoryClock clock;
  MemoryFiles files{locale, clock};
};

TEST_F(MemoryFilesTest, StartsOnAnEmptyDriveC) {
  EXPECT_EQ(files.CurrentFolder(), u"C:\\");
  EXPECT_TRUE(files.FolderExists(u"C:\\"));
  EXPECT_TRUE(files.FolderExists(u"c:"));
  EXPECT_FALSE(files.FolderExists(u"D:\\"));
  EXPECT_TRUE(files.Find(u"C:\\", u"*").empty());
}

TEST_F(MemoryFilesTest, AMissingDriveIsError76) {
  EXPECT_EQ(RaisedBy([&] { files.OpenChannel(1, u"D:\\x.txt", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.OpenChannel(1, u"D:", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.CreateFolder(u"D:\\"); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.CreateFolder(u"\\\\server\\share\\a"); }), kPathNotFound);
  files.SetFolder(u"\\\\server\\share");
  files.CreateFolder(u"\\\\server\\share\\a");
  EXPECT_TRUE(files.FolderExists(u"\\\\SERVER\\share\\A\\"));
}

TEST_F(MemoryFilesTest, RelativePathsFollowTheCurrentFolder) {
  files.SetFile(u"C:\\Archyvas\\x.txt", "x");
  files.SetCurrentFolder(u"c:\\archyvas");
  EXPECT_EQ(files.CurrentFolder(), u"c:\\archyvas");
  EXPECT_EQ(files.Length(u"x.txt"), 1);
  EXPECT_EQ(files.Length(u"C:x.txt"), 1);
  EXPECT_EQ(files.Length(u"\\Archyvas\\x.txt"), 1);
  EXPECT_EQ(RaisedBy([&] { files.SetCurrentFolder(u"C:\\none"); }), kPathNotFound);
}

TEST_F(MemoryFilesTest, RenamesAFileToOtherLetterCase) {
  files.SetFile(u"C:\\x.txt", "x");
  files.Rename(u"C:\\x.txt", u"C:\\X.TXT");
  EXPECT_THAT(files.Find(u"C:\\", u"*"), testing::ElementsAre(u"X.TXT"));
}

TEST_F(MemoryFilesTest, RenamesNothingToAnotherDrive) {
  files.SetFolder(u"D:\\");
  files.SetFile(u"C:\\x", "x");
  EXPECT_EQ(RaisedBy([&] { files.Rename(u"C:\\x", u"D:\\x"); }), kOtherDrive);
  EXPECT_EQ(files.Content(u"C:\\x"), "x");
}

TEST_F(MemoryFilesTest, ChangesStampTheClocksTime) {
  files.SetFile(u"C:\\x", "x", Date{40000});
  EXPECT_EQ(files.LastModified(u"C:\\x"), Date{40000});
  const auto channel = files.OpenChannel(1, u"C:\\x", ChannelMode::Append);
  EXPECT_EQ(files.LastModified(u"C:\\x"), Date{40000}) << "opening changes nothing";
  channel->PrintLine(u"line");
  EXPECT_EQ(files.LastModified(u"C:\\x"), clock.Now());
}

TEST_F(MemoryFilesTest, AnAnsiStreamRefusesACharacterThatTheCodePageLacks) {
  const auto stream = files.OpenTextStream(u"C:\\x", StreamMode::ForAppending);
  EXPECT_EQ(RaisedBy([&] { stream->WriteLine(u"a漢b"); }), kInvalidProcedureCall);
  EXPECT_EQ(files.Content(u"C:\\x"), "");
}

}  // namespace
}  // namespace qva
