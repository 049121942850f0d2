// Regional settings that can be set; Lithuanian ones from the start.
#pragma once

#include "platform/lithuanian/code_page.h"
#include "platform/lithuanian/date_names.h"
#include "platform/locale.h"

namespace qva {

class MemoryLocale : public Locale {
 public:
  std::u16string ShortDatePattern() const override { return short_date_pattern; }
  std::u16string LongTimePattern() const override { return long_time_pattern; }
  std::u16string NameOf(DateName name, int number) const override {
    return name == DateName::HalfOfDay ? (number == 0 ? am : pm) : LithuanianName(name, number);
  }
  std::u16string DecimalSeparator() const override { return decimal_separator; }
  std::string ToAnsi(std::u16string_view text) const override { return ToCodePage1257(text); }
  std::u16string FromAnsi(std::string_view bytes) const override { return FromCodePage1257(bytes); }

  std::u16string short_date_pattern = u"yyyy-MM-dd";
  std::u16string long_time_pattern = u"HH:mm:ss";
  std::u16string am = LithuanianName(DateName::HalfOfDay, 0);
  std::u16string pm = LithuanianName(DateName::HalfOfDay, 1);
  std::u16string decimal_separator = u",";
};

}  // namespace qva
