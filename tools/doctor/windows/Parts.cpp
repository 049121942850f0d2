#include "tools/doctor/windows/Parts.h"

#include <array>
#include <iterator>

#include "platform/windows/OwnFile.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "tools/doctor/CommandLine.h"
#include "tools/doctor/windows/ProgramFiles.h"

namespace qva::doctor {
namespace {

using windows::WideText;

constexpr DWORD kLimitMilliseconds = 60'000;

std::string ReadWhole(const std::wstring& path) {
  const windows::Handle file = windows::OwnFileHandle(
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file) return {};
  std::string bytes;
  std::array<char, 4096> block;
  DWORD read = 0;
  while (ReadFile(file.get(), block.data(), static_cast<DWORD>(block.size()), &read, nullptr) && read != 0) {
    bytes.append(block.data(), read);
  }
  return bytes;
}

std::wstring TemporaryFile() {
  wchar_t folder[MAX_PATH + 1];
  wchar_t file[MAX_PATH + 1];
  const DWORD length = GetTempPathW(std::size(folder), folder);
  if (length == 0 || length > MAX_PATH || GetTempFileNameW(folder, L"qva", 0, file) == 0) return {};
  return file;
}

std::wstring Quoted(std::u16string_view argument) {
  return L" \"" + WideText(argument) + L"\"";
}

}  // namespace

Part::Part(Bitness bitness, std::initializer_list<std::u16string_view> command) {
  const auto program = bitness == kOwnBitness ? windows::OwnFile() : FindInPackage(kProgramFile, bitness);
  if (!program) {
    start_code_ = ERROR_FILE_NOT_FOUND;
    return;
  }
  answer_file_ = TemporaryFile();
  std::wstring line = L"\"" + WideText(*program) + L"\"";
  for (const std::u16string_view argument : command) line += Quoted(argument);
  line += L" " + WideText(kAnswer) + L" \"" + answer_file_ + L"\"";
  STARTUPINFOW startup{.cb = sizeof startup};
  PROCESS_INFORMATION process;
  if (!CreateProcessW(WideText(*program).c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                      nullptr, nullptr, &startup, &process)) {
    start_code_ = GetLastError();
    return;
  }
  const windows::Handle thread(process.hThread);
  process_.reset(process.hProcess);
}

Part::~Part() {
  if (!answer_file_.empty()) DeleteFileW(answer_file_.c_str());
}

PartResult Part::Wait() {
  PartResult result{.start_code = start_code_};
  if (!process_) return result;
  if (WaitForSingleObject(process_.get(), kLimitMilliseconds) != WAIT_OBJECT_0) {
    TerminateProcess(process_.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process_.get(), kLimitMilliseconds);
  }
  result.answer = ReadWhole(answer_file_);
  return result;
}

std::uint32_t WriteAnswer(const std::u16string& path, std::string_view bytes) {
  const windows::Handle file = windows::OwnFileHandle(CreateFileW(
      WideText(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr));
  if (!file) return GetLastError();
  DWORD written = 0;
  const BOOL done = WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  return done ? ERROR_SUCCESS : GetLastError();
}

}  // namespace qva::doctor
