#include "server/com/ServerEntries.h"

#include <utility>

#include "platform/error.h"
#include "platform/windows/Busy.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Counted.h"
#include "platform/windows/WideText.h"
#include "server/com/ServerModule.h"

namespace qva::com {
namespace {

/// Creates the objects of one class.
class ClassFactory final : public windows::Counted<IClassFactory> {
 public:
  explicit ClassFactory(std::function<ObjectPtr()> create) : create_(std::move(create)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    const windows::BusyBudget operation;
    const windows::ComPtr<ClassFactory> kept(this);  // making the object may run what lets go of this one
    try {
      const auto object = windows::ComPtr<IDispatch>::Adopt(WrapObject(create_()));
      return object->QueryInterface(interface_id, result);
    } catch (...) {
      return ReportEarly(interface_id);
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lock ? Lock() : Unlock();
    return S_OK;
  }

 private:
  ~ClassFactory() override = default;

  const ModuleLock lock_;
  const std::function<ObjectPtr()> create_;
};

}  // namespace

HRESULT NewClassFactory(std::function<ObjectPtr()> create, REFIID interface_id, void** result) {
  const windows::ComPtr<IClassFactory> factory(new ClassFactory(std::move(create)));
  return factory->QueryInterface(interface_id, result);
}

HRESULT ReportOtherThread() {
  return ReportRefusal(
      RPC_E_WRONG_THREAD,
      L"Objects of another thread are alive, and the library works for one thread at a time");
}

HRESULT ReportRegistration(const std::optional<RegistrationFailure>& failure) {
  if (!failure) return S_OK;
  return ReportRefusal(HRESULT_FROM_WIN32(static_cast<DWORD>(failure->code)), failure->Message());
}

HRESULT ReportRefusal(HRESULT code, const std::wstring& reason) {
  OutputDebugStringW(reason.c_str());
  SetErrorObject(GUID_NULL, windows::WideText(kLibraryName).c_str(), reason.c_str());
  return code;
}

}  // namespace qva::com
