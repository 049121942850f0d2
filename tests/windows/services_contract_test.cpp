// Windows' locale, clock and environment keep what all of them promise.
#include "platform/windows/OwnFile.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsLocale.h"
#include "tests/platform/clock_contract.h"
#include "tests/platform/environment_contract.h"
#include "tests/platform/locale_contract.h"
#include "tests/temporary_environment.h"

namespace qva {
namespace {

class WindowsUser {
 public:
  WindowsUser() = default;
  WindowsUser(const WindowsUser&) = delete;
  WindowsUser& operator=(const WindowsUser&) = delete;
  ~WindowsUser() { SetShortDate(short_date_); }

  Locale& locale() { return locale_; }
  static void SetShortDate(std::u16string_view pattern) {
    EXPECT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, windows::WideText(pattern).c_str()));
  }

 private:
  windows::WindowsLocale locale_;
  const std::u16string short_date_ = locale_.ShortDatePattern();
};

class WindowsTime {
 public:
  Clock& clock() { return clock_; }
  static void Pass(std::chrono::milliseconds time) { Sleep(static_cast<DWORD>(time.count())); }

 private:
  windows::WindowsClock clock_;
};

class WindowsProcess {
 public:
  Environment& environment() { return environment_; }
  void Set(std::u16string_view name, std::u16string_view value) { variables_.Set(name, value); }
  /// This program has the library within.
  static bool IsOwn(const std::u16string& folder) {
    wchar_t path[1024];
    GetModuleFileNameW(nullptr, path, std::size(path));
    return windows::TextOf(path).starts_with(folder + u"\\qva_windows_tests");
  }

 private:
  TemporaryEnvironment variables_;
  windows::WindowsEnvironment environment_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(WindowsLocale, LocaleContract, WindowsUser);
INSTANTIATE_TYPED_TEST_SUITE_P(WindowsClock, ClockContract, WindowsTime);
INSTANTIATE_TYPED_TEST_SUITE_P(WindowsEnvironment, EnvironmentContract, WindowsProcess);

}  // namespace qva
