// The COM faces of the public classes of global/: the vtable members that the type library promises, each
// forwarded to its place in the member table.
#pragma once

#include "QVA_Varnholt_idl.h"
#include "server/com/ComObject.h"

namespace qva::com {

class gExcelObject final : public ComObject<::_gExcelObject> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE InitConnectEX(IDispatch* App, VARIANT objWB, IDispatch* oAppBook,
                                          short* result) override {
    return Forward(0, result, App, objWB, oAppBook);
  }
  HRESULT STDMETHODCALLTYPE get_oBook(IDispatch** result) override { return Forward(1, result); }
  HRESULT STDMETHODCALLTYPE get_oToolBars(::_CToolbars** result) override { return Forward(2, result); }
  HRESULT STDMETHODCALLTYPE get_oEnvironment(::_CEnvironment** result) override { return Forward(3, result); }
  HRESULT STDMETHODCALLTYPE get_oMyPlant(IDispatch** result) override { return Forward(4, result); }
  HRESULT STDMETHODCALLTYPE ResetConnectEX(VARIANT intEventHandle) override {
    return Forward(5, nullptr, intEventHandle);
  }
  HRESULT STDMETHODCALLTYPE ResetConnectOnError() override { return Forward(6, nullptr); }
  HRESULT STDMETHODCALLTYPE ExcelReportError(IDispatch* ExcelErr) override {
    return Forward(7, nullptr, ExcelErr);
  }
  HRESULT STDMETHODCALLTYPE InitToolBars() override { return Forward(8, nullptr); }
  HRESULT STDMETHODCALLTYPE ResetToolBars() override { return Forward(9, nullptr); }
  HRESULT STDMETHODCALLTYPE cmdHelp() override { return Forward(10, nullptr); }
  HRESULT STDMETHODCALLTYPE InitEnvironment() override { return Forward(11, nullptr); }
  HRESULT STDMETHODCALLTYPE ResetEnvironment() override { return Forward(12, nullptr); }
};

class CTools final : public ComObject<::_CTools> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE Init(IDispatch* p_objExcelApp) override {
    return Forward(0, nullptr, p_objExcelApp);
  }
  HRESULT STDMETHODCALLTYPE BookIsOpen(BSTR* sFile, VARIANT_BOOL* result) override {
    return Forward(1, result, sFile);
  }
  HRESULT STDMETHODCALLTYPE CheckFileName(BSTR* FileName) override { return Forward(2, nullptr, FileName); }
  HRESULT STDMETHODCALLTYPE OpenBook(BSTR sPath, BSTR sFile, IDispatch** result) override {
    return Forward(3, result, sPath, sFile);
  }
  HRESULT STDMETHODCALLTYPE LockScreen(VARIANT_BOOL pLock) override { return Forward(4, nullptr, pLock); }
  HRESULT STDMETHODCALLTYPE SheetLock(VARIANT_BOOL Status, BSTR sPassword, BSTR sWhatSheet) override {
    return Forward(5, nullptr, Status, sPassword, sWhatSheet);
  }
  HRESULT STDMETHODCALLTYPE ConvertStr2Str(BSTR sString, BSTR ToChar, BSTR* result) override {
    return Forward(6, result, sString, ToChar);
  }
  HRESULT STDMETHODCALLTYPE FileExist(BSTR Path, BSTR File, VARIANT_BOOL* result) override {
    return Forward(7, result, Path, File);
  }
};

class CLockScreen final : public ComObject<::_CLockScreen> {
 public:
  using ComObject::ComObject;
};

}  // namespace qva::com
