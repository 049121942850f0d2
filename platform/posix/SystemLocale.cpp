#include "platform/posix/SystemLocale.h"

#include <langinfo.h>
#include <locale.h>

#include "platform/code_page.h"
#include "platform/filesystem/native_file.h"
#include "platform/lithuanian_names.h"
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
  const locale_t locale = ::newlocale(mask, name.c_str(), nullptr);
  if (!locale) return {};
  std::string text = ::nl_langinfo_l(item, locale);
  ::freelocale(locale);
  return ToUtf8(FromUtf8(text)) == text ? text : "";
}

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

/// Windows' notation of one conversion of strftime, null when there is none.
const char* WindowsPartOf(char conversion, bool without_zeros) {
  switch (conversion) {
    case 'Y':
      return "yyyy";
    case 'y':
      return "yy";
    case 'm':
      return without_zeros ? "M" : "MM";
    case 'b':
    case 'h':
      return "MMM";
    case 'B':
      return "MMMM";
    case 'a':
      return "ddd";
    case 'A':
      return "dddd";
    case 'd':
      return without_zeros ? "d" : "dd";
    case 'e':
      return "d";
    case 'H':
      return without_zeros ? "H" : "HH";
    case 'k':
      return "H";
    case 'I':
      return without_zeros ? "h" : "hh";
    case 'l':
      return "h";
    case 'M':
      return "mm";
    case 'S':
      return "ss";
    case 'p':
    case 'P':
      return "tt";
    case 'F':
      return "yyyy-MM-dd";
    case 'D':
      return "MM/dd/yy";
    case 'T':
      return "HH:mm:ss";
    case 'R':
      return "HH:mm";
    case 'r':
      return "hh:mm:ss tt";
    case '%':
      return "%";
    default:
      return nullptr;
  }
}

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
    const char* part = i < pattern.size() ? WindowsPartOf(pattern[i], without_zeros) : nullptr;
    if (!part) return std::nullopt;
    out += part;
    ++i;
  }
  return out.empty() ? std::nullopt : std::optional(FromUtf8(out));
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
