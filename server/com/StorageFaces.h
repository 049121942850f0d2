// The COM faces of the public classes of storage/: the vtable members that the type library promises, each
// forwarded to its place in the member table.
#pragma once

#include "QVA_Varnholt_idl.h"
#include "server/com/ComObject.h"

namespace qva::com {

class CSaveForm final : public ComObject<::_CSaveForm> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE Init() override { return Forward(0, nullptr); }
  HRESULT STDMETHODCALLTYPE Save(IDispatch* wb, BSTR BlankName, BSTR BlankType, BSTR BlankID,
                                 DATE BlankDate) override {
    return Forward(1, nullptr, wb, BlankName, BlankType, BlankID, BlankDate);
  }
  HRESULT STDMETHODCALLTYPE SaveReport(IDispatch* wb, BSTR ReportName, short intYear,
                                       short intQuater) override {
    return Forward(2, nullptr, wb, ReportName, intYear, intQuater);
  }
  HRESULT STDMETHODCALLTYPE FileExist(IDispatch* wb, BSTR BlankName, BSTR BlankType, BSTR BlankID,
                                      DATE BlankDate, VARIANT_BOOL* result) override {
    return Forward(3, result, wb, BlankName, BlankType, BlankID, BlankDate);
  }
  HRESULT STDMETHODCALLTYPE FileName(IDispatch* wb, BSTR BlankName, BSTR BlankType, BSTR BlankID,
                                     DATE BlankDate, BSTR* result) override {
    return Forward(4, result, wb, BlankName, BlankType, BlankID, BlankDate);
  }
  HRESULT STDMETHODCALLTYPE ReportExist(IDispatch* wb, BSTR ReportName, short intYear, short intQuater,
                                        VARIANT_BOOL* result) override {
    return Forward(5, result, wb, ReportName, intYear, intQuater);
  }
  HRESULT STDMETHODCALLTYPE ReportExistEx(BSTR ReportName, short intYear, short intQuater,
                                          VARIANT_BOOL* result) override {
    return Forward(6, result, ReportName, intYear, intQuater);
  }
  HRESULT STDMETHODCALLTYPE get_ErrorStatus(unsigned char* result) override { return Forward(7, result); }
  HRESULT STDMETHODCALLTYPE put_ErrorStatus(unsigned char value) override {
    return Forward(8, nullptr, value);
  }
  HRESULT STDMETHODCALLTYPE get_ErrorDescr(BSTR* result) override { return Forward(9, result); }
  HRESULT STDMETHODCALLTYPE put_ErrorDescr(BSTR value) override { return Forward(10, nullptr, value); }
  HRESULT STDMETHODCALLTYPE get_FileFullPath(BSTR* result) override { return Forward(11, result); }
  HRESULT STDMETHODCALLTYPE put_FileFullPath(BSTR value) override { return Forward(12, nullptr, value); }
  HRESULT STDMETHODCALLTYPE get_GeneralPath(BSTR* result) override { return Forward(13, result); }
  HRESULT STDMETHODCALLTYPE put_GeneralPath(BSTR value) override { return Forward(14, nullptr, value); }
};

class CSetPath final : public ComObject<::_CSetPath> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE RegPath(BSTR* PathKey, VARIANT_BOOL* result) override {
    return Forward(0, result, PathKey);
  }
};

}  // namespace qva::com
