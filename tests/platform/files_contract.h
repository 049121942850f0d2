// What Files promises, as tests that every adapter passes. A Drive is made for each test and brings the
// adapter:
// - Files& files(): the adapter.
// - std::u16string root(): an existing, empty folder, without "\".
// - void SetContent(const std::u16string& path, std::string bytes): writes a file past the adapter.
// - std::optional<std::string> Content(const std::u16string& path): reads one; nothing when there is none.
// - bool LoseCurrentFolder(): makes another folder the current one and takes it away; false where the system
//   keeps current folders. At the drive's end the former one is it again.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {

template <class Drive>
class FilesContract : public testing::Test {
 protected:
  std::u16string At(std::u16string_view name) { return drive.root() + u"\\" + std::u16string(name); }
  std::string Content(std::u16string_view name) { return drive.Content(At(name)).value_or("(no file)"); }
  void SetContent(std::u16string_view name, std::string bytes) {
    drive.SetContent(At(name), std::move(bytes));
  }
  std::unique_ptr<TextChannel> Open(std::u16string_view name, ChannelMode mode) {
    return files.OpenChannel(files.FreeNumber(), At(name), mode);
  }
  std::int32_t OpenError(std::u16string_view name, ChannelMode mode) {
    return RaisedBy([&] { Open(name, mode); });
  }
  /// Whatever can be read of a file, as lines.
  std::vector<std::u16string> Lines(std::u16string_view name) {
    std::vector<std::u16string> lines;
    const auto channel = Open(name, ChannelMode::Input);
    while (!channel->AtEnd()) lines.push_back(channel->ReadLine());
    return lines;
  }

  Drive drive;
  Files& files = drive.files();
};

TYPED_TEST_SUITE_P(FilesContract);

// Channels.

TYPED_TEST_P(FilesContract, AChannelWritesLinesInTheAnsiCodePageEndedByCrLf) {
  const auto channel = this->Open(u"x.txt", ChannelMode::Output);
  channel->PrintLine(u"Ąžuolas");
  EXPECT_EQ(this->Content(u"x.txt"), "\xC0\xFEuolas\r\n") << "is in the file while it is open";
  channel->PrintLine(u"");
  channel->PrintLine(u"a\tb");
  EXPECT_EQ(this->Content(u"x.txt"), "\xC0\xFEuolas\r\n\r\na\tb\r\n");
}

TYPED_TEST_P(FilesContract, AChannelWritesAQuestionMarkForACharacterThatTheCodePageLacks) {
  this->Open(u"x.txt", ChannelMode::Output)->PrintLine(u"a漢b");
  EXPECT_EQ(this->Content(u"x.txt"), "a?b\r\n");
}

TYPED_TEST_P(FilesContract, OpeningForOutputEmptiesTheFile) {
  this->SetContent(u"x.txt", "old");
  const auto channel = this->Open(u"x.txt", ChannelMode::Output);
  EXPECT_EQ(this->Content(u"x.txt"), "");
}

TYPED_TEST_P(FilesContract, OpeningForAppendingKeepsTheFile) {
  this->SetContent(u"x.txt", "old\r\n");
  this->Open(u"x.txt", ChannelMode::Append)->PrintLine(u"new");
  EXPECT_EQ(this->Content(u"x.txt"), "old\r\nnew\r\n");
}

TYPED_TEST_P(FilesContract, OpeningForAppendingCreatesTheFile) {
  this->Open(u"x.txt", ChannelMode::Append);
  EXPECT_EQ(this->Content(u"x.txt"), "");
}

TYPED_TEST_P(FilesContract, AChannelReadsLinesThatEndInCrLfOrCr) {
  this->SetContent(u"x.txt", "\xC0\xFEuolas\r\n\r\none\rtwo\r\nline\nfeed\r\nlast");
  EXPECT_THAT(this->Lines(u"x.txt"),
              testing::ElementsAre(u"Ąžuolas", u"", u"one", u"two", u"line\nfeed", u"last"));
}

TYPED_TEST_P(FilesContract, ALineEndAtTheEndOfTheFileStartsNoFurtherLine) {
  this->SetContent(u"x.txt", "one\r\n");
  EXPECT_THAT(this->Lines(u"x.txt"), testing::ElementsAre(u"one"));
  this->SetContent(u"y.txt", "");
  EXPECT_THAT(this->Lines(u"y.txt"), testing::IsEmpty());
}

TYPED_TEST_P(FilesContract, AChannelReadsLinesOfAnyLength) {
  // Lines that end around the place where one block that is read ends and the next begins.
  std::string content;
  std::vector<std::u16string> lines;
  for (const int length : {4094, 4095, 4096, 4097, 20000}) {
    content += std::string(length, 'a') + "\r\n";
    lines.emplace_back(length, u'a');
    this->SetContent(u"x.txt", std::string(length, 'b') + "\r\nnext");
    EXPECT_THAT(this->Lines(u"x.txt"), testing::ElementsAre(std::u16string(length, u'b'), u"next")) << length;
  }
  this->SetContent(u"y.txt", content);
  EXPECT_EQ(this->Lines(u"y.txt"), lines);
}

TYPED_TEST_P(FilesContract, ReadingPastTheEndIsError62) {
  this->SetContent(u"x.txt", "");
  const auto channel = this->Open(u"x.txt", ChannelMode::Input);
  EXPECT_EQ(RaisedBy([&] { channel->ReadLine(); }), kInputPastEnd);
}

TYPED_TEST_P(FilesContract, AChannelForInputCannotBePrintedTo) {
  this->SetContent(u"x.txt", "old");
  const auto channel = this->Open(u"x.txt", ChannelMode::Input);
  EXPECT_EQ(RaisedBy([&] { channel->PrintLine(u"new"); }), kBadFileMode);
  EXPECT_EQ(this->Content(u"x.txt"), "old");
}

TYPED_TEST_P(FilesContract, AChannelThatWritesIsAlwaysAtItsEndAndCannotBeRead) {
  this->SetContent(u"x.txt", "old\r\n");
  for (const ChannelMode mode : {ChannelMode::Append, ChannelMode::Output}) {
    const auto channel = this->Open(u"x.txt", mode);
    EXPECT_TRUE(channel->AtEnd());
    EXPECT_EQ(RaisedBy([&] { channel->ReadLine(); }), kBadFileMode);
  }
}

TYPED_TEST_P(FilesContract, FileNumbersAreTheLowestFreeOnes) {
  EXPECT_EQ(this->files.FreeNumber(), 1);
  auto first = this->Open(u"1.txt", ChannelMode::Output);
  const auto second = this->Open(u"2.txt", ChannelMode::Output);
  EXPECT_EQ(this->files.FreeNumber(), 3);
  first.reset();
  EXPECT_EQ(this->files.FreeNumber(), 1);
}

TYPED_TEST_P(FilesContract, FileNumbersRunOut) {
  this->SetContent(u"x.txt", "");
  std::vector<std::unique_ptr<TextChannel>> channels;
  for (int number = 1; number <= kLastFileNumber; ++number) {
    channels.push_back(this->Open(u"x.txt", ChannelMode::Input));
  }
  EXPECT_EQ(this->files.FreeNumber(), 0);
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Input), kBadFileNameOrNumber);
  channels.erase(channels.begin() + 9);
  EXPECT_EQ(this->files.FreeNumber(), 10);
}

TYPED_TEST_P(FilesContract, AFileNumberOutOfRangeIsError52) {
  for (const std::int16_t number : {-1, 0, kLastFileNumber + 1}) {
    EXPECT_EQ(RaisedBy([&] { this->files.OpenChannel(number, this->At(u"x.txt"), ChannelMode::Output); }),
              kBadFileNameOrNumber);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "(no file)");
}

TYPED_TEST_P(FilesContract, ATakenFileNumberIsError55) {
  const auto channel = this->files.OpenChannel(7, this->At(u"1.txt"), ChannelMode::Output);
  EXPECT_EQ(RaisedBy([&] { this->files.OpenChannel(7, this->At(u"2.txt"), ChannelMode::Output); }),
            kFileAlreadyOpen);
  EXPECT_EQ(this->Content(u"2.txt"), "(no file)");
}

TYPED_TEST_P(FilesContract, AFileThatIsWrittenCannotBeOpenedAgain) {
  this->SetContent(u"x.txt", "old");
  const auto channel = this->Open(u"x.txt", ChannelMode::Append);
  for (const ChannelMode mode : {ChannelMode::Input, ChannelMode::Output, ChannelMode::Append}) {
    EXPECT_EQ(this->OpenError(u"X.TXT", mode), kFileAlreadyOpen);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "old");
}

TYPED_TEST_P(FilesContract, AFileThatIsReadCanOnlyBeOpenedForReading) {
  this->SetContent(u"x.txt", "old");
  const auto channel = this->Open(u"x.txt", ChannelMode::Input);
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Output), kFileAlreadyOpen);
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Append), kFileAlreadyOpen);
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Input), 0);
  EXPECT_EQ(this->Content(u"x.txt"), "old");
}

TYPED_TEST_P(FilesContract, AMissingFileCannotBeRead) {
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Input), kFileNotFound);
  EXPECT_EQ(this->Content(u"x.txt"), "(no file)");
}

TYPED_TEST_P(FilesContract, AFileInAMissingFolderIsError76) {
  for (const ChannelMode mode : {ChannelMode::Input, ChannelMode::Output, ChannelMode::Append}) {
    EXPECT_EQ(this->OpenError(u"none\\x.txt", mode), kPathNotFound);
  }
  EXPECT_FALSE(this->files.FolderExists(this->At(u"none")));
}

TYPED_TEST_P(FilesContract, TheEmptyPathIsError76) {
  Files& files = this->files;
  this->SetContent(u"x.txt", "x");
  EXPECT_EQ(RaisedBy([&] { files.OpenChannel(1, u"", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Delete(u""); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Rename(u"", this->At(u"y")); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Rename(this->At(u"x.txt"), u""); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Copy(u"", this->At(u"y")); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Copy(this->At(u"x.txt"), u""); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.CreateFolder(u""); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.LastModified(u""); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.Length(u""); }), kPathNotFound);
  EXPECT_FALSE(files.FolderExists(u""));
  EXPECT_THAT(files.Find(u"", u"*"), testing::IsEmpty());
}

TYPED_TEST_P(FilesContract, ANameThatCannotBeIsError52) {
  EXPECT_EQ(this->OpenError(u"a?b", ChannelMode::Output), kBadFileNameOrNumber);
  EXPECT_EQ(this->OpenError(u"a|b", ChannelMode::Output), kBadFileNameOrNumber);
  EXPECT_EQ(RaisedBy([&] { this->files.CreateFolder(this->At(u"a\"b")); }), kBadFileNameOrNumber);
}

TYPED_TEST_P(FilesContract, AsterisksDeleteNothing) {
  this->SetContent(u"x.bak", "");
  EXPECT_NE(RaisedBy([&] { this->files.Delete(this->At(u"*.bak")); }), 0);
  EXPECT_EQ(this->Content(u"x.bak"), "");
}

TYPED_TEST_P(FilesContract, AFolderIsNoFile) {
  Files& files = this->files;
  files.CreateFolder(this->At(u"folder"));
  this->SetContent(u"x.txt", "x");
  for (const ChannelMode mode : {ChannelMode::Input, ChannelMode::Output, ChannelMode::Append}) {
    EXPECT_EQ(this->OpenError(u"folder", mode), kPathFileAccess);
    EXPECT_EQ(this->OpenError(u"folder\\", mode), kPathFileAccess);
    EXPECT_EQ(this->OpenError(u"none\\", mode), kPathNotFound);
  }
  EXPECT_EQ(RaisedBy([&] { files.Delete(this->At(u"folder")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Copy(this->At(u"x.txt"), this->At(u"folder")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Copy(this->At(u"x.txt"), this->At(u"folder\\")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Copy(this->At(u"folder"), this->At(u"y.txt")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Rename(this->At(u"folder"), this->At(u"y.txt")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Length(this->At(u"folder")); }), kPathFileAccess);
  EXPECT_TRUE(files.FolderExists(this->At(u"folder")));
}

// Streams.

TYPED_TEST_P(FilesContract, ACreatedStreamWritesUtf16WithItsMark) {
  this->SetContent(u"x.txt", "something old and longer");
  {
    const auto stream = this->files.CreateTextStream(this->At(u"x.txt"));
    ASSERT_TRUE(stream);
    stream->WriteLine(u"Ž漢");
    stream->WriteLine(u"");
  }
  EXPECT_EQ(this->Content(u"x.txt"), std::string("\xFF\xFE\x7D\x01\x22\x6F\r\0\n\0\r\0\n\0", 14));
}

TYPED_TEST_P(FilesContract, AnAppendingStreamWritesAnsiWhateverTheFileHolds) {
  this->SetContent(u"x.txt", std::string("\xFF\xFE\x7D\x01", 4));
  {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), StreamMode::ForAppending);
    ASSERT_TRUE(stream);
    stream->WriteLine(u"Žąsis");
  }
  EXPECT_EQ(this->Content(u"x.txt"), std::string("\xFF\xFE\x7D\x01", 4) + "\xDE\xE0sis\r\n");
}

TYPED_TEST_P(FilesContract, OpeningAStreamCreatesTheFile) {
  EXPECT_TRUE(this->files.OpenTextStream(this->At(u"1.txt"), StreamMode::ForReading));
  EXPECT_TRUE(this->files.OpenTextStream(this->At(u"2.txt"), StreamMode::ForAppending));
  EXPECT_EQ(this->Content(u"1.txt"), "");
  EXPECT_EQ(this->Content(u"2.txt"), "");
}

TYPED_TEST_P(FilesContract, AStreamForReadingCannotBeWritten) {
  this->SetContent(u"x.txt", "old");
  {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), StreamMode::ForReading);
    EXPECT_EQ(RaisedBy([&] { stream->WriteLine(u"new"); }), kBadFileMode);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "old");
}

TYPED_TEST_P(FilesContract, AStreamNeedsItsFolder) {
  EXPECT_EQ(RaisedBy([&] { this->files.CreateTextStream(this->At(u"none\\x.txt")); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.OpenTextStream(this->At(u"none\\x.txt"), StreamMode::ForAppending); }),
            kPathNotFound);
}

TYPED_TEST_P(FilesContract, AStreamTakesNoFileNumber) {
  const auto stream = this->files.CreateTextStream(this->At(u"x.txt"));
  EXPECT_EQ(this->files.FreeNumber(), 1);
}

TYPED_TEST_P(FilesContract, AFileThatAChannelWritesIsDeniedToStreams) {
  const auto channel = this->Open(u"x.txt", ChannelMode::Output);
  channel->PrintLine(u"line");
  EXPECT_EQ(RaisedBy([&] { this->files.CreateTextStream(this->At(u"x.txt")); }), kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { this->files.OpenTextStream(this->At(u"x.txt"), StreamMode::ForAppending); }),
            kPermissionDenied);
  EXPECT_EQ(this->Content(u"x.txt"), "line\r\n");
}

TYPED_TEST_P(FilesContract, AFileThatAStreamHasOpenIsDeniedToChannels) {
  this->SetContent(u"x.txt", "x");
  for (const StreamMode stream_mode : {StreamMode::ForReading, StreamMode::ForAppending}) {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), stream_mode);
    for (const ChannelMode mode : {ChannelMode::Output, ChannelMode::Append}) {
      EXPECT_EQ(this->OpenError(u"X.txt", mode), kPermissionDenied);
    }
    // What comes of two that only read is the platform's own.
    if (stream_mode == StreamMode::ForReading) continue;
    EXPECT_EQ(this->OpenError(u"X.txt", ChannelMode::Input), kPermissionDenied);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->OpenError(u"x.txt", ChannelMode::Output), 0);
}

TYPED_TEST_P(FilesContract, AFileThatAStreamHasOpenIsDeniedToOtherStreams) {
  this->SetContent(u"x.txt", "x");
  for (const StreamMode first : {StreamMode::ForReading, StreamMode::ForAppending}) {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), first);
    const auto open = [&](StreamMode mode) {
      return RaisedBy([&] { this->files.OpenTextStream(this->At(u"X.txt"), mode); });
    };
    EXPECT_EQ(RaisedBy([&] { this->files.CreateTextStream(this->At(u"X.txt")); }), kPermissionDenied);
    EXPECT_EQ(open(StreamMode::ForAppending), kPermissionDenied);
    if (first == StreamMode::ForReading) continue;
    EXPECT_EQ(open(StreamMode::ForReading), kPermissionDenied);
  }
  const auto created = this->files.CreateTextStream(this->At(u"y.txt"));
  EXPECT_EQ(RaisedBy([&] { this->files.CreateTextStream(this->At(u"Y.txt")); }), kPermissionDenied);
  EXPECT_EQ(this->Content(u"x.txt"), "x");
}

// Operations.

TYPED_TEST_P(FilesContract, DeletesAFile) {
  this->SetContent(u"x.txt", "x");
  this->files.Delete(this->At(u"x.txt"));
  EXPECT_EQ(this->Content(u"x.txt"), "(no file)");
  EXPECT_EQ(RaisedBy([&] { this->files.Delete(this->At(u"x.txt")); }), kFileNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.Delete(this->At(u"none\\x.txt")); }), kPathNotFound);
}

TYPED_TEST_P(FilesContract, RenamesAFile) {
  this->SetContent(u"x.txt", "x");
  this->files.Rename(this->At(u"x.txt"), this->At(u"y.txt"));
  EXPECT_EQ(this->Content(u"x.txt"), "(no file)");
  EXPECT_EQ(this->Content(u"y.txt"), "x");
}

TYPED_TEST_P(FilesContract, RenamesNothingToATakenName) {
  this->SetContent(u"x.txt", "x");
  this->SetContent(u"y.txt", "y");
  EXPECT_EQ(RaisedBy([&] { this->files.Rename(this->At(u"x.txt"), this->At(u"Y.txt")); }),
            kFileAlreadyExists);
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->Content(u"y.txt"), "y");
}

TYPED_TEST_P(FilesContract, RenamesNothingThatIsMissing) {
  EXPECT_EQ(RaisedBy([&] { this->files.Rename(this->At(u"x.txt"), this->At(u"y.txt")); }), kFileNotFound);
  this->SetContent(u"x.txt", "x");
  EXPECT_EQ(RaisedBy([&] { this->files.Rename(this->At(u"x.txt"), this->At(u"none\\y.txt")); }),
            kPathNotFound);
  EXPECT_EQ(this->Content(u"x.txt"), "x");
}

TYPED_TEST_P(FilesContract, NeitherDeletesNorRenamesAFileThatAChannelHasOpen) {
  this->SetContent(u"x.txt", "x");
  for (const ChannelMode mode : {ChannelMode::Input, ChannelMode::Append}) {
    const auto channel = this->Open(u"x.txt", mode);
    EXPECT_EQ(RaisedBy([&] { this->files.Delete(this->At(u"X.txt")); }), kFileAlreadyOpen);
    EXPECT_EQ(RaisedBy([&] { this->files.Rename(this->At(u"X.txt"), this->At(u"y.txt")); }),
              kFileAlreadyOpen);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->Content(u"y.txt"), "(no file)");
}

TYPED_TEST_P(FilesContract, NeitherDeletesNorRenamesAFileThatAStreamHasOpen) {
  this->SetContent(u"x.txt", "x");
  {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), StreamMode::ForAppending);
    EXPECT_EQ(RaisedBy([&] { this->files.Delete(this->At(u"x.txt")); }), kPermissionDenied);
    EXPECT_EQ(RaisedBy([&] { this->files.Rename(this->At(u"x.txt"), this->At(u"y.txt")); }),
              kPermissionDenied);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->Content(u"y.txt"), "(no file)");
}

TYPED_TEST_P(FilesContract, CopiesContentAndTime) {
  this->SetContent(u"x.txt", std::string("\0\xFF\r\n", 4));
  this->SetContent(u"y.txt", "something longer");
  this->files.Copy(this->At(u"x.txt"), this->At(u"y.txt"));
  this->files.Copy(this->At(u"x.txt"), this->At(u"z.txt"));
  for (const auto* name : {u"x.txt", u"y.txt", u"z.txt"}) {
    EXPECT_EQ(this->Content(name), std::string("\0\xFF\r\n", 4)) << ToUtf8(name);
    EXPECT_EQ(this->files.LastModified(this->At(name)), this->files.LastModified(this->At(u"x.txt")));
  }
  EXPECT_EQ(this->files.Find(this->drive.root(), u"*").size(), 3u) << "something is left behind";
}

TYPED_TEST_P(FilesContract, CopiesNothingThatIsMissing) {
  this->SetContent(u"y.txt", "y");
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"x.txt"), this->At(u"y.txt")); }), kFileNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"none\\x.txt"), this->At(u"y.txt")); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"y.txt"), this->At(u"none\\x.txt")); }), kPathNotFound);
  EXPECT_EQ(this->Content(u"y.txt"), "y");
  EXPECT_THAT(this->files.Find(this->drive.root(), u"*"), testing::ElementsAre(u"y.txt"));
}

TYPED_TEST_P(FilesContract, CopiesNoFileOntoItself) {
  this->SetContent(u"x.txt", "x");
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"x.txt"), this->At(u"X.txt")); }), kPermissionDenied);
  EXPECT_EQ(this->Content(u"x.txt"), "x");
}

TYPED_TEST_P(FilesContract, CopiesNoOpenFile) {
  this->SetContent(u"x.txt", "x");
  this->SetContent(u"y.txt", "y");
  const auto channel = this->Open(u"x.txt", ChannelMode::Append);
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"x.txt"), this->At(u"y.txt")); }), kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"y.txt"), this->At(u"x.txt")); }), kPermissionDenied);
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->Content(u"y.txt"), "y");
}

TYPED_TEST_P(FilesContract, CopiesNoFileThatAStreamHasOpen) {
  this->SetContent(u"x.txt", "x");
  this->SetContent(u"y.txt", "y");
  for (const StreamMode mode : {StreamMode::ForReading, StreamMode::ForAppending}) {
    const auto stream = this->files.OpenTextStream(this->At(u"x.txt"), mode);
    EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"x.txt"), this->At(u"y.txt")); }), kPermissionDenied);
    EXPECT_EQ(RaisedBy([&] { this->files.Copy(this->At(u"y.txt"), this->At(u"x.txt")); }), kPermissionDenied);
  }
  EXPECT_EQ(this->Content(u"x.txt"), "x");
  EXPECT_EQ(this->Content(u"y.txt"), "y");
}

TYPED_TEST_P(FilesContract, CreatesAFolder) {
  EXPECT_FALSE(this->files.FolderExists(this->At(u"Žemė")));
  this->files.CreateFolder(this->At(u"Žemė\\"));
  for (const auto* path : {u"Žemė", u"Žemė\\", u"žemė/", u"ŽEMĖ"}) {
    EXPECT_TRUE(this->files.FolderExists(this->At(path))) << ToUtf8(path);
  }
}

TYPED_TEST_P(FilesContract, CreatesOneFolderAtATime) {
  EXPECT_EQ(RaisedBy([&] { this->files.CreateFolder(this->At(u"one\\two")); }), kPathNotFound);
  EXPECT_FALSE(this->files.FolderExists(this->At(u"one")));
}

TYPED_TEST_P(FilesContract, CreatesNoFolderInPlaceOfAnything) {
  this->files.CreateFolder(this->At(u"folder"));
  this->SetContent(u"folder\\x", "x");
  EXPECT_EQ(RaisedBy([&] { this->files.CreateFolder(this->At(u"FOLDER\\")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { this->files.CreateFolder(this->At(u"folder\\x")); }), kPathFileAccess);
  EXPECT_EQ(this->Content(u"folder\\x"), "x");
}

TYPED_TEST_P(FilesContract, AFileIsNoFolder) {
  this->SetContent(u"x", "x");
  EXPECT_FALSE(this->files.FolderExists(this->At(u"x")));
  EXPECT_EQ(this->OpenError(u"x\\y", ChannelMode::Output), kPathNotFound);
}

TYPED_TEST_P(FilesContract, FindsTheFilesOfAFolderByName) {
  this->files.CreateFolder(this->At(u"folder.xls"));
  this->SetContent(u"Balansas_2010.xls", "");
  this->SetContent(u"Balansas_2010_03.xls", "");
  this->SetContent(u"balansas_2010.xlsx", "");
  this->SetContent(u"folder.xls\\inner.xls", "");
  const auto find = [&](std::u16string_view name) {
    auto names = this->files.Find(this->drive.root(), name);
    std::ranges::sort(names);
    return names;
  };
  using testing::ElementsAre;
  EXPECT_THAT(find(u"balansas_2010.XLS"), ElementsAre(u"Balansas_2010.xls"));
  EXPECT_THAT(find(u"Balansas*.xls"), ElementsAre(u"Balansas_2010.xls", u"Balansas_2010_03.xls"));
  EXPECT_THAT(find(u"*_??.xls"), ElementsAre(u"Balansas_2010_03.xls"));
  EXPECT_THAT(find(u"*.*").size(), 3u);
  EXPECT_THAT(find(u"none"), ElementsAre());
  EXPECT_THAT(this->files.Find(this->At(u"folder.xls\\"), u"*"), ElementsAre(u"inner.xls"));
  EXPECT_THAT(this->files.Find(this->At(u"none"), u"*"), ElementsAre());
  EXPECT_THAT(this->files.Find(this->At(u"Balansas_2010.xls"), u"*"), ElementsAre());
}

TYPED_TEST_P(FilesContract, TellsLengthAndTime) {
  this->SetContent(u"x.txt", "12345");
  this->files.CreateFolder(this->At(u"folder"));
  EXPECT_EQ(this->files.Length(this->At(u"x.txt")), 5);
  const double now = this->files.LastModified(this->At(u"x.txt")).serial;
  EXPECT_GT(now, 45000);
  EXPECT_NEAR(this->files.LastModified(this->At(u"folder")).serial, now, 60.0 / 86400);
  const double seconds = (now - static_cast<double>(static_cast<long>(now))) * 86400;
  EXPECT_NEAR(seconds, static_cast<double>(static_cast<long>(seconds + 0.5)), 1e-4) << "whole seconds";
  EXPECT_EQ(RaisedBy([&] { this->files.Length(this->At(u"y.txt")); }), kFileNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.Length(this->At(u"none\\y.txt")); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.LastModified(this->At(u"y.txt")); }), kFileNotFound);
  EXPECT_EQ(RaisedBy([&] { this->files.LastModified(this->At(u"none\\y.txt")); }), kPathNotFound);
}

TYPED_TEST_P(FilesContract, NamesIgnoreLetterCase) {
  this->files.CreateFolder(this->At(u"Žiniaraščiai"));
  this->Open(u"žINIARAŠČIAI\\Ataskaita ąčęėįšųūž.txt", ChannelMode::Output)->PrintLine(u"1");
  this->Open(u"Žiniaraščiai\\ATASKAITA ĄČĘĖĮŠŲŪŽ.TXT", ChannelMode::Append)->PrintLine(u"2");
  EXPECT_EQ(this->Content(u"Žiniaraščiai\\Ataskaita ąčęėįšųūž.txt"), "1\r\n2\r\n");
  EXPECT_THAT(this->files.Find(this->At(u"žiniaraščiai"), u"*"),
              testing::ElementsAre(u"Ataskaita ąčęėįšųūž.txt"));
}

TYPED_TEST_P(FilesContract, SlashesAndDotsAreUnderstood) {
  this->files.CreateFolder(this->At(u"folder"));
  this->SetContent(u"folder\\x.txt", "x");
  EXPECT_EQ(this->files.Length(this->At(u"folder/x.txt")), 1);
  EXPECT_EQ(this->files.Length(this->At(u"folder\\..\\folder\\.\\x.txt")), 1);
}

TYPED_TEST_P(FilesContract, RelativePathsStartFromTheCurrentFolder) {
  const std::u16string current = this->files.CurrentFolder();
  EXPECT_TRUE(this->files.FolderExists(current));
  EXPECT_TRUE(this->files.FolderExists(u"."));
  EXPECT_EQ(RaisedBy([&] { this->files.Length(u"qva-no-such-file.txt"); }), kFileNotFound);
}

TYPED_TEST_P(FilesContract, ACurrentFolderThatIsGoneIsError76) {
  const bool is_gone = this->drive.LoseCurrentFolder();
  const std::int32_t error = is_gone ? kPathNotFound : 0;
  EXPECT_EQ(RaisedBy([&] { this->files.CurrentFolder(); }), error);
  EXPECT_EQ(RaisedBy([&] { this->files.OpenChannel(1, u"x.txt", ChannelMode::Output); }), error);
  EXPECT_EQ(this->files.FolderExists(u"."), !is_gone);
  EXPECT_EQ(this->files.Find(u".", u"*").empty(), is_gone);
  EXPECT_EQ(this->OpenError(u"y.txt", ChannelMode::Output), 0) << "a whole path";
}

REGISTER_TYPED_TEST_SUITE_P(
    FilesContract, AChannelWritesLinesInTheAnsiCodePageEndedByCrLf,
    AChannelWritesAQuestionMarkForACharacterThatTheCodePageLacks, OpeningForOutputEmptiesTheFile,
    OpeningForAppendingKeepsTheFile, OpeningForAppendingCreatesTheFile, AChannelReadsLinesThatEndInCrLfOrCr,
    ALineEndAtTheEndOfTheFileStartsNoFurtherLine, AChannelReadsLinesOfAnyLength, ReadingPastTheEndIsError62,
    AChannelForInputCannotBePrintedTo, AChannelThatWritesIsAlwaysAtItsEndAndCannotBeRead,
    FileNumbersAreTheLowestFreeOnes, FileNumbersRunOut, AFileNumberOutOfRangeIsError52,
    ATakenFileNumberIsError55, AFileThatIsWrittenCannotBeOpenedAgain,
    AFileThatIsReadCanOnlyBeOpenedForReading, AMissingFileCannotBeRead, AFileInAMissingFolderIsError76,
    TheEmptyPathIsError76, ANameThatCannotBeIsError52, AsterisksDeleteNothing, AFolderIsNoFile,
    ACreatedStreamWritesUtf16WithItsMark, AnAppendingStreamWritesAnsiWhateverTheFileHolds,
    OpeningAStreamCreatesTheFile, AStreamForReadingCannotBeWritten, AStreamNeedsItsFolder,
    AStreamTakesNoFileNumber, AFileThatAChannelWritesIsDeniedToStreams,
    AFileThatAStreamHasOpenIsDeniedToChannels, AFileThatAStreamHasOpenIsDeniedToOtherStreams, DeletesAFile,
    RenamesAFile, RenamesNothingToATakenName, RenamesNothingThatIsMissing,
    NeitherDeletesNorRenamesAFileThatAChannelHasOpen, NeitherDeletesNorRenamesAFileThatAStreamHasOpen,
    CopiesContentAndTime, CopiesNothingThatIsMissing, CopiesNoFileOntoItself, CopiesNoOpenFile,
    CopiesNoFileThatAStreamHasOpen, CreatesAFolder, CreatesOneFolderAtATime, CreatesNoFolderInPlaceOfAnything,
    AFileIsNoFolder, FindsTheFilesOfAFolderByName, TellsLengthAndTime, NamesIgnoreLetterCase,
    SlashesAndDotsAreUnderstood, RelativePathsStartFromTheCurrentFolder, ACurrentFolderThatIsGoneIsError76);

}  // namespace qva
