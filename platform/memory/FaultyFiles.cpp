#include "platform/memory/FaultyFiles.h"

namespace qva {

class FaultyFiles::FaultyChannel : public TextChannel {
 public:
  FaultyChannel(const FaultyFiles& files, std::unique_ptr<TextChannel> channel)
      : files_(files), channel_(std::move(channel)) {}

  void PrintLine(std::u16string_view text) override {
    files_.Start(Operation::Write);
    channel_->PrintLine(text);
  }
  bool AtEnd() override {
    files_.Start(Operation::Read);
    return channel_->AtEnd();
  }
  std::u16string ReadLine() override {
    files_.Start(Operation::Read);
    return channel_->ReadLine();
  }

 private:
  const FaultyFiles& files_;
  std::unique_ptr<TextChannel> channel_;
};

class FaultyFiles::FaultyStream : public TextStream {
 public:
  FaultyStream(const FaultyFiles& files, std::unique_ptr<TextStream> stream)
      : files_(files), stream_(std::move(stream)) {}

  void WriteLine(std::u16string_view text) override {
    files_.Start(Operation::Write);
    stream_->WriteLine(text);
  }

 private:
  const FaultyFiles& files_;
  std::unique_ptr<TextStream> stream_;
};

void FaultyFiles::FailAt(long call, ErrorNumber error) {
  calls_ = 0;
  failing_call_ = call;
  failure_ = error;
}

void FaultyFiles::Start(Operation operation) const {
  if (++calls_ == failing_call_) throw AutomationError(failure_);
  if (const auto refusal = refusals_.find(operation); refusal != refusals_.end()) {
    throw AutomationError(refusal->second);
  }
}

std::unique_ptr<TextStream> FaultyFiles::Give(std::unique_ptr<TextStream> stream) const {
  if (!stream || keeps_streams_) return nullptr;
  return std::make_unique<FaultyStream>(*this, std::move(stream));
}

std::int16_t FaultyFiles::FreeNumber() const {
  return IsRefused(Operation::FreeNumber) ? std::int16_t{0} : ForwardingFiles::FreeNumber();
}

std::unique_ptr<TextChannel> FaultyFiles::OpenChannel(std::int16_t number, std::u16string_view path,
                                                      ChannelMode mode) {
  Start(Operation::OpenChannel);
  return std::make_unique<FaultyChannel>(*this, ForwardingFiles::OpenChannel(number, path, mode));
}

std::unique_ptr<TextStream> FaultyFiles::CreateTextStream(std::u16string_view path) {
  Start(Operation::CreateTextStream);
  return Give(ForwardingFiles::CreateTextStream(path));
}

std::unique_ptr<TextStream> FaultyFiles::OpenTextStream(std::u16string_view path, StreamMode mode) {
  Start(Operation::OpenTextStream);
  return Give(ForwardingFiles::OpenTextStream(path, mode));
}

std::u16string FaultyFiles::CurrentFolder() const {
  Start(Operation::CurrentFolder);
  return ForwardingFiles::CurrentFolder();
}

void FaultyFiles::Delete(std::u16string_view path) {
  Start(Operation::Delete);
  ForwardingFiles::Delete(path);
}

void FaultyFiles::Rename(std::u16string_view from, std::u16string_view to) {
  Start(Operation::Rename);
  ForwardingFiles::Rename(from, to);
}

void FaultyFiles::Copy(std::u16string_view from, std::u16string_view to) {
  Start(Operation::Copy);
  ForwardingFiles::Copy(from, to);
}

void FaultyFiles::CreateFolder(std::u16string_view path) {
  Start(Operation::CreateFolder);
  ForwardingFiles::CreateFolder(path);
}

bool FaultyFiles::FolderExists(std::u16string_view path) const {
  return !IsRefused(Operation::FolderExists) && ForwardingFiles::FolderExists(path);
}

std::vector<std::u16string> FaultyFiles::Find(std::u16string_view folder, std::u16string_view name) const {
  if (IsRefused(Operation::Find)) return {};
  return ForwardingFiles::Find(folder, name);
}

Date FaultyFiles::LastModified(std::u16string_view path) const {
  Start(Operation::LastModified);
  return ForwardingFiles::LastModified(path);
}

double FaultyFiles::Length(std::u16string_view path) const {
  Start(Operation::Length);
  return ForwardingFiles::Length(path);
}

}  // namespace qva
