#include "server/com/ServerErrors.h"

#include <new>
#include <string_view>

#include "platform/error.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/WideText.h"
#include "server/PublicClasses.h"

namespace qva::com {
namespace {

/// What all callers learn about an error. Views, since nothing here may need memory.
struct Report {
  std::int32_t number;
  std::u16string_view source;
  std::u16string_view description;
  int argument;
  bool is_of_call;  ///< nothing is lost by the protocol's bare code
};

template <class Use>
HRESULT Translate(Use&& use) noexcept {
  try {
    throw;
  } catch (const AutomationError& error) {
    return use(
        Report{error.number(), error.source(), error.description(), error.argument(), error.is_of_call()});
  } catch (const std::bad_alloc&) {
    return use(Report{kOutOfMemory, kLibraryName, u"Out of memory", -1, false});
  } catch (...) {
    return use(Report{kInternalError, kLibraryName, u"Internal error", -1, false});
  }
}

BSTR NewBstr(std::u16string_view text) {
  return SysAllocStringLen(windows::Wide(text.data()), static_cast<UINT>(text.size()));
}

/// The dispatch protocol's code for an error, S_OK when it has none.
HRESULT ProtocolCode(const Report& report) {
  if (!report.is_of_call) return S_OK;
  switch (report.number) {
    case kUnsupportedMember:
      return DISP_E_MEMBERNOTFOUND;
    case kWrongArgumentCount:
      return DISP_E_BADPARAMCOUNT;
    case kNamedArgumentNotFound:
      return DISP_E_PARAMNOTFOUND;
    case kArgumentNotOptional:
      return DISP_E_PARAMNOTOPTIONAL;
    case kTypeMismatch:
      return report.argument >= 0 ? DISP_E_TYPEMISMATCH : S_OK;
    case kOverflow:
      return report.argument >= 0 ? DISP_E_OVERFLOW : S_OK;
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
  return Translate([&](const Report& report) -> HRESULT {
    argument = report.argument;
    if (const HRESULT code = ProtocolCode(report); code != S_OK) return code;
    if (info) {
      *info = {};
      info->scode = ErrorCode(report.number);
      info->bstrSource = NewBstr(report.source);
      info->bstrDescription = NewBstr(report.description);
    }
    return DISP_E_EXCEPTION;
  });
}

HRESULT ReportEarly(REFIID interface_id) noexcept {
  return Translate([&](const Report& report) {
    // The views end where their texts end: both come from whole strings or literals.
    SetErrorObject(interface_id, windows::Wide(report.source.data()),
                   windows::Wide(report.description.data()));
    return ErrorCode(report.number);
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
