#include "platform/windows/Error.h"

#include <algorithm>
#include <iterator>

#include "platform/windows/Bstr.h"

namespace qva::windows {
namespace {

struct Translation {
  HRESULT code;
  std::int32_t number;
};

// The codes for which the platform has a trappable error.
constexpr Translation kTranslations[] = {
    {DISP_E_UNKNOWNINTERFACE, kUnsupportedMember},
    {DISP_E_MEMBERNOTFOUND, kUnsupportedMember},
    {DISP_E_UNKNOWNNAME, kUnsupportedMember},
    {DISP_E_PARAMNOTFOUND, kNamedArgumentNotFound},
    {DISP_E_TYPEMISMATCH, kTypeMismatch},
    {DISP_E_NONAMEDARGS, kNoNamedArguments},
    {DISP_E_EXCEPTION, kAutomationFailed},
    {DISP_E_OVERFLOW, kOverflow},
    {DISP_E_BADINDEX, kSubscriptOutOfRange},
    {DISP_E_BADPARAMCOUNT, kWrongArgumentCount},
    {DISP_E_PARAMNOTOPTIONAL, kArgumentNotOptional},
    {E_INVALIDARG, kInvalidProcedureCall},
    {E_NOTIMPL, kUnsupportedAction},
    {E_OUTOFMEMORY, kOutOfMemory},
    {REGDB_E_CLASSNOTREG, kCannotCreateObject},
    {CO_E_CLASSSTRING, kCannotCreateObject},
    {STG_E_FILENOTFOUND, kFileNotFound},
    {STG_E_PATHNOTFOUND, kPathNotFound},
};

std::u16string DescriptionOf(std::int32_t number, HRESULT code) {
  std::u16string text = StandardDescription(number);
  return text.empty() ? SystemText(code) : text;
}

}  // namespace

std::u16string SystemWords(DWORD code) {
  wchar_t text[512];
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      code, 0, text, std::size(text), nullptr);
  std::u16string words = TextOf(text, length);
  words.erase(words.find_last_not_of(u"\r\n ") + 1);
  return words;
}

std::u16string SystemText(HRESULT code) {
  std::u16string words = SystemWords(static_cast<DWORD>(code));
  return words.empty() ? StandardDescription(kAutomationFailed) : words;
}

std::int32_t ErrorNumberOf(HRESULT code) {
  const auto* found = std::ranges::find(kTranslations, code, &Translation::code);
  if (found != std::end(kTranslations)) return found->number;
  const bool carries_number = FAILED(code) && HRESULT_FACILITY(code) == FACILITY_CONTROL;
  return carries_number && HRESULT_CODE(code) != 0 ? HRESULT_CODE(code) : code;
}

AutomationError ErrorOf(HRESULT code) {
  const std::int32_t number = ErrorNumberOf(code);
  return {number, DescriptionOf(number, code)};
}

AutomationError ErrorOf(EXCEPINFO& info) {
  if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
  const Bstr source = Bstr::Adopt(info.bstrSource);
  const Bstr description = Bstr::Adopt(info.bstrDescription);
  const Bstr help_file = Bstr::Adopt(info.bstrHelpFile);
  // Either a code or a number of the object's own is filled in; a success code is neither.
  const HRESULT code = FAILED(info.scode) ? info.scode : DISP_E_EXCEPTION;
  const std::int32_t number = info.wCode != 0 ? info.wCode : ErrorNumberOf(code);
  info = {};
  std::u16string text = description.Text();
  if (text.empty()) text = DescriptionOf(number, code);
  return {number, source.Text(), std::move(text)};
}

}  // namespace qva::windows
