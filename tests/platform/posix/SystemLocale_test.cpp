#include "platform/posix/SystemLocale.h"

#include <locale.h>
#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include "platform/lithuanian/date_names.h"
#include "platform/text.h"
#include "tests/files.h"
#include "tests/platform/core_test.h"
#include "tests/platform/locale_contract.h"
#include "tests/temporary_environment.h"

namespace qva {
namespace {

class SystemsLocale {
 public:
  SystemsLocale() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LC_NUMERIC", "LANG"}) variables_.Set(name, std::nullopt);
  }
  Locale& locale() { return locale_; }
  void SetShortDate(std::u16string_view pattern) { variables_.Set("QVA_VARNHOLT_SHORT_DATE", pattern); }

 private:
  TemporaryEnvironment variables_;
  SystemLocale locale_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(SystemLocale, LocaleContract, SystemsLocale);

namespace {

std::string Windows(std::string_view pattern) {
  const auto translated = ToWindowsPattern(pattern);
  return translated ? ToUtf8(*translated) : "none";
}

TEST(ToWindowsPattern, TranslatesDates) {
  EXPECT_EQ(Windows("%Y-%m-%d"), "yyyy-MM-dd");
  EXPECT_EQ(Windows("%d.%m.%Y"), "dd.MM.yyyy");
  EXPECT_EQ(Windows("%Y. %m. %d."), "yyyy. MM. dd.");
  EXPECT_EQ(Windows("%-d/%-m/%y"), "d/M/yy");
  EXPECT_EQ(Windows("%e.%m.%Y"), "d.MM.yyyy");
  EXPECT_EQ(Windows("%F"), "yyyy-MM-dd");
  EXPECT_EQ(Windows("%D"), "MM/dd/yy");
  EXPECT_EQ(Windows("%Od/%Om/%Ey"), "dd/MM/yy");
  EXPECT_EQ(Windows("%a %d %b %Y"), "ddd dd MMM yyyy");
  EXPECT_EQ(Windows("%A, %d %B %Y"), "dddd, dd MMMM yyyy");
}

TEST(ToWindowsPattern, TranslatesTimes) {
  EXPECT_EQ(Windows("%H:%M:%S"), "HH:mm:ss");
  EXPECT_EQ(Windows("%T"), "HH:mm:ss");
  EXPECT_EQ(Windows("%I:%M:%S %p"), "hh:mm:ss tt");
  EXPECT_EQ(Windows("%-I.%M %P"), "h.mm tt");
  EXPECT_EQ(Windows("%k:%M"), "H:mm");
  EXPECT_EQ(Windows("%l:%M"), "h:mm");
}

TEST(ToWindowsPattern, QuotesLettersBetweenTheParts) {
  EXPECT_EQ(Windows("%Y m. %m mėn. %d d."), "yyyy 'm'. MM 'mėn'. dd 'd'.");
  EXPECT_EQ(Windows("%Y年%m月%d日"), "yyyy'年'MM'月'dd'日'");
  EXPECT_EQ(Windows("%d'%m%%"), "dd''MM%");
}

TEST(ToWindowsPattern, GivesUpOnWhatItCannotExpress) {
  for (const char* pattern : {"", "%d %Z", "%U", "%", "%Y-%"}) EXPECT_EQ(Windows(pattern), "none");
}

/// glibc's newlocale loses a copy of LOCPATH at each call, which is no concern where nobody sets it.
class LeaksIgnored {
 public:
  LeaksIgnored() {
#ifdef __SANITIZE_ADDRESS__
    __lsan_disable();
#endif
  }
  ~LeaksIgnored() {
#ifdef __SANITIZE_ADDRESS__
    __lsan_enable();
#endif
  }
};

class SystemLocaleTest : public CoreTest {
 protected:
  SystemLocaleTest() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LC_NUMERIC", "LANG", "QVA_VARNHOLT_SHORT_DATE"}) {
      environment.Set(name, std::nullopt);
    }
  }

  /// Compiles a locale into a folder of the test's own, where the C library then looks for it.
  void Compile(const std::string& name) {
    const std::string command = "timeout 60 localedef -c -f UTF-8 -i " + name + " --no-archive '" +
                                (folder / (name + ".UTF-8")).string() + "' >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    if (!std::filesystem::exists(folder / (name + ".UTF-8") / "LC_TIME")) {
      GTEST_SKIP() << "localedef cannot make " << name << " here: " << status;
    }
    environment.Set("LOCPATH", folder.path().string());
    leaks_ignored.emplace();
  }

  void ExpectLithuanian(const char* why) {
    EXPECT_EQ(locale.ShortDatePattern(), u"yyyy-MM-dd") << why;
    EXPECT_EQ(locale.LongTimePattern(), u"HH:mm:ss") << why;
    EXPECT_EQ(locale.DecimalSeparator(), u",") << why;
    EXPECT_EQ(locale.NameOf(DateName::MonthOfDate, 10), u"lapkričio") << why;
    EXPECT_EQ(locale.NameOf(DateName::HalfOfDay, 1), u"popiet") << why;
  }
  /// All names of a kind, parted by blanks.
  std::string Names(DateName name, int count) {
    std::string names;
    for (int i = 0; i < count; ++i) names += (i > 0 ? " " : "") + ToUtf8(locale.NameOf(name, i));
    return names;
  }

  std::optional<LeaksIgnored> leaks_ignored;
  TemporaryFolder folder;
  TemporaryEnvironment environment;
  SystemLocale locale;
};

TEST_F(SystemLocaleTest, IsLithuanianWhereTheEnvironmentSaysNothing) {
  ExpectLithuanian("nothing set");
  for (const char* name : {"", "C", "POSIX", "C.UTF-8", "C.utf8"}) {
    environment.Set("LC_ALL", name);
    ExpectLithuanian(name);
  }
}

TEST_F(SystemLocaleTest, IsLithuanianWhereTheLocaleIsNotInstalled) {
  environment.Set("LC_ALL", "xx_XX.UTF-8");
  ExpectLithuanian("unknown locale");
}

TEST_F(SystemLocaleTest, FollowsTheUsersLocale) {
  Compile("en_US");
  if (IsSkipped()) return;
  environment.Set("LANG", "en_US.UTF-8");
  EXPECT_EQ(locale.ShortDatePattern(), u"MM/dd/yyyy");
  EXPECT_EQ(locale.LongTimePattern(), u"hh:mm:ss tt");
  EXPECT_EQ(locale.DecimalSeparator(), u".");
  EXPECT_EQ(Names(DateName::Month, 12),
            "January February March April May June July August September October November December");
  EXPECT_EQ(Names(DateName::ShortMonth, 12), "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec");
  EXPECT_EQ(Names(DateName::Weekday, 7), "Monday Tuesday Wednesday Thursday Friday Saturday Sunday");
  EXPECT_EQ(Names(DateName::ShortWeekday, 7), "Mon Tue Wed Thu Fri Sat Sun");
  EXPECT_EQ(Names(DateName::HalfOfDay, 2), "AM PM");
}

TEST_F(SystemLocaleTest, MonthsAreInflectedBesideADayWhereTheLanguageDoesSo) {
  Compile("lt_LT");
  if (IsSkipped()) return;
  environment.Set("LC_TIME", "lt_LT.UTF-8");
  for (const DateName name : {DateName::Month, DateName::MonthOfDate, DateName::ShortMonth}) {
    for (int month = 0; month < 12; ++month) {
      EXPECT_EQ(locale.NameOf(name, month), LithuanianName(name, month)) << "the same as without a locale";
    }
  }
  EXPECT_EQ(locale.NameOf(DateName::Month, 5), u"birželis");
  EXPECT_EQ(locale.NameOf(DateName::MonthOfDate, 5), u"birželio");
  EXPECT_EQ(locale.NameOf(DateName::Weekday, 6), u"Sekmadienis");
}

TEST_F(SystemLocaleTest, CategoriesComeFromTheirOwnVariables) {
  Compile("en_US");
  if (IsSkipped()) return;
  environment.Set("LANG", "en_US.UTF-8");
  environment.Set("LC_NUMERIC", "C");
  EXPECT_EQ(locale.DecimalSeparator(), u",");
  EXPECT_EQ(locale.ShortDatePattern(), u"MM/dd/yyyy");
  environment.Set("LC_TIME", "POSIX");
  EXPECT_EQ(locale.ShortDatePattern(), u"yyyy-MM-dd");
  environment.Set("LC_ALL", "en_US.UTF-8");
  EXPECT_EQ(locale.DecimalSeparator(), u".");
  EXPECT_EQ(locale.ShortDatePattern(), u"MM/dd/yyyy");
}

TEST_F(SystemLocaleTest, NumbersInTextDoNotFollowTheCLibrarysLocale) {
  // A desktop program around the library sets the C library's locale to the user's.
  Compile("lt_LT");
  if (IsSkipped()) return;
  const std::string before = ::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(::setlocale(LC_NUMERIC, "lt_LT.UTF-8"), nullptr);
  ASSERT_STREQ(::localeconv()->decimal_point, ",");
  EXPECT_EQ(Value(u"1,5").ToDouble(), 1.5);
  EXPECT_EQ(Value(1.5).ToText(), u"1,5");
  EXPECT_EQ(DescribeValue(1.5), u"1.5");
  ::setlocale(LC_NUMERIC, before.c_str());
}

TEST_F(SystemLocaleTest, ShortDateCanBeSetByAVariable) {
  environment.Set("QVA_VARNHOLT_SHORT_DATE", "d 'diena' M/yyyy ą");
  EXPECT_EQ(locale.ShortDatePattern(), u"d 'diena' M/yyyy ą");
}

TEST_F(SystemLocaleTest, CodePageIsTheLithuanianOne) {
  environment.Set("LC_ALL", "C");
  EXPECT_EQ(locale.ToAnsi(u"ąž"), "\xE0\xFE");
  EXPECT_EQ(locale.FromAnsi("\xE0\xFE"), u"ąž");
}

}  // namespace
}  // namespace qva
