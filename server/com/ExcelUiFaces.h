// The COM faces of the public classes of excelui/: the vtable members that the type library promises, each
// forwarded to its place in the member table.
#pragma once

#include "QVA_Varnholt_idl.h"
#include "server/com/ComObject.h"

namespace qva::com {

class CToolbar final : public ComObject<::_CToolbar> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE get_CmdEvent(::_CCommandsEvent** result) override { return Forward(0, result); }
  HRESULT STDMETHODCALLTYPE putref_CmdEvent(::_CCommandsEvent* value) override {
    return Forward(1, nullptr, value);
  }
  HRESULT STDMETHODCALLTYPE iComment(LONG* result) override { return Forward(2, result); }
  HRESULT STDMETHODCALLTYPE iFreeze(LONG* result) override { return Forward(3, result); }
  HRESULT STDMETHODCALLTYPE iPrintP(LONG* result) override { return Forward(4, result); }
  HRESULT STDMETHODCALLTYPE iPrint(LONG* result) override { return Forward(5, result); }
  HRESULT STDMETHODCALLTYPE iExcel(LONG* result) override { return Forward(6, result); }
  HRESULT STDMETHODCALLTYPE iHelp(LONG* result) override { return Forward(7, result); }
  HRESULT STDMETHODCALLTYPE VisibleButton(unsigned char Index, VARIANT_BOOL Visible,
                                          unsigned char* result) override {
    return Forward(8, result, Index, Visible);
  }
  HRESULT STDMETHODCALLTYPE EnabledButton(unsigned char Index, VARIANT_BOOL Enabled,
                                          unsigned char* result) override {
    return Forward(9, result, Index, Enabled);
  }
  HRESULT STDMETHODCALLTYPE ButtonFaceID(unsigned char Index, LONG ID, unsigned char* result) override {
    return Forward(10, result, Index, ID);
  }
  HRESULT STDMETHODCALLTYPE ButtonFace(unsigned char Index, IDispatch* Picture,
                                       unsigned char* result) override {
    return Forward(11, result, Index, Picture);
  }
  HRESULT STDMETHODCALLTYPE PositinTop(unsigned char* result) override { return Forward(12, result); }
  HRESULT STDMETHODCALLTYPE Refresh() override { return Forward(13, nullptr); }
  HRESULT STDMETHODCALLTYPE ButtonToolTipText(unsigned char Index, BSTR sText,
                                              unsigned char* result) override {
    return Forward(14, result, Index, sText);
  }
  HRESULT STDMETHODCALLTYPE put_VisibleToolbar(VARIANT_BOOL value) override {
    return Forward(15, nullptr, value);
  }
  HRESULT STDMETHODCALLTYPE get_VisibleToolbar(VARIANT_BOOL* result) override { return Forward(16, result); }
  HRESULT STDMETHODCALLTYPE get_Caption(BSTR* result) override { return Forward(17, result); }
  HRESULT STDMETHODCALLTYPE put_Caption(BSTR value) override { return Forward(18, nullptr, value); }
  HRESULT STDMETHODCALLTYPE SetAction(unsigned char nButton, BSTR* sRunMacros,
                                      unsigned char* result) override {
    return Forward(19, result, nButton, sRunMacros);
  }
  HRESULT STDMETHODCALLTYPE SetHotKey(unsigned char nButton, BSTR sOnKey, unsigned char* result) override {
    return Forward(20, result, nButton, sOnKey);
  }
  HRESULT STDMETHODCALLTYPE get_ToolbarID(LONG* result) override { return Forward(21, result); }
  HRESULT STDMETHODCALLTYPE get_TotalButtons(unsigned char* result) override { return Forward(22, result); }
  HRESULT STDMETHODCALLTYPE get_IDCollection(unsigned char* result) override { return Forward(23, result); }
  HRESULT STDMETHODCALLTYPE put_IDCollection(unsigned char value) override {
    return Forward(24, nullptr, value);
  }
  HRESULT STDMETHODCALLTYPE Init(IDispatch* wb_Setings, IDispatch* ws_Setings) override {
    return Forward(25, nullptr, wb_Setings, ws_Setings);
  }
};

class CButtonProperties final : public ComObject<::_CButtonProperties> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE get_TotalButtons(unsigned char* result) override { return Forward(0, result); }
  HRESULT STDMETHODCALLTYPE Add(unsigned char i) override { return Forward(1, nullptr, i); }
  HRESULT STDMETHODCALLTYPE Reset() override { return Forward(2, nullptr); }
  HRESULT STDMETHODCALLTYPE get_sBCaption(unsigned char i, BSTR* result) override {
    return Forward(3, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBCaption(unsigned char i, BSTR value) override {
    return Forward(4, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_sBTooltipText(unsigned char i, BSTR* result) override {
    return Forward(5, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBTooltipText(unsigned char i, BSTR value) override {
    return Forward(6, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_sBPicture(unsigned char i, BSTR* result) override {
    return Forward(7, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBPicture(unsigned char i, BSTR value) override {
    return Forward(8, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_sBTag(unsigned char i, BSTR* result) override {
    return Forward(9, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBTag(unsigned char i, BSTR value) override {
    return Forward(10, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_sBOnKey(unsigned char i, BSTR* result) override {
    return Forward(11, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBOnKey(unsigned char i, BSTR value) override {
    return Forward(12, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_sBOnAction(unsigned char i, BSTR* result) override {
    return Forward(13, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_sBOnAction(unsigned char i, BSTR value) override {
    return Forward(14, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_nBID(unsigned char i, LONG* result) override {
    return Forward(15, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_nBID(unsigned char i, LONG value) override {
    return Forward(16, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_nBFaceID(unsigned char i, LONG* result) override {
    return Forward(17, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_nBFaceID(unsigned char i, LONG value) override {
    return Forward(18, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_bBVisible(unsigned char i, VARIANT_BOOL* result) override {
    return Forward(19, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_bBVisible(unsigned char i, VARIANT_BOOL value) override {
    return Forward(20, nullptr, i, value);
  }
  HRESULT STDMETHODCALLTYPE get_bBGroup(unsigned char i, VARIANT_BOOL* result) override {
    return Forward(21, result, i);
  }
  HRESULT STDMETHODCALLTYPE put_bBGroup(unsigned char i, VARIANT_BOOL value) override {
    return Forward(22, nullptr, i, value);
  }
};

class CToolbars final : public ComObject<::_CToolbars> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE CreateToolbar(IDispatch* oSheet, unsigned char* result) override {
    return Forward(0, result, oSheet);
  }
  HRESULT STDMETHODCALLTYPE Item(unsigned char ToolbarID, ::_CToolbar** result) override {
    return Forward(1, result, ToolbarID);
  }
  HRESULT STDMETHODCALLTYPE get_Count(LONG* result) override { return Forward(2, result); }
  HRESULT STDMETHODCALLTYPE DeleteToolbar(unsigned char ToolbarID) override {
    return Forward(3, nullptr, ToolbarID);
  }
  HRESULT STDMETHODCALLTYPE Refresh() override { return Forward(4, nullptr); }
  HRESULT STDMETHODCALLTYPE cmdGoToAppShow(BSTR sMacros) override { return Forward(5, nullptr, sMacros); }
  HRESULT STDMETHODCALLTYPE cmdGoToAppDelete() override { return Forward(6, nullptr); }
  HRESULT STDMETHODCALLTYPE get_cmdGoToAppCaption(BSTR* result) override { return Forward(7, result); }
};

class CDefaultButtons final : public ComObject<::_CDefaultButtons> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE AddButtons() override { return Forward(0, nullptr); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexComment(LONG* result) override { return Forward(1, result); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexFreeze(LONG* result) override { return Forward(2, result); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexPrintP(LONG* result) override { return Forward(3, result); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexPrint(LONG* result) override { return Forward(4, result); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexExcel(LONG* result) override { return Forward(5, result); }
  HRESULT STDMETHODCALLTYPE get_cmdIndexHelp(LONG* result) override { return Forward(6, result); }
  HRESULT STDMETHODCALLTYPE Init(IDispatch* pwsSeting, IDispatch* pCmdBar,
                                 ::_CButtonProperties* pBProperties) override {
    return Forward(7, nullptr, pwsSeting, pCmdBar, pBProperties);
  }
};

class CCommandsEvent final : public ComObject<::_CCommandsEvent> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE cmdHelp(BSTR* sHelpFile, LONG* iHelpContextID) override {
    return Forward(0, nullptr, sHelpFile, iHelpContextID);
  }
  HRESULT STDMETHODCALLTYPE cmdComment() override { return Forward(1, nullptr); }
  HRESULT STDMETHODCALLTYPE cmdFreeze(IDispatch* rnStart, short* ScrollRow) override {
    return Forward(2, nullptr, rnStart, ScrollRow);
  }
  HRESULT STDMETHODCALLTYPE Init(IDispatch* pCmdBar, ::_CDefaultButtons* pDefButton) override {
    return Forward(3, nullptr, pCmdBar, pDefButton);
  }
};

class CEnvironment final : public ComObject<::_CEnvironment> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE SetDefaultAppState(VARIANT_BOOL bDisplayHorizontalScrollBar) override {
    return Forward(0, nullptr, bDisplayHorizontalScrollBar);
  }
  HRESULT STDMETHODCALLTYPE SetDefaultExcelState() override { return Forward(1, nullptr); }
};

}  // namespace qva::com
