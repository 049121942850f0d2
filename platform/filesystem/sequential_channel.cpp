#include "platform/filesystem/sequential_channel.h"

#include <algorithm>

#include "platform/error.h"
#include "platform/text.h"

namespace qva {
namespace {

class Channel : public TextChannel {
 public:
  Channel(ChannelMode mode, std::unique_ptr<ByteFile> bytes, const Locale& locale)
      : mode_(mode), bytes_(std::move(bytes)), locale_(locale) {}

  void PrintLine(std::u16string_view text) override {
    if (mode_ == ChannelMode::Input) throw AutomationError(kBadFileMode);
    bytes_->Append(locale_.ToAnsi(text) + "\r\n");
  }

  bool AtEnd() override { return mode_ != ChannelMode::Input || !HasByte(); }

  std::u16string ReadLine() override {
    if (mode_ != ChannelMode::Input) throw AutomationError(kBadFileMode);
    if (!HasByte()) throw AutomationError(kInputPastEnd);
    std::string line;
    while (HasByte()) {
      const char c = block_[position_++];
      if (c == '\r') {
        if (HasByte() && block_[position_] == '\n') ++position_;
        break;
      }
      line += c;
    }
    return locale_.FromAnsi(line);
  }

 private:
  /// Whether there is a byte at position_, reading on where needed.
  bool HasByte() {
    if (position_ < block_.size()) return true;
    constexpr std::size_t kBlock = 4096;
    std::string block(kBlock, '\0');
    block.resize(bytes_->Read(block));
    block_ = std::move(block);
    position_ = 0;
    return !block_.empty();
  }

  ChannelMode mode_;
  std::unique_ptr<ByteFile> bytes_;
  const Locale& locale_;
  std::string block_;  // what was read last
  std::size_t position_ = 0;
};

}  // namespace

/// An open file that is marked so for as long as it lives.
class OpenFiles::MarkedFile : public ByteFile {
 public:
  MarkedFile(std::shared_ptr<const void> mark, std::unique_ptr<ByteFile> bytes)
      : mark_(std::move(mark)), bytes_(std::move(bytes)) {}

  std::size_t Read(std::span<char> buffer) override { return bytes_->Read(buffer); }
  void Append(std::string_view bytes) override { bytes_->Append(bytes); }

 private:
  std::shared_ptr<const void> mark_;
  std::unique_ptr<ByteFile> bytes_;
};

std::int16_t OpenFiles::FreeNumber() const {
  for (std::int16_t number = 1; number <= kLastFileNumber; ++number) {
    if (std::ranges::find(*open_, number, &Entry::number) == open_->end()) return number;
  }
  return 0;
}

void OpenFiles::RequireChannel(std::int16_t number, std::u16string_view file, ChannelMode mode) const {
  if (number < 1 || number > kLastFileNumber) throw AutomationError(kBadFileNameOrNumber);
  for (const Entry& entry : *open_) {
    const bool both_read = mode == ChannelMode::Input && entry.is_for_reading;
    if (entry.number == number || (!both_read && EqualIgnoringCase(entry.file, file))) {
      throw AutomationError(entry.number == 0 ? kPermissionDenied : kFileAlreadyOpen);
    }
  }
}

void OpenFiles::RequireStream(std::u16string_view file, bool is_for_reading) const {
  for (const Entry& entry : *open_) {
    const bool both_read = is_for_reading && entry.is_for_reading;
    if (!both_read && EqualIgnoringCase(entry.file, file)) throw AutomationError(kPermissionDenied);
  }
}

void OpenFiles::RequireClosed(std::u16string_view file) const {
  for (const Entry& entry : *open_) {
    if (EqualIgnoringCase(entry.file, file)) {
      throw AutomationError(entry.number == 0 ? kPermissionDenied : kFileAlreadyOpen);
    }
  }
}

void OpenFiles::RequireCopyable(std::u16string_view file) const {
  const bool is_open =
      std::ranges::any_of(*open_, [&](const Entry& entry) { return EqualIgnoringCase(entry.file, file); });
  if (is_open) throw AutomationError(kPermissionDenied);
}

std::unique_ptr<TextChannel> OpenFiles::OpenChannel(std::int16_t number, std::u16string_view file,
                                                    ChannelMode mode, std::unique_ptr<ByteFile> bytes,
                                                    const Locale& locale) {
  const bool is_for_reading = mode == ChannelMode::Input;
  auto mark = Mark({number, std::u16string(file), is_for_reading});
  return std::make_unique<Channel>(mode, std::make_unique<MarkedFile>(std::move(mark), std::move(bytes)),
                                   locale);
}

std::unique_ptr<ByteFile> OpenFiles::OpenStream(std::u16string_view file, bool is_for_reading,
                                                std::unique_ptr<ByteFile> bytes) {
  return std::make_unique<MarkedFile>(MarkStream(file, is_for_reading), std::move(bytes));
}

std::shared_ptr<const void> OpenFiles::MarkStream(std::u16string_view file, bool is_for_reading) {
  return Mark({0, std::u16string(file), is_for_reading});
}

std::shared_ptr<const void> OpenFiles::Mark(Entry entry) {
  const auto place = open_->insert(open_->end(), std::move(entry));
  return {&*place, [open = open_, place](const Entry*) { open->erase(place); }};
}

}  // namespace qva
