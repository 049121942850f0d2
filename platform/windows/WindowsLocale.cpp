#include "platform/windows/WindowsLocale.h"

#include <iterator>

#include "platform/windows/AnsiText.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {
namespace {

std::u16string Setting(LCTYPE type) {
  wchar_t text[128];  // winnls.h: no setting is longer than 80 characters
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, std::size(text));
  return length > 0 ? TextOf(text) : std::u16string();
}

}  // namespace

std::u16string WindowsLocale::ShortDatePattern() const {
  return Setting(LOCALE_SSHORTDATE);
}

std::u16string WindowsLocale::LongTimePattern() const {
  return Setting(LOCALE_STIMEFORMAT);
}

std::u16string WindowsLocale::NameOf(DateName name, int number) const {
  // The names of a kind follow each other, weekdays from Monday on.
  static constexpr LCTYPE kFirstNames[] = {
      LOCALE_SMONTHNAME1,       LOCALE_SMONTHNAME1 | LOCALE_RETURN_GENITIVE_NAMES,
      LOCALE_SABBREVMONTHNAME1, LOCALE_SDAYNAME1,
      LOCALE_SABBREVDAYNAME1,   LOCALE_S1159};
  return Setting(kFirstNames[static_cast<int>(name)] + static_cast<LCTYPE>(number));
}

std::u16string WindowsLocale::DecimalSeparator() const {
  return Setting(LOCALE_SDECIMAL);
}

std::string WindowsLocale::ToAnsi(std::u16string_view text) const {
  return windows::ToAnsi(text);
}

std::u16string WindowsLocale::FromAnsi(std::string_view bytes) const {
  return windows::FromAnsi(bytes);
}

}  // namespace qva::windows
