#include "platform/calc/UnoError.h"

#include <com/sun/star/beans/UnknownPropertyException.hpp>
#include <com/sun/star/container/NoSuchElementException.hpp>
#include <com/sun/star/io/IOException.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/IndexOutOfBoundsException.hpp>
#include <com/sun/star/lang/WrappedTargetException.hpp>
#include <com/sun/star/lang/WrappedTargetRuntimeException.hpp>
#include <com/sun/star/reflection/InvocationTargetException.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/CannotConvertException.hpp>
#include <cppuhelper/exc_hlp.hxx>

#include "platform/calc/UnoText.h"
#include "platform/excel_refusals.h"

namespace qva::calc {
namespace {

template <class Exception>
bool Is(const Any& caught) {
  Exception exception;
  return caught >>= exception;
}

/// Takes one wrapping off.
template <class Wrapping>
bool Unwrap(Any& caught) {
  Wrapping wrapping;
  if (!(caught >>= wrapping) || !wrapping.TargetException.hasValue()) return false;
  const Any inner = wrapping.TargetException;
  caught = inner;
  return true;
}

AutomationError Standard(std::int32_t number) {
  return AutomationError(number, std::u16string(kLibreOfficeSource), StandardDescription(number));
}

/// Whether a text is one for LibreOffice's own developers: it names a type or a line of source.
bool IsInternal(std::u16string_view text) {
  for (const std::u16string_view sign : {u"com.sun.star", u"unsatisfied query", u".cxx:", u".hxx:"}) {
    if (text.find(sign) != text.npos) return true;
  }
  return false;
}

}  // namespace

AutomationError Refused(std::u16string description) {
  return AutomationError(kApplicationDefined, std::u16string(kLibreOfficeSource), std::move(description));
}

AutomationError ObjectGone() {
  return AutomationError(excel::kObjectGone, std::u16string(kLibreOfficeSource),
                         StandardDescription(kAutomationFailed));
}

AutomationError ErrorOf(Any exception) {
  while (Unwrap<css::reflection::InvocationTargetException>(exception) ||
         Unwrap<css::lang::WrappedTargetException>(exception) ||
         Unwrap<css::lang::WrappedTargetRuntimeException>(exception)) {
  }
  css::script::BasicErrorException basic;
  if (exception >>= basic) {
    std::u16string text = FromUno(basic.ErrorMessageArgument);
    if (text.empty() || IsInternal(text)) text = StandardDescription(basic.ErrorCode);
    if (text.empty()) text = StandardDescription(kAutomationFailed);
    return AutomationError(basic.ErrorCode, std::u16string(kLibreOfficeSource), std::move(text));
  }
  if (Is<css::script::CannotConvertException>(exception)) return AutomationError(kTypeMismatch);
  if (Is<css::beans::UnknownPropertyException>(exception)) return AutomationError(kUnsupportedMember);
  if (Is<css::container::NoSuchElementException>(exception) ||
      Is<css::lang::IndexOutOfBoundsException>(exception)) {
    return AutomationError(kSubscriptOutOfRange);
  }
  if (Is<css::lang::DisposedException>(exception)) return ObjectGone();
  if (Is<css::io::IOException>(exception)) return Standard(kPathFileAccess);
  return Standard(kAutomationFailed);
}

AutomationError CaughtError() noexcept {
  try {
    try {
      throw;
    } catch (const css::uno::Exception&) {
      return ErrorOf(cppu::getCaughtException());
    } catch (...) {
      return UseCaught([](const Caught& caught) {
        if (caught.error) return *caught.error;
        return AutomationError(caught.number, std::u16string(caught.description));
      });
    }
  } catch (...) {
    return AutomationError(kOutOfMemory, {}, {});  // not even memory for its texts
  }
}

}  // namespace qva::calc
