// UNO's text and ours - the same UTF-16 in two classes - and UNO's sequences from lists.
#pragma once

#include <com/sun/star/uno/Sequence.hxx>
#include <initializer_list>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>

namespace qva::calc {

inline rtl::OUString ToUno(std::u16string_view text) {
  // UNO's own character type has the same size and is only copied from here.
  return rtl::OUString(reinterpret_cast<const sal_Unicode*>(text.data()),
                       static_cast<sal_Int32>(text.size()));
}

inline std::u16string FromUno(const rtl::OUString& text) {
  return std::u16string(text.getStr(), text.getStr() + text.getLength());
}

template <class T>
css::uno::Sequence<T> SequenceOf(std::initializer_list<T> elements) {
  return css::uno::Sequence<T>(elements.begin(), static_cast<sal_Int32>(elements.size()));
}

}  // namespace qva::calc
