#include <gtest/gtest.h>

#include <filesystem>

#include "platform/date.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "platform/windows/AnsiText.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/services/WindowsPlatform.h"

namespace qva::windows {
namespace {

TEST(WindowsLocale, TellsTheUsersSettingsAsTheyAreNow) {
  const WindowsLocale locale;
  const std::u16string before = locale.ShortDatePattern();
  EXPECT_NE(before.find(u"yy"), before.npos);
  EXPECT_NE(locale.LongTimePattern().find(u"mm"), before.npos);
  EXPECT_EQ(locale.DecimalSeparator().size(), 1u);

  ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"yyyy.MM.dd"));
  EXPECT_EQ(locale.ShortDatePattern(), u"yyyy.MM.dd");
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, WideText(before).c_str());
  EXPECT_EQ(locale.ShortDatePattern(), before);
}

TEST(WindowsLocale, TakesTheSeparatorAndTheTimeFromTheUserNotFromTheLanguage) {
  const WindowsLocale locale;
  const auto expect_setting = [](LCTYPE type, const wchar_t* text, auto read) {
    const std::u16string before = read();
    ASSERT_NE(before, TextOf(text)) << "the setting proves nothing";
    ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, type, text));
    EXPECT_EQ(read(), TextOf(text));
    SetLocaleInfoW(LOCALE_USER_DEFAULT, type, WideText(before).c_str());
    EXPECT_EQ(read(), before);
  };
  expect_setting(LOCALE_SDECIMAL, L";", [&] { return locale.DecimalSeparator(); });
  expect_setting(LOCALE_STIMEFORMAT, L"H-mm-ss", [&] { return locale.LongTimePattern(); });
}

// The user's own patterns, set for the test, by the library and by Windows itself. Left out is where Wine
// differs from Windows: it inflects a month without a day, and gives a single y two digits.
TEST(WindowsLocale, DatesAndTimesAreThoseThatWindowsWrites) {
  const WindowsLocale locale;
  const SYSTEMTIME times[] = {{2010, 11, 0, 12, 14, 5, 9, 0},
                              {2015, 1, 0, 2, 0, 0, 0, 0},
                              {2024, 6, 0, 16, 11, 59, 59, 0},
                              {1999, 12, 0, 31, 12, 30, 1, 0}};
  const wchar_t* const dates[] = {L"yyyy-MM-dd",   L"d.M.y",
                                  L"dd-MMM-yy",    L"yyyy 'm.' MMMM d 'd.'",
                                  L"ddd d/M/yyyy", L"dddd, d 'o''clock' MMMM",
                                  L"HH ss tt yyyy"};
  const wchar_t* const times_of_day[] = {L"HH:mm:ss",       L"H.m.s",    L"h:mm:ss tt",
                                         L"hh 'val.' mm t", L"tt h 'd'", L"d.M.yyyy HH"};
  const std::wstring date_before = WideText(locale.ShortDatePattern());
  const std::wstring time_before = WideText(locale.LongTimePattern());
  wchar_t text[128];
  for (SYSTEMTIME time : times) {
    double serial = 0;
    ASSERT_TRUE(SystemTimeToVariantTime(&time, &serial));
    for (const wchar_t* pattern : dates) {
      ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, pattern));
      ASSERT_GT(GetDateFormatW(LOCALE_USER_DEFAULT, 0, &time, pattern, text, std::size(text)), 0);
      EXPECT_EQ(ShortDateText(Date{serial}, locale), TextOf(text)) << ToUtf8(TextOf(pattern));
    }
    for (const wchar_t* pattern : times_of_day) {
      ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, pattern));
      ASSERT_GT(GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, pattern, text, std::size(text)), 0);
      EXPECT_EQ(LongTimeText(Date{serial}, locale), TextOf(text)) << ToUtf8(TextOf(pattern));
    }
  }
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, date_before.c_str());
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, time_before.c_str());
}

TEST(WindowsLocale, HalvesOfTheDayAreTheUsers) {
  const WindowsLocale locale;
  const std::wstring before = WideText(locale.NameOf(DateName::HalfOfDay, 1));
  ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_S2359, L"vakare"));
  EXPECT_EQ(locale.NameOf(DateName::HalfOfDay, 1), u"vakare");
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_S2359, before.c_str());
}

TEST(AnsiText, GoesToTheSystemsCodePageAndBack) {
  EXPECT_EQ(ToAnsi(u"C:\\Host"), "C:\\Host");
  EXPECT_EQ(FromAnsi("C:\\Host"), u"C:\\Host");
  EXPECT_EQ(ToAnsi(u""), "");
  EXPECT_EQ(FromAnsi(""), u"");
}

TEST(AnsiText, HasTheLithuanianLettersOnALithuanianSystem) {
  if (GetACP() != 1257) GTEST_SKIP() << "the system's code page is not the Lithuanian one";
  EXPECT_EQ(ToAnsi(u"Ąž"), "\xC0\xFE");
  EXPECT_EQ(FromAnsi("\xC0\xFE"), u"Ąž");
}

TEST(AnsiText, ACharacterThatTheCodePageLacksIsAQuestionMark) {
  const bool has_everything = GetACP() == CP_UTF8;
  EXPECT_EQ(ToAnsi(u"a漢b"), has_everything ? "a\xE6\xBC\xA2"
                                              "b"
                                            : "a?b");
}

TEST(WindowsClock, TellsTheLocalTime) {
  SYSTEMTIME before;
  GetLocalTime(&before);
  const Date now = WindowsClock().Now();
  double serial = 0;
  ASSERT_TRUE(SystemTimeToVariantTime(&before, &serial));
  EXPECT_NEAR(now.serial, serial, 2.0 / 86400);
}

TEST(WindowsClock, RunsOnWhateverTheWallClockShows) {
  const WindowsClock clock;
  const auto before = clock.Running();
  Sleep(100);
  const auto passed = clock.Running() - before;
  EXPECT_GE(passed, std::chrono::milliseconds(80));
  EXPECT_LT(passed, std::chrono::seconds(60));
}

TEST(WindowsEnvironment, KnowsWhereTheLibraryLies) {
  EXPECT_EQ(WindowsEnvironment().LibraryFolder(), OwnFolder());
}

TEST(OwnFile, IsThisProgram) {
  const std::u16string file = OwnFile();
  EXPECT_TRUE(std::filesystem::exists(file));
  EXPECT_EQ(file, OwnFolder() + u"\\qva_windows_tests.exe");
}

TEST(WindowsPlatform, InstallsEveryServiceOnce) {
  InstallPlatform();
  const Services& services = GetServices();
  const ObjectFactory* factory = services.object_factory;
  EXPECT_TRUE(factory && services.registry && services.environment && services.locale && services.clock &&
              services.message_box && services.files);
  InstallPlatform();
  EXPECT_EQ(GetServices().object_factory, factory);
}

TEST(GetSetting, ReadsTheUsersSettingsFromTheRegistry) {
  constexpr const wchar_t* kSettings = L"Software\\VB and VBA Program Settings\\QVA Test";
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, (std::wstring(kSettings) + L"\\General").c_str(), &key),
            ERROR_SUCCESS);
  RegSetValueExW(key, L"Name", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"C:\\Host"), 16);
  RegCloseKey(key);
  const Services& services = GetServices();
  EXPECT_EQ(GetSetting(*services.registry, *services.locale, u"QVA Test", u"General", u"name", u"-"),
            u"C:\\Host");
  EXPECT_EQ(GetSetting(*services.registry, *services.locale, u"QVA Test", u"General", u"other", u"-"), u"-");
  RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
  RegDeleteKeyW(HKEY_CURRENT_USER, kSettings);
}

}  // namespace
}  // namespace qva::windows
