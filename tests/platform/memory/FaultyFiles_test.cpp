#include "platform/memory/FaultyFiles.h"

#include "tests/platform/core_test.h"
#include "tests/platform/files_contract.h"
#include "tests/platform/memory/memory_drive.h"

namespace qva {
namespace {

/// As long as nothing is refused, all goes through.
struct FaultyDrive : MemoryDrive {
  Files& files() { return faulty; }

  FaultyFiles faulty{memory};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(FaultyFiles, FilesContract, FaultyDrive);

namespace {

class FaultyFilesTest : public CoreTest {
 protected:
  using Operation = FaultyFiles::Operation;

  std::optional<std::string> Content(std::u16string_view path) const { return platform.files.Content(path); }

  FaultyFiles& files = platform.faults.files;
};

TEST_F(FaultyFilesTest, ARefusedOperationRaisesTheErrorAndDoesNothing) {
  platform.files.SetFile(u"C:\\x", "old");
  const std::pair<Operation, std::function<void()>> operations[] = {
      {Operation::OpenChannel, [&] { files.OpenChannel(1, u"C:\\x", ChannelMode::Output); }},
      {Operation::CreateTextStream, [&] { files.CreateTextStream(u"C:\\x"); }},
      {Operation::OpenTextStream, [&] { files.OpenTextStream(u"C:\\y", StreamMode::ForReading); }},
      {Operation::CurrentFolder, [&] { files.CurrentFolder(); }},
      {Operation::Delete, [&] { files.Delete(u"C:\\x"); }},
      {Operation::Rename, [&] { files.Rename(u"C:\\x", u"C:\\y"); }},
      {Operation::Copy, [&] { files.Copy(u"C:\\x", u"C:\\y"); }},
      {Operation::CreateFolder, [&] { files.CreateFolder(u"C:\\y"); }},
      {Operation::LastModified, [&] { files.LastModified(u"C:\\x"); }},
      {Operation::Length, [&] { files.Length(u"C:\\x"); }},
  };
  for (const auto& [operation, call] : operations) {
    files.Refuse(operation, kPermissionDenied);
    EXPECT_EQ(RaisedBy(call), kPermissionDenied) << static_cast<int>(operation);
    EXPECT_EQ(Content(u"C:\\x"), "old");
    EXPECT_FALSE(Content(u"C:\\y") || files.FolderExists(u"C:\\y"));
    files.Allow(operation);
  }
  EXPECT_EQ(RaisedBy([&] { files.Length(u"C:\\x"); }), 0);
}

TEST_F(FaultyFilesTest, WhatDoesNotRaiseAnswersThatThereIsNothing) {
  platform.files.SetFile(u"C:\\a\\x", "");
  for (const Operation operation : {Operation::FreeNumber, Operation::FolderExists, Operation::Find}) {
    files.Refuse(operation);
  }
  EXPECT_EQ(files.FreeNumber(), 0);
  EXPECT_FALSE(files.FolderExists(u"C:\\a"));
  EXPECT_THAT(files.Find(u"C:\\a", u"*"), testing::IsEmpty());
  EXPECT_EQ(files.calls(), 0);
}

TEST_F(FaultyFilesTest, ARefusedWriteLeavesTheFile) {
  const auto channel = files.OpenChannel(1, u"C:\\x", ChannelMode::Output);
  const auto stream = files.OpenTextStream(u"C:\\y", StreamMode::ForAppending);
  channel->PrintLine(u"1");
  files.Refuse(Operation::Write, kDiskFull);
  EXPECT_EQ(RaisedBy([&] { channel->PrintLine(u"2"); }), kDiskFull);
  EXPECT_EQ(RaisedBy([&] { stream->WriteLine(u"2"); }), kDiskFull);
  files.Allow(Operation::Write);
  channel->PrintLine(u"3");
  stream->WriteLine(u"3");
  EXPECT_EQ(Content(u"C:\\x"), "1\r\n3\r\n");
  EXPECT_EQ(Content(u"C:\\y"), "3\r\n");
}

TEST_F(FaultyFilesTest, ARefusedReadCanBeTriedAgain) {
  platform.files.SetFile(u"C:\\x", "1");
  const auto channel = files.OpenChannel(1, u"C:\\x", ChannelMode::Input);
  files.Refuse(Operation::Read);
  EXPECT_EQ(RaisedBy([&] { channel->AtEnd(); }), kDeviceError);
  EXPECT_EQ(RaisedBy([&] { channel->ReadLine(); }), kDeviceError);
  files.Allow(Operation::Read);
  EXPECT_EQ(channel->ReadLine(), u"1");
}

TEST_F(FaultyFilesTest, FailsAtTheCallThatWasChosen) {
  platform.files.SetFile(u"C:\\x", "x");
  files.FailAt(2, kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { files.Length(u"C:\\x"); }), 0);
  EXPECT_EQ(RaisedBy([&] { files.Length(u"C:\\x"); }), kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { files.Length(u"C:\\x"); }), 0);
  EXPECT_EQ(files.calls(), 3);
  files.FailAt(0);
  EXPECT_EQ(files.calls(), 0);
}

TEST_F(FaultyFilesTest, KeepsStreamsWhenToldSo) {
  files.KeepStreams(true);
  EXPECT_FALSE(files.CreateTextStream(u"C:\\x"));
  EXPECT_FALSE(files.OpenTextStream(u"C:\\y", StreamMode::ForAppending));
  EXPECT_TRUE(Content(u"C:\\x") && Content(u"C:\\y"));
  platform.files.Delete(u"C:\\x");  // is not open
}

}  // namespace
}  // namespace qva
