// The owner of an automation text.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/error.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Owns a BSTR, or none, which is the empty text.
class Bstr {
 public:
  Bstr() = default;
  /// Raises 7 (Out of memory).
  explicit Bstr(std::u16string_view text)
      : text_(SysAllocStringLen(Wide(text.data()), static_cast<UINT>(text.size()))) {
    if (!text_) throw AutomationError(kOutOfMemory);
  }
  Bstr(Bstr&& other) noexcept : text_(other.Detach()) {}
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  /// Takes over a text that the caller owns.
  static Bstr Adopt(BSTR text) {
    Bstr bstr;
    bstr.text_ = text;
    return bstr;
  }
  /// Gives the text to the caller.
  BSTR Detach() { return std::exchange(text_, nullptr); }

  BSTR get() const { return text_; }
  /// Where a function of Windows puts a text that will be ours. The owner must be empty.
  BSTR* Receive() { return &text_; }
  std::u16string Text() const { return TextOf(text_, SysStringLen(text_)); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace qva::windows
