// COM objects around the library's objects.
#pragma once

#include <type_traits>

#include "platform/windows/Busy.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Counted.h"
#include "platform/windows/OwnObject.h"
#include "server/com/ObjectCalls.h"
#include "server/com/ServerModule.h"

namespace qva::com {

/// The COM object of one object of the library: late-bound by its member table through IDispatch, early-bound
/// by `Interface`, which the derived face completes with one forwarding line for each member. An object has
/// one COM object at a time, so that its identity holds; it lives as long as a caller holds it, and to the
/// end of a call in which the caller lets go of it. The module is in use until then.
template <class Interface>
class ComObject
    : public windows::Counted<Interface, ISupportErrorInfo, IProvideClassInfo, windows::OwnObject> {
 public:
  explicit ComObject(ObjectPtr object) : calls_(std::move(object)) { Remember(calls_.object(), this); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (interface_id == IID_IDispatch) return Base::QueryInterface(__uuidof(Interface), result);
    if (interface_id == IID_IProvideClassInfo && !IsDescribed()) {
      if (result) *result = nullptr;
      return result ? E_NOINTERFACE : E_POINTER;
    }
    return Base::QueryInterface(interface_id, result);
  }

  /// The end of an object may call Excel, as an operation does, and is part of the one that lets go of it.
  ULONG STDMETHODCALLTYPE Release() override {
    const windows::BusyBudget operation;
    return Base::Release();
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = IsDescribed() ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (index != 0 || !IsDescribed()) return DISP_E_BADINDEX;
    return LoadTypeInfo(__uuidof(Interface), result);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return calls_.IdsOfNames(names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* error, UINT* argument) override {
    const windows::BusyBudget operation;
    const windows::ComPtr<ComObject> hold(this);
    return calls_.Invoke(id, flags, arguments, result, error, argument);
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interface_id) override {
    return IsDescribed() && interface_id == __uuidof(Interface) ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** result) override {
    if (!result) return E_POINTER;
    return LoadClassInfo(calls_.object(), result);
  }

  HRESULT STDMETHODCALLTYPE Unwrap(windows::OwnObjectQuestion* question) override {
    return windows::AnswerOwnObject(question, calls_.object());
  }

 protected:
  ~ComObject() override { Forget(calls_.object()); }

  Object& object() const { return calls_.object(); }

  /// Calls the member at a place of the member table. The arguments are those of the vtable member, in order.
  template <class... Arguments>
  HRESULT Forward(std::size_t place, void* result, Arguments... arguments) noexcept {
    const windows::BusyBudget operation;
    const windows::ComPtr<ComObject> hold(this);
    const void* const raw[] = {&arguments..., nullptr};
    return calls_.CallPlace(place, __uuidof(Interface), result, raw);
  }

 private:
  using Base = windows::Counted<Interface, ISupportErrorInfo, IProvideClassInfo, windows::OwnObject>;

  /// Whether the type library describes the object.
  static constexpr bool IsDescribed() { return !std::is_same_v<Interface, IDispatch>; }

  ModuleLock lock_;  // lasts until the object is gone
  ObjectCalls calls_;
};

}  // namespace qva::com
