// What tests of the Windows adapters share: automation objects made of functions, and the proof that nothing
// stays alive.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/automation.h"
#include "platform/text.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/DispatchObject.h"
#include "platform/windows/Variant.h"
#include "platform/windows/VariantConversion.h"
#include "tests/raised_error.h"
#include "tests/readable_values.h"

namespace qva::windows {

/// One IDispatch::Invoke as the object sees it.
struct InvokeCall {
  DISPID id;
  WORD flags;
  DISPPARAMS& parameters;
  VARIANT* result;
  EXCEPINFO* info;
  UINT* argument;
};

/// An automation object whose answers are functions of the test.
class TestDispatch : public IDispatch {
 public:
  TestDispatch() { ++live_; }
  TestDispatch(const TestDispatch&) = delete;
  TestDispatch& operator=(const TestDispatch&) = delete;
  virtual ~TestDispatch() { --live_; }
  static long LiveCount() { return live_; }

  /// Names in any letter case; the DISPID is the position, from 1. Arguments go by these names, too.
  std::vector<std::u16string> names = {u"Alpha", u"Beta", u"Gamma"};
  std::function<HRESULT(const InvokeCall&)> invoke = [](const InvokeCall&) { return S_OK; };
  /// Replaces QueryInterface when it is set.
  std::function<HRESULT(REFIID, void**)> query;
  /// Replaces GetIDsOfNames when it is set.
  std::function<HRESULT(DISPID*)> resolve;
  ComPtr<ITypeInfo> type;
  int lookups = 0;
  int calls = 0;
  ULONG references = 1;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (query) return query(id, result);
    *result = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
    *result = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = type ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** result) override {
    *result = nullptr;
    if (!type) return E_NOTIMPL;
    *result = ComPtr<ITypeInfo>(type).Detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* asked, UINT count, LCID, DISPID* ids) override {
    ++lookups;
    if (resolve) return resolve(ids);
    HRESULT code = S_OK;
    for (UINT i = 0; i < count; ++i) {
      ids[i] = DISPID_UNKNOWN;
      for (std::size_t n = 0; n < names.size(); ++n) {
        if (EqualIgnoringCase(names[n], TextOf(asked[i]))) ids[i] = static_cast<DISPID>(n + 1);
      }
      if (ids[i] == DISPID_UNKNOWN) code = DISP_E_UNKNOWNNAME;
    }
    return code;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* info, UINT* argument) override {
    ++calls;
    return invoke({id, flags, *parameters, result, info, argument});
  }

 private:
  static inline long live_ = 0;
};

/// Every object that a test makes is gone at its end.
class NothingLeftTest : public testing::Test {
 protected:
  NothingLeftTest() : objects_before_(Object::LiveCount()), dispatches_before_(TestDispatch::LiveCount()) {}
  ~NothingLeftTest() override {
    EXPECT_EQ(Object::LiveCount(), objects_before_);
    EXPECT_EQ(TestDispatch::LiveCount(), dispatches_before_);
  }

 private:
  long objects_before_;
  long dispatches_before_;
};

/// A new test object with one reference.
inline ComPtr<TestDispatch> NewDispatch() {
  return ComPtr<TestDispatch>::Adopt(new TestDispatch);
}

inline ObjectPtr ObjectOver(const ComPtr<TestDispatch>& dispatch) {
  return ToObject(static_cast<IDispatch*>(dispatch.get()));
}

/// A VARIANT of a type, with content that `fill` puts in. Owned by nobody.
template <class Fill>
VARIANT VariantOf(VARTYPE type, Fill&& fill) {
  VARIANT variant{};
  fill(variant);
  variant.vt = type;  // last, since a decimal's content lies over the type
  return variant;
}

}  // namespace qva::windows
