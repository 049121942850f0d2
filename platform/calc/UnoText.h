// UNO's text and ours - the same UTF-16 in two classes - and UNO's sequences from lists.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/calc/Uno.h"

namespace qva::calc {

inline OUString ToUno(std::u16string_view text) {
  // UNO's own character type has the same size and is only copied from here.
  return OUString(reinterpret_cast<const sal_Unicode*>(text.data()), static_cast<sal_Int32>(text.size()));
}

inline std::u16string FromUno(const OUString& text) {
  return std::u16string(text.getStr(), text.getStr() + text.getLength());
}

template <class T>
Sequence<T> SequenceOf(std::initializer_list<T> elements) {
  return Sequence<T>(elements.begin(), static_cast<sal_Int32>(elements.size()));
}

}  // namespace qva::calc
