#include "platform/memory/MemoryFiles.h"

#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/platform/files_contract.h"

namespace qva {
namespace {

struct MemoryDrive {
  MemoryDrive() { memory.SetFolder(root()); }
  Files& files() { return memory; }
  std::u16string root() { return u"D:\\Bandymai"; }
  void SetContent(const std::u16string& path, std::string bytes) { memory.SetFile(path, std::move(bytes)); }
  std::optional<std::string> Content(const std::u16string& path) { return memory.Content(path); }

  MemoryLocale locale;
  MemoryClock clock;
  MemoryFiles memory{locale, clock};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FilesContract, MemoryDrive);

namespace {

class MemoryFilesTest : public testing::Test {
 protected:
  using Operation = MemoryFiles::Operation;

  template <class Step>
  static std::int32_t Raised(Step&& step) {
    try {
      step();
      return 0;
    } catch (const AutomationError& error) {
      return error.number();
    }
  }

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
  EXPECT_EQ(Raised([&] { files.OpenChannel(1, u"D:\\x.txt", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(Raised([&] { files.OpenChannel(1, u"D:", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(Raised([&] { files.CreateFolder(u"D:\\"); }), kPathNotFound);
  EXPECT_EQ(Raised([&] { files.CreateFolder(u"\\\\server\\share\\a"); }), kPathNotFound);
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
  EXPECT_EQ(Raised([&] { files.SetCurrentFolder(u"C:\\none"); }), kPathNotFound);
}

TEST_F(MemoryFilesTest, RenamesAFileToOtherLetterCase) {
  files.SetFile(u"C:\\x.txt", "x");
  files.Rename(u"C:\\x.txt", u"C:\\X.TXT");
  EXPECT_THAT(files.Find(u"C:\\", u"*"), testing::ElementsAre(u"X.TXT"));
}

TEST_F(MemoryFilesTest, RenamesNothingToAnotherDrive) {
  files.SetFolder(u"D:\\");
  files.SetFile(u"C:\\x", "x");
  EXPECT_EQ(Raised([&] { files.Rename(u"C:\\x", u"D:\\x"); }), kOtherDrive);
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

TEST_F(MemoryFilesTest, ARefusedOperationDoesNothing) {
  files.SetFile(u"C:\\x", "old");
  const std::pair<Operation, std::function<void()>> operations[] = {
      {Operation::OpenChannel, [&] { files.OpenChannel(1, u"C:\\x", ChannelMode::Output); }},
      {Operation::CreateTextStream, [&] { files.CreateTextStream(u"C:\\x"); }},
      {Operation::OpenTextStream, [&] { files.OpenTextStream(u"C:\\y", StreamMode::ForReading); }},
      {Operation::Delete, [&] { files.Delete(u"C:\\x"); }},
      {Operation::Rename, [&] { files.Rename(u"C:\\x", u"C:\\y"); }},
      {Operation::Copy, [&] { files.Copy(u"C:\\x", u"C:\\y"); }},
      {Operation::CreateFolder, [&] { files.CreateFolder(u"C:\\y"); }},
      {Operation::LastModified, [&] { files.LastModified(u"C:\\x"); }},
      {Operation::Length, [&] { files.Length(u"C:\\x"); }},
  };
  for (const auto& [operation, call] : operations) {
    files.Refuse(operation, kDeviceError);
    EXPECT_EQ(Raised(call), kDeviceError) << static_cast<int>(operation);
    EXPECT_EQ(files.Content(u"C:\\x"), "old");
    EXPECT_FALSE(files.Content(u"C:\\y") || files.FolderExists(u"C:\\y"));
    files.Allow(operation);
  }
  EXPECT_EQ(Raised([&] { files.Length(u"C:\\x"); }), 0);
}

TEST_F(MemoryFilesTest, ARefusedWriteLeavesTheFile) {
  const auto channel = files.OpenChannel(1, u"C:\\x", ChannelMode::Output);
  channel->PrintLine(u"1");
  files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(Raised([&] { channel->PrintLine(u"2"); }), kDiskFull);
  files.Allow(Operation::Write);
  channel->PrintLine(u"3");
  EXPECT_EQ(files.Content(u"C:\\x"), "1\r\n3\r\n");
}

TEST_F(MemoryFilesTest, ARefusedReadCanBeTriedAgain) {
  files.SetFile(u"C:\\x", "1");
  const auto channel = files.OpenChannel(1, u"C:\\x", ChannelMode::Input);
  files.Refuse(Operation::Read, kDeviceError);
  EXPECT_EQ(Raised([&] { channel->AtEnd(); }), kDeviceError);
  EXPECT_EQ(Raised([&] { channel->ReadLine(); }), kDeviceError);
  files.Allow(Operation::Read);
  EXPECT_EQ(channel->ReadLine(), u"1");
}

TEST_F(MemoryFilesTest, AMarkThatCannotBeWrittenLeavesAnEmptyFile) {
  files.SetFile(u"C:\\x", "old");
  files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(Raised([&] { files.CreateTextStream(u"C:\\x"); }), kDiskFull);
  EXPECT_EQ(files.Content(u"C:\\x"), "");
  EXPECT_EQ(Raised([&] { files.Delete(u"C:\\x"); }), 0) << "still open";
}

TEST_F(MemoryFilesTest, FailsAtTheCallThatWasChosen) {
  files.SetFile(u"C:\\x", "x");
  files.FailAt(2, kPermissionDenied);
  EXPECT_EQ(Raised([&] { files.Length(u"C:\\x"); }), 0);
  EXPECT_EQ(Raised([&] { files.Length(u"C:\\x"); }), kPermissionDenied);
  EXPECT_EQ(Raised([&] { files.Length(u"C:\\x"); }), 0);
  EXPECT_EQ(files.calls(), 3);
  files.FailAt(0, kPermissionDenied);
  EXPECT_EQ(files.calls(), 0);
}

TEST_F(MemoryFilesTest, KeepsStreamsWhenToldSo) {
  files.KeepStreams(true);
  EXPECT_FALSE(files.CreateTextStream(u"C:\\x"));
  EXPECT_FALSE(files.OpenTextStream(u"C:\\y", StreamMode::ForAppending));
  EXPECT_TRUE(files.Content(u"C:\\x") && files.Content(u"C:\\y"));
}

TEST_F(MemoryFilesTest, AnAnsiStreamRefusesACharacterThatTheCodePageLacks) {
  const auto stream = files.OpenTextStream(u"C:\\x", StreamMode::ForAppending);
  EXPECT_EQ(Raised([&] { stream->WriteLine(u"a漢b"); }), kInvalidProcedureCall);
  EXPECT_EQ(files.Content(u"C:\\x"), "");
}

}  // namespace
}  // namespace qva
