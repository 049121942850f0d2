// The user's regional settings on Linux.
#pragma once

#include <langinfo.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/locale.h"

namespace qva {

/// A pattern of strftime ("%d.%m.%Y") in Windows' notation ("dd.MM.yyyy"). Nothing when it has a part that
/// this notation lacks, such as the number of the week.
std::optional<std::u16string> ToWindowsPattern(std::string_view strftime_pattern);

/// What a locale of the system says about an item of langinfo.h; `mask` is of the item's category (locale.h),
/// and the empty name that of the environment's locale. Empty when there is no such locale.
std::string LocaleText(const std::string& locale, int mask, nl_item item);

/// Settings by the locales that the environment names (LC_ALL, else LC_TIME or LC_NUMERIC, else LANG), read
/// anew on each call. Where the environment names none, or "C" or "POSIX", or one that is not installed or
/// whose pattern Windows' notation cannot express, the Lithuanian ones hold: "yyyy-MM-dd", "HH:mm:ss", ","
/// and Lithuanian names.
/// The variable QVA_VARNHOLT_SHORT_DATE, when it is not empty, is the short date's pattern in Windows'
/// notation. The ANSI code page is always the Lithuanian one (1257).
class SystemLocale : public Locale {
 public:
  std::u16string ShortDatePattern() const override;
  std::u16string LongTimePattern() const override;
  std::u16string NameOf(DateName name, int number) const override;
  std::u16string DecimalSeparator() const override;
  std::string ToAnsi(std::u16string_view text) const override;
  std::u16string FromAnsi(std::string_view bytes) const override;
};

}  // namespace qva
