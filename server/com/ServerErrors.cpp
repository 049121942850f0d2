#include "server/com/ServerErrors.h"

#include <string_view>

#include "platform/error.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/WideText.h"

namespace qva::com {
namespace {

/// Gives a text to the caller; none where there is no memory for it.
void Give(std::u16string_view text, BSTR& result) noexcept {
  IgnoreFailures([&] { result = windows::Bstr(text).Detach(); });
}

/// The dispatch protocol's code for an error, S_OK when it has none or more would be lost than the code
/// tells.
HRESULT ProtocolCode(const Caught& caught) {
  if (!caught.error || !caught.error->is_of_call()) return S_OK;
  switch (caught.number) {
    case kUnsupportedMember:
      return DISP_E_MEMBERNOTFOUND;
    case kWrongArgumentCount:
      return DISP_E_BADPARAMCOUNT;
    case kNamedArgumentNotFound:
      return DISP_E_PARAMNOTFOUND;
    case kArgumentNotOptional:
      return DISP_E_PARAMNOTOPTIONAL;
    case kTypeMismatch:
      return caught.error->argument() >= 0 ? DISP_E_TYPEMISMATCH : S_OK;
    case kOverflow:
      return caught.error->argument() >= 0 ? DISP_E_OVERFLOW : S_OK;
    default:
      return S_OK;
  }
}

}  // namespace

HRESULT ErrorCode(std::int32_t number) noexcept {
  if (number < 0) return number;
  if (number > 0 && number <= 0xFFFF) return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
  return E_FAIL;
}

HRESULT ReportLate(EXCEPINFO* info, int& argument) noexcept {
  return UseCaught([&](const Caught& caught) -> HRESULT {
    argument = caught.error ? caught.error->argument() : -1;
    if (const HRESULT code = ProtocolCode(caught); code != S_OK) return code;
    if (info) {
      *info = {};
      info->scode = ErrorCode(caught.number);
      Give(caught.source, info->bstrSource);
      Give(caught.description, info->bstrDescription);
    }
    return DISP_E_EXCEPTION;
  });
}

HRESULT ReportEarly(REFIID interface_id) noexcept {
  return UseCaught([&](const Caught& caught) {
    // The views end where their texts end: both come from whole strings or literals.
    SetErrorObject(interface_id, windows::Wide(caught.source.data()),
                   windows::Wide(caught.description.data()));
    return ErrorCode(caught.number);
  });
}

void SetErrorObject(REFIID interface_id, const wchar_t* source, const wchar_t* description) noexcept {
  windows::ComPtr<ICreateErrorInfo> creator;
  if (FAILED(creator.Obtain([](ICreateErrorInfo** received) { return CreateErrorInfo(received); }))) return;
  creator->SetGUID(interface_id);
  creator->SetSource(const_cast<wchar_t*>(source));
  creator->SetDescription(const_cast<wchar_t*>(description));
  if (const auto info = creator.Query<IErrorInfo>()) SetErrorInfo(0, info.get());
}

}  // namespace qva::com
