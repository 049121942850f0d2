#include "platform/posix/SystemLocale.h"

#include <locale.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>

#include "platform/filesystem/native_file.h"
#include "platform/lithuanian/code_page.h"
#include "platform/lithuanian/date_names.h"
#include "platform/text.h"
#include "platform/variables.h"

namespace qva {
namespace {

/// The name of the user's locale for a category; empty for the C locale, which says nothing about a user.
std::string LocaleName(const char* category) {
  std::string name = EnvironmentVariable("LC_ALL");
  if (name.empty()) name = EnvironmentVariable(category);
  if (name.empty()) name = EnvironmentVariable("LANG");
  return name == "C" || name == "POSIX" || name.starts_with("C.") ? "" : name;
}

/// What the user's locale says about `item`; empty when there is no such locale or its text is not UTF-8.
std::string LanguageInfo(const char* category, int mask, nl_item item) {
  const std::string name = LocaleName(category);
  if (name.empty()) return {};
  const std::string text = LocaleText(name, mask, item);
  return ToUtf8(FromUtf8(text)) == text ? text : "";
}

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

/// A conversion of strftime in Windows' notation.
struct Part {
  char conversion;
  std::string_view windows;
  std::string_view without_zeros = windows;
};

constexpr Part kParts[] = {{'Y', "yyyy"},     {'y', "yy"},    {'m', "MM", "M"},     {'b', "MMM"},
                           {'h', "MMM"},      {'B', "MMMM"},  {'a', "ddd"},         {'A', "dddd"},
                           {'d', "dd", "d"},  {'e', "d"},     {'H', "HH", "H"},     {'k', "H"},
                           {'I', "hh", "h"},  {'l', "h"},     {'M', "mm"},          {'S', "ss"},
                           {'p', "tt"},       {'P', "tt"},    {'F', "yyyy-MM-dd"},  {'D', "MM/dd/yy"},
                           {'T', "HH:mm:ss"}, {'R', "HH:mm"}, {'r', "hh:mm:ss tt"}, {'%', "%"}};

}  // namespace

std::optional<std::u16string> ToWindowsPattern(std::string_view pattern) {
  std::string out;
  for (std::size_t i = 0; i < pattern.size();) {
    if (pattern[i] != '%') {
      // Letters between the parts would be taken for parts themselves.
      const bool quote = IsLetter(pattern[i]);
      if (quote) out += '\'';
      while (i < pattern.size() && pattern[i] != '%' && IsLetter(pattern[i]) == quote) {
        out += pattern[i] == '\'' ? "''" : std::string(1, pattern[i]);
        ++i;
      }
      if (quote) out += '\'';
      continue;
    }
    bool without_zeros = false;
    // A flag, then a modifier for other digits or eras, which a report's dates do not use.
    for (++i; i < pattern.size() && std::string_view("-_0^#EO").find(pattern[i]) != std::string_view::npos;
         ++i) {
      without_zeros = without_zeros || pattern[i] == '-' || pattern[i] == '_';
    }
    const auto* const part =
        i < pattern.size() ? std::ranges::find(kParts, pattern[i], &Part::conversion) : std::end(kParts);
    if (part == std::end(kParts)) return std::nullopt;
    out += without_zeros ? part->without_zeros : part->windows;
    ++i;
  }
  return out.empty() ? std::nullopt : std::optional(FromUtf8(out));
}

std::string LocaleText(const std::string& locale, int mask, nl_item item) {
  const std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&::freelocale)> opened(
      ::newlocale(mask, locale.c_str(), nullptr), &::freelocale);
  return opened ? ::nl_langinfo_l(item, opened.get()) : "";
}

std::u16string SystemLocale::ShortDatePattern() const {
  if (const std::string set = EnvironmentVariable(variables::kShortDate); !set.empty()) return FromUtf8(set);
  return ToWindowsPattern(LanguageInfo("LC_TIME", LC_TIME_MASK, D_FMT)).value_or(u"yyyy-MM-dd");
}

std::u16string SystemLocale::LongTimePattern() const {
  std::string pattern = LanguageInfo("LC_TIME", LC_TIME_MASK, T_FMT);
  // "%r" stands for the locale's own twelve-hour time.
  if (pattern == "%r") pattern = LanguageInfo("LC_TIME", LC_TIME_MASK, T_FMT_AMPM);
  return ToWindowsPattern(pattern).value_or(u"HH:mm:ss");
}

std::u16string SystemLocale::NameOf(DateName name, int number) const {
  // The names of a kind follow each other, weekdays from Sunday on.
  static constexpr nl_item kFirstNames[] = {ALTMON_1, MON_1, ABMON_1, DAY_1, ABDAY_1, AM_STR};
  const bool is_weekday = name == DateName::Weekday || name == DateName::ShortWeekday;
  const nl_item item = kFirstNames[static_cast<int>(name)] + (is_weekday ? (number + 1) % 7 : number);
  const std::string text = LanguageInfo("LC_TIME", LC_TIME_MASK, item);
  return text.empty() ? LithuanianName(name, number) : FromUtf8(text);
}

std::u16string SystemLocale::DecimalSeparator() const {
  const std::string separator = LanguageInfo("LC_NUMERIC", LC_NUMERIC_MASK, RADIXCHAR);
  return separator.empty() ? u"," : FromUtf8(separator);
}

std::string SystemLocale::ToAnsi(std::u16string_view text) const {
  return ToCodePage1257(text);
}

std::u16string SystemLocale::FromAnsi(std::string_view bytes) const {
  return FromCodePage1257(bytes);
}

}  // namespace qva
