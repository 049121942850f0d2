// COM objects around the library's objects.
#pragma once

#include <type_traits>

#include "platform/windows/OwnObject.h"
#include "server/com/ObjectCalls.h"
#include "server/com/ServerModule.h"

namespace qva::com {

/// The COM object of one object of the library: late-bound by its member table through IDispatch, early-bound
/// by `Interface`, which the derived face completes with one forwarding line for each member. An object has
/// one COM object at a time, so that its identity holds; it lives as long as a caller holds it.
template <class Interface>
class ComObject : public Interface,
                  public ISupportErrorInfo,
                  public IProvideClassInfo,
                  public windows::OwnObject {
 public:
  explicit ComObject(ObjectPtr object) : calls_(std::move(object)) { Remember(calls_.object(), this); }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (interface_id == IID_IUnknown || interface_id == IID_IDispatch ||
        interface_id == __uuidof(Interface)) {
      *result = static_cast<Interface*>(this);
    } else if (interface_id == IID_ISupportErrorInfo) {
      *result = static_cast<ISupportErrorInfo*>(this);
    } else if (interface_id == IID_IProvideClassInfo && IsDescribed()) {
      *result = static_cast<IProvideClassInfo*>(this);
    } else if (interface_id == __uuidof(windows::OwnObject)) {
      *result = static_cast<windows::OwnObject*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG references = InterlockedDecrement(&references_);
    if (references == 0) delete this;
    return static_cast<ULONG>(references);
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
    const Hold hold(*this);
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
  virtual ~ComObject() { Forget(calls_.object()); }

  Object& object() const { return calls_.object(); }

  /// Calls the member at a place of the member table. The arguments are those of the vtable member, in order.
  template <class... Arguments>
  HRESULT Forward(std::size_t place, void* result, Arguments... arguments) noexcept {
    const Hold hold(*this);
    const void* const raw[] = {&arguments..., nullptr};
    return calls_.CallPlace(place, __uuidof(Interface), result, raw);
  }

 private:
  /// Keeps the object alive through a call in which the caller lets go of it.
  class Hold {
   public:
    explicit Hold(ComObject& object) : object_(object) { object_.AddRef(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() { object_.Release(); }

   private:
    ComObject& object_;
  };

  /// Whether the type library describes the object.
  static constexpr bool IsDescribed() { return !std::is_same_v<Interface, IDispatch>; }

  ObjectCalls calls_;
  LONG references_ = 0;
};

}  // namespace qva::com
