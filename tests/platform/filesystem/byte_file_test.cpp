// Channels and text streams over the bytes of a file that fails.
#include <algorithm>

#include "platform/filesystem/encoded_text_stream.h"
#include "platform/filesystem/sequential_channel.h"
#include "tests/platform/core_test.h"

namespace qva {
namespace {

class ByteFiles : public CoreTest {
 protected:
  /// Bytes that stay when the file is closed, of which any operation may fail.
  struct Bytes {
    std::string content;
    ErrorNumber failure{};
    bool is_open = false;
  };
  class FailingFile : public ByteFile {
   public:
    explicit FailingFile(Bytes& bytes) : bytes_(bytes) { bytes_.is_open = true; }
    ~FailingFile() override { bytes_.is_open = false; }

    std::size_t Read(std::span<char> buffer) override {
      FailIfTold();
      const std::size_t count = std::min(buffer.size(), bytes_.content.size() - position_);
      std::copy_n(bytes_.content.data() + position_, count, buffer.data());
      position_ += count;
      return count;
    }
    void Append(std::string_view bytes) override {
      FailIfTold();
      bytes_.content += bytes;
    }

   private:
    void FailIfTold() const {
      if (bytes_.failure) throw AutomationError(bytes_.failure);
    }

    Bytes& bytes_;
    std::size_t position_ = 0;
  };

  std::unique_ptr<TextChannel> Open(ChannelMode mode) {
    return open.OpenChannel(1, u"C:\\x", mode, std::make_unique<FailingFile>(bytes), platform.locale);
  }
  std::unique_ptr<TextStream> Write() {
    return WriteTextStream(open.OpenStream(u"C:\\x", false, std::make_unique<FailingFile>(bytes)),
                           StreamEncoding::Utf16, platform.locale);
  }

  OpenFiles open;
  Bytes bytes;
};

TEST_F(ByteFiles, AChannelPassesAFailedReadOnAndCanTryAgain) {
  bytes.content = "1\r\n2";
  const auto channel = Open(ChannelMode::Input);
  bytes.failure = kDeviceError;
  EXPECT_EQ(RaisedBy([&] { channel->AtEnd(); }), kDeviceError);
  EXPECT_EQ(RaisedBy([&] { channel->ReadLine(); }), kDeviceError);
  bytes.failure = {};
  EXPECT_EQ(channel->ReadLine(), u"1");
  EXPECT_EQ(channel->ReadLine(), u"2");
  EXPECT_TRUE(channel->AtEnd());
}

TEST_F(ByteFiles, ALineThatCannotBeWrittenLeavesThoseBefore) {
  const auto channel = Open(ChannelMode::Output);
  channel->PrintLine(u"1");
  bytes.failure = kDiskFull;
  EXPECT_EQ(RaisedBy([&] { channel->PrintLine(u"2"); }), kDiskFull);
  bytes.failure = {};
  channel->PrintLine(u"3");
  EXPECT_EQ(bytes.content, "1\r\n3\r\n");
}

TEST_F(ByteFiles, AStreamWhoseMarkCannotBeWrittenIsClosedAndLeavesNothing) {
  bytes.failure = kDiskFull;
  EXPECT_EQ(RaisedBy([&] { Write(); }), kDiskFull);
  EXPECT_EQ(bytes.content, "");
  EXPECT_FALSE(bytes.is_open);
  EXPECT_EQ(RaisedBy([&] { open.RequireClosed(u"C:\\x"); }), 0) << "still in the list";
}

}  // namespace
}  // namespace qva
