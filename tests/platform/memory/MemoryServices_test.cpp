// Locale, clock and list chooser of the twin keep what all of them promise.
#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryForms.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/platform/clock_contract.h"
#include "tests/platform/forms/list_chooser_contract.h"
#include "tests/platform/locale_contract.h"

namespace qva {
namespace {

class MemorysLocale {
 public:
  Locale& locale() { return locale_; }
  void SetShortDate(std::u16string_view pattern) { locale_.short_date_pattern = pattern; }

 private:
  MemoryLocale locale_;
};

class MemorysClock {
 public:
  Clock& clock() { return clock_; }
  void Pass(std::chrono::milliseconds time) {
    clock_.Advance(time);
    const double seconds = std::round(clock_.Now().serial * 86400) + static_cast<double>(time.count() / 1000);
    clock_.Set({seconds / 86400});
  }

 private:
  MemoryClock clock_;
};

class MemoryListUser {
 public:
  MemoryListUser() = default;
  MemoryListUser(const MemoryListUser&) = delete;
  MemoryListUser& operator=(const MemoryListUser&) = delete;
  ~MemoryListUser() { EXPECT_EQ(chooser_.shown.size(), awaited_); }
  static bool IsThere() { return true; }
  void Pick(std::u16string_view code) {
    ++awaited_;
    chooser_.user = [code = std::u16string(code)](const ChoiceList& list, std::u16string_view) {
      std::optional<std::size_t> picked;
      for (std::size_t row = 0; row < list.rows.size(); ++row) {
        if (list.rows[row].front() == code) picked = row;
      }
      return picked;
    };
  }
  void Leave() {
    ++awaited_;
    chooser_.user = nullptr;
  }
  ListChooser& chooser() { return chooser_; }

 private:
  std::size_t awaited_ = 0;
  MemoryListChooser chooser_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryLocale, LocaleContract, MemorysLocale);
INSTANTIATE_TYPED_TEST_SUITE_P(MemoryClock, ClockContract, MemorysClock);
INSTANTIATE_TYPED_TEST_SUITE_P(MemoryListChooser, ListChooserContract, MemoryListUser);

}  // namespace qva
