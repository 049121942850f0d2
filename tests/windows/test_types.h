// Type information that tests give to their automation objects.
#pragma once

#include <string>

#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"

namespace qva::windows {

/// Type information that tells a GUID and a name, and nothing else.
class TestType : public ITypeInfo {
 public:
  TestType(const GUID& guid, std::u16string name) : name_(std::move(name)) { attributes_.guid = guid; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** result) override {
    *result = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** result) override {
    *result = &attributes_;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR*) override {}
  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID, BSTR* name, BSTR*, DWORD*, BSTR*) override {
    *name = Bstr(name_).Detach();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetFuncDesc(UINT, FUNCDESC**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(PVOID, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }
  void STDMETHODCALLTYPE ReleaseFuncDesc(FUNCDESC*) override {}
  void STDMETHODCALLTYPE ReleaseVarDesc(VARDESC*) override {}

 private:
  virtual ~TestType() = default;

  TYPEATTR attributes_{};
  std::u16string name_;
  ULONG references_ = 1;
};

/// A new type with a GUID of its own, so that no test meets the names that another one resolved.
inline ComPtr<ITypeInfo> NewType(std::u16string name) {
  GUID guid;
  CoCreateGuid(&guid);
  return ComPtr<ITypeInfo>::Adopt(new TestType(guid, std::move(name)));
}

}  // namespace qva::windows
