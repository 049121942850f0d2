// The COM faces of the public classes of period/: the vtable members that the type library promises, each
// forwarded to its place in the member table.
#pragma once

#include "QVA_Varnholt_idl.h"
#include "server/com/ComObject.h"

namespace qva::com {

class CRepPeriod final : public ComObject<::_CRepPeriod> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE Init(IDispatch* pWorkSheet) override { return Forward(0, nullptr, pWorkSheet); }
  HRESULT STDMETHODCALLTYPE Edit(VARIANT_BOOL* result) override { return Forward(1, result); }
};

class CDatePic final : public ComObject<::_CDatePic> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE Show(DATE* Selectdate, VARIANT_BOOL* result) override {
    return Forward(0, result, Selectdate);
  }
};

}  // namespace qva::com
