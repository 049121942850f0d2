// Files that fail on demand, over any others.
#pragma once

#include <map>

#include "platform/error.h"
#include "platform/forwarding.h"

namespace qva {

/// Lets every call through until it is told to fail. A call that fails does not reach the target: it changes
/// nothing. Channels and streams must not outlive the object.
class FaultyFiles : public ForwardingFiles {
 public:
  using ForwardingFiles::ForwardingFiles;

  /// What can fail: the operations of the same names; Write and Read are those of an open channel or stream.
  enum class Operation {
    OpenChannel,
    CreateTextStream,
    OpenTextStream,
    CurrentFolder,
    Write,
    Read,
    Delete,
    Rename,
    Copy,
    CreateFolder,
    LastModified,
    Length,
    // These do not raise but answer that there is nothing, and are not counted.
    FreeNumber,
    FolderExists,
    Find
  };
  /// From now on the operation fails; Allow lets it work again.
  void Refuse(Operation operation, ErrorNumber error = kDeviceError) { refusals_[operation] = error; }
  void Allow(Operation operation) { refusals_.erase(operation); }
  /// Lets the call number `call` from now on raise the error, the first being 1; 0 lets all calls through.
  void FailAt(long call, ErrorNumber error = kDeviceError);
  /// Calls of operations that can raise since the start or the last FailAt.
  long calls() const { return calls_; }
  /// Whether CreateTextStream and OpenTextStream do what they do without giving a stream.
  void KeepStreams(bool keep) { keeps_streams_ = keep; }

  std::int16_t FreeNumber() const override;
  std::unique_ptr<TextChannel> OpenChannel(std::int16_t number, std::u16string_view path,
                                           ChannelMode mode) override;
  std::unique_ptr<TextStream> CreateTextStream(std::u16string_view path) override;
  std::unique_ptr<TextStream> OpenTextStream(std::u16string_view path, StreamMode mode) override;
  std::u16string CurrentFolder() const override;
  void Delete(std::u16string_view path) override;
  void Rename(std::u16string_view from, std::u16string_view to) override;
  void Copy(std::u16string_view from, std::u16string_view to) override;
  void CreateFolder(std::u16string_view path) override;
  bool FolderExists(std::u16string_view path) const override;
  std::vector<std::u16string> Find(std::u16string_view folder, std::u16string_view name) const override;
  Date LastModified(std::u16string_view path) const override;
  double Length(std::u16string_view path) const override;

 private:
  class FaultyChannel;
  class FaultyStream;

  /// Counts a call, and raises what it was told to.
  void Start(Operation operation) const;
  bool IsRefused(Operation operation) const { return refusals_.contains(operation); }
  std::unique_ptr<TextStream> Give(std::unique_ptr<TextStream> stream) const;

  std::map<Operation, ErrorNumber> refusals_;
  mutable long calls_ = 0;
  long failing_call_ = 0;
  ErrorNumber failure_ = kDeviceError;
  bool keeps_streams_ = false;
};

}  // namespace qva
