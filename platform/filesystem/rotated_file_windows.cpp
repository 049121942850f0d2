#include <windows.h>

#include <memory>

#include "platform/filesystem/rotated_file.h"

namespace qva {
namespace {

constexpr DWORD kPatience = 200;  // milliseconds

struct CloseIt {
  void operator()(void* handle) const { CloseHandle(handle); }
};
using Owner = std::unique_ptr<void, CloseIt>;

/// Turns of all processes of the user's session.
class Turn {
 public:
  Turn() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\QVA_Varnholt.RotatedFile")) {
    if (!mutex_) return;
    const DWORD result = WaitForSingleObject(mutex_.get(), kPatience);
    is_ours_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() {
    if (is_ours_) ReleaseMutex(mutex_.get());
  }
  bool is_ours() const { return is_ours_; }

 private:
  Owner mutex_;
  bool is_ours_ = false;
};

/// Null when it cannot be opened.
Owner OpenToAppend(const NativePath& path) {
  HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  return Owner(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

}  // namespace

bool AppendRotated(const NativePath& path, const std::string& text, std::uint64_t limit) {
  const Turn turn;
  Owner file = OpenToAppend(path);
  LARGE_INTEGER size = {};
  if (file && turn.is_ours() && GetFileSizeEx(file.get(), &size) && size.QuadPart > 0 &&
      static_cast<std::uint64_t>(size.QuadPart) + text.size() > limit) {
    file.reset();
    MoveFileExW(path.c_str(), (path + L".1").c_str(), MOVEFILE_REPLACE_EXISTING);
    file = OpenToAppend(path);
  }
  if (!file) return false;
  DWORD written = 0;
  const BOOL done = WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  return done && written == text.size();
}

std::uint32_t ProcessId() {
  return GetCurrentProcessId();
}

}  // namespace qva
