// The COM faces of the public classes of reports/: the vtable members that the type library promises, each
// forwarded to its place in the member table.
#pragma once

#include "QVA_Varnholt_idl.h"
#include "server/com/ComObject.h"

namespace qva::com {

class CReports final : public ComObject<::_CReports> {
 public:
  using ComObject::ComObject;
  HRESULT STDMETHODCALLTYPE Init(BSTR WCaption) override { return Forward(0, nullptr, WCaption); }
  HRESULT STDMETHODCALLTYPE ReadDate(IDispatch* rYear, IDispatch* rMonth, IDispatch* rDay, IDispatch* rQuater,
                                     ::enDateType DateType, VARIANT_BOOL* result) override {
    return Forward(1, result, rYear, rMonth, rDay, rQuater, DateType);
  }
  HRESULT STDMETHODCALLTYPE FillAttr(IDispatch** rIMKodas, IDispatch** rPVMKodas, IDispatch** rPavad,
                                     IDispatch** rAdresas, IDispatch** rTelefonas, IDispatch** rFaksas,
                                     IDispatch** rVadovas, IDispatch** rBuhas, IDispatch** rBankas,
                                     IDispatch** rBKodas, IDispatch** rBSaskaita, IDispatch** rSlaveId,
                                     IDispatch** rSlaveCode, LONG* ID, IDispatch** rPaprastAkcSk,
                                     IDispatch** rPrivilegAkcSk, IDispatch** rNominAkcVerte,
                                     IDispatch** rNuosavAkcSk, IDispatch** rSodrosKodas,
                                     IDispatch** rSodrosPavad, IDispatch** rSodrosTel,
                                     IDispatch** rSodrosAdresas, IDispatch** rDraudRegNum) override {
    return Forward(2, nullptr, rIMKodas, rPVMKodas, rPavad, rAdresas, rTelefonas, rFaksas, rVadovas, rBuhas,
                   rBankas, rBKodas, rBSaskaita, rSlaveId, rSlaveCode, ID, rPaprastAkcSk, rPrivilegAkcSk,
                   rNominAkcVerte, rNuosavAkcSk, rSodrosKodas, rSodrosPavad, rSodrosTel, rSodrosAdresas,
                   rDraudRegNum);
  }
  HRESULT STDMETHODCALLTYPE FillBnksAcc(IDispatch* rBankas, IDispatch* rBKodas, IDispatch* rBSaskaita,
                                        IDispatch* rSlaveId, IDispatch* rSlaveCode) override {
    return Forward(3, nullptr, rBankas, rBKodas, rBSaskaita, rSlaveId, rSlaveCode);
  }
  HRESULT STDMETHODCALLTYPE Spauzd(IDispatch* sh, VARIANT_BOOL Out, VARIANT_BOOL AskBeforePage,
                                   unsigned char Count) override {
    return Forward(4, nullptr, sh, Out, AskBeforePage, Count);
  }
  HRESULT STDMETHODCALLTYPE Locking(IDispatch* rZona) override { return Forward(5, nullptr, rZona); }
  HRESULT STDMETHODCALLTYPE ClearFormulas(IDispatch* ScanArrea) override {
    return Forward(6, nullptr, ScanArrea);
  }
  HRESULT STDMETHODCALLTYPE SaveDoc(IDispatch* rYear, IDispatch* rQuater, VARIANT_BOOL* Saved,
                                    VARIANT_BOOL FullDateInOneRange) override {
    return Forward(7, nullptr, rYear, rQuater, Saved, FullDateInOneRange);
  }
  HRESULT STDMETHODCALLTYPE ColorRanges(IDispatch* rGrey, IDispatch* rYellow, IDispatch* rColorErr,
                                        VARIANT_BOOL pColor) override {
    return Forward(8, nullptr, rGrey, rYellow, rColorErr, pColor);
  }
};

}  // namespace qva::com
