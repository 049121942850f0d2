// The part of a COM object that is the same for all of them.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Counts references to an object of these interfaces, from 0, and deletes it when the last one goes. It
/// answers QueryInterface by them, and is the first one for IUnknown.
template <class First, class... Others>
class Counted : public First, public Others... {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (interface_id == IID_IUnknown || interface_id == __uuidof(First)) *result = static_cast<First*>(this);
    ((interface_id == __uuidof(Others) ? void(*result = static_cast<Others*>(this)) : void()), ...);
    if (!*result) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG references = InterlockedDecrement(&references_);
    if (references == 0) delete this;
    return static_cast<ULONG>(references);
  }

 protected:
  virtual ~Counted() = default;

 private:
  LONG references_ = 0;
};

}  // namespace qva::windows
