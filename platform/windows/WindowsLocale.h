// The user's regional settings on Windows.
#pragma once

#include "platform/locale.h"

namespace qva::windows {

class WindowsLocale : public Locale {
 public:
  std::u16string ShortDatePattern() const override;
  std::u16string LongTimePattern() const override;
  std::u16string NameOf(DateName name, int number) const override;
  std::u16string DecimalSeparator() const override;
  std::string ToAnsi(std::u16string_view text) const override;
  std::u16string FromAnsi(std::string_view bytes) const override;
};

}  // namespace qva::windows
