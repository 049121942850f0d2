#include "storage/CFile.h"

#include "global/StartUp.h"
#include "platform/date.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kBackupEnding = u".bak";
constexpr std::u16string_view kBackupFolder = u"BACKUP";

Files& TheFiles() {
  return *GetServices().files;
}

bool EndsInSeparator(std::u16string_view path) {
  return path.ends_with(u'\\') || path.ends_with(u'/');
}

/// The current date and time by the user's short date and long time.
std::u16string NowText() {
  const Services& services = GetServices();
  const Date now = services.clock->Now();
  return ShortDateText(now, *services.locale) + u" " + LongTimeText(now, *services.locale);
}

}  // namespace

std::u16string CFile::Path() const {
  return path_.empty() ? TheFiles().CurrentFolder() : path_;
}

std::u16string CFile::PathByPathKey(std::u16string_view key) {
  if (key.empty()) return {};
  const host::Lookup lookup = TheDataAccess().Lookup(host::kPathKeyLookup, host::Book());
  return lookup.Run({key}) ? lookup.Result() : std::u16string();
}

std::u16string CFile::CrFullName() {
  path_ = Path();
  if (!EndsInSeparator(path_)) path_ += u'\\';
  return path_ + file_name_;
}

std::u16string CFile::CrFullName2(std::u16string_view key, std::u16string name) {
  path_ = PathByPathKey(key);
  file_name_ = std::move(name);
  return CrFullName();
}

std::u16string CFile::GetShortFileName() const {
  std::size_t separator = file_name_.rfind(u'\\');
  if (separator == file_name_.npos) separator = file_name_.rfind(u'/');
  return separator == file_name_.npos ? file_name_ : file_name_.substr(separator + 1);
}

bool CFile::CrFile() {
  if (is_unicode_) {
    stream_.reset();
    stream_ = TheFiles().CreateTextStream(CrFullName());
    return !stream_;  // inverted on purpose
  }
  CloseFile();
  // The number is taken before the file is opened, and stays when that fails: the next line must not empty a
  // file that could not be opened a moment ago.
  file_number_ = TheFiles().FreeNumber();
  if (file_number_ == 0) return false;
  channel_ = TheFiles().OpenChannel(file_number_, CrFullName(), ChannelMode::Output);
  return true;
}

bool CFile::OpenFile(std::u16string& name) {
  return is_unicode_ ? OpenStream(StreamMode::ForReading) : OpenChannel(name, ChannelMode::Input);
}

bool CFile::OpenFileForAppend(std::u16string& name) {
  return is_unicode_ ? OpenStream(StreamMode::ForAppending) : OpenChannel(name, ChannelMode::Append);
}

bool CFile::OpenStream(StreamMode mode) {
  stream_.reset();
  stream_ = TheFiles().OpenTextStream(CrFullName(), mode);
  return !stream_;  // inverted on purpose
}

bool CFile::OpenChannel(std::u16string& name, ChannelMode mode) {
  CloseFile();
  file_number_ = TheFiles().FreeNumber();
  if (name.empty()) name = CrFullName();
  channel_ = TheFiles().OpenChannel(file_number_, name, mode);
  return true;
}

bool CFile::StartLog() {
  return WriteMarker(u"New");
}

bool CFile::EndLog() {
  return WriteMarker(u"End");
}

bool CFile::WriteMarker(std::u16string_view what) {
  // "sesion" is how the logs have it.
  return WriteStr(u"--- " + std::u16string(what) + u" sesion ----- [" + NowText() +
                  u"] -------------------------------");
}

bool CFile::WriteStrLog(std::u16string_view text) {
  return WriteStr(NowText() + u"  :  " + std::u16string(text));
}

bool CFile::SaveFileAsBackup() {
  if (file_name_.empty()) return false;
  const std::u16string full = path_ + file_name_;
  CloseFile();
  const std::u16string backup = full + std::u16string(kBackupEnding);
  IgnoreErrors([&] { TheFiles().Delete(backup); });
  TheFiles().Rename(full, backup);
  file_name_ += kBackupEnding;
  return true;
}

bool CFile::WriteStr(std::u16string_view text) {
  if (is_unicode_) {
    if (!stream_) CrFile();
    if (!stream_) throw AutomationError(kObjectNotSet);
    stream_->WriteLine(text);
    return true;
  }
  if (!FileIsOpen()) CrFile();
  if (!FileIsOpen()) return false;
  Channel().PrintLine(text);
  return true;
}

bool CFile::ReadStr(std::u16string& line) {
  if (is_unicode_) {
    // The condition is turned round on purpose: reading is tried where it must fail.
    if (!stream_) throw AutomationError(kObjectNotSet);
    return false;
  }
  if (!FileIsOpen() || Channel().AtEnd()) return false;
  line = Channel().ReadLine();
  return true;
}

TextChannel& CFile::Channel() const {
  if (!channel_) throw AutomationError(kBadFileNameOrNumber);
  return *channel_;
}

Date CFile::FileDateTimeAttr(std::u16string_view path) {
  Date time;
  IgnoreErrors([&] { time = TheFiles().LastModified(path); });
  return time;
}

double CFile::FileLenAttr(std::u16string_view path) {
  double length = 0;
  IgnoreErrors([&] { length = TheFiles().Length(path); });
  return length;
}

void CFile::CopyFile(std::u16string_view source, Date source_time, std::int32_t source_length,
                     std::u16string_view target) {
  IgnoreErrors([&] {
    const Date time = TheFiles().LastModified(target);
    const double length = TheFiles().Length(target);
    if (time != source_time || length != source_length) TheFiles().Copy(source, target);
  });
}

bool CFile::MoveFileToBackup(std::u16string_view file, std::u16string folder) {
  if (file.empty()) return false;
  const std::size_t separator = file.rfind(u'\\');
  // Of a path without "\" neither part is known; copying it to a folder then fails.
  const bool has_folder = separator != file.npos;
  const std::u16string_view beside = has_folder ? file.substr(0, separator + 1) : u"";
  const std::u16string_view name = has_folder ? file.substr(separator + 1) : u"";
  if (folder.empty()) folder.append(beside).append(kBackupFolder);
  if (!EndsInSeparator(folder)) folder += u'\\';
  IgnoreErrors([&] { TheFiles().CreateFolder(folder); });
  if (!TheFiles().FolderExists(folder)) return false;
  TheFiles().Copy(file, folder + std::u16string(name));
  TheFiles().Delete(file);
  return true;
}

std::u16string CFile::GetValidFileName(std::u16string_view replacement) const {
  std::u16string name = file_name_;
  for (const char16_t forbidden : std::u16string_view(u"\\/:*?\"<>|")) {
    name = ReplaceAll(name, std::u16string_view(&forbidden, 1), replacement);
  }
  return name;
}

}  // namespace qva
