// Type information that tests give to their automation objects.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/Counted.h"

namespace qva::windows {

/// Type information that tells a GUID and a name, and nothing else.
class TestType final : public Counted<ITypeInfo> {
 public:
  TestType(const GUID& guid, std::u16string name) : name_(std::move(name)) {
    attributes_.guid = guid;
    attributes_.typekind = TKIND_DISPATCH;
  }

  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** result) override {
    *result = &attributes_;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR*) override {}
  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID, BSTR* name, BSTR* text, DWORD* context,
                                             BSTR* file) override {
    if (name) *name = Bstr(name_).Detach();
    if (text) *text = nullptr;
    if (context) *context = 0;
    if (file) *file = nullptr;
    return S_OK;
  }

  // Members are found by asking the object.
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
  TYPEATTR attributes_{};
  std::u16string name_;
};

/// A new type with a GUID of its own, so that no test meets the names that another one resolved.
inline ComPtr<ITypeInfo> NewType(std::u16string name) {
  GUID guid;
  CoCreateGuid(&guid);
  return ComPtr<ITypeInfo>(new TestType(guid, std::move(name)));
}

/// A type whose GUID is made from its name (64-bit FNV-1a in both halves): the same for all of that name.
inline ComPtr<ITypeInfo> TypeOfName(std::u16string name) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char16_t c : name) hash = (hash ^ c) * 1099511628211u;
  GUID guid;
  std::memcpy(&guid, &hash, sizeof hash);
  hash = ~hash;
  std::memcpy(reinterpret_cast<char*>(&guid) + sizeof hash, &hash, sizeof hash);
  return ComPtr<ITypeInfo>(new TestType(guid, std::move(name)));
}

}  // namespace qva::windows
