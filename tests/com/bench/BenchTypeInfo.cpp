#include "tests/com/bench/BenchTypeInfo.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "platform/windows/Counted.h"

namespace qva::bench {
namespace {

/// An identifier made from the name (64-bit FNV-1a in both halves).
GUID GuidOf(const std::wstring& name) {
  std::uint64_t hash = 14695981039346656037u;
  for (const wchar_t c : name) hash = (hash ^ c) * 1099511628211u;
  GUID guid;
  std::memcpy(&guid, &hash, sizeof hash);
  hash = ~hash;
  std::memcpy(reinterpret_cast<char*>(&guid) + sizeof hash, &hash, sizeof hash);
  return guid;
}

class BenchTypeInfo final : public windows::Counted<ITypeInfo> {
 public:
  explicit BenchTypeInfo(std::wstring name) : name_(std::move(name)) {}

  HRESULT STDMETHODCALLTYPE GetTypeAttr(TYPEATTR** result) override {
    auto* attributes = new TYPEATTR{};
    attributes->guid = GuidOf(name_);
    attributes->typekind = TKIND_DISPATCH;
    *result = attributes;
    return S_OK;
  }
  void STDMETHODCALLTYPE ReleaseTypeAttr(TYPEATTR* attributes) override { delete attributes; }
  HRESULT STDMETHODCALLTYPE GetDocumentation(MEMBERID, BSTR* name, BSTR* text, DWORD* context,
                                             BSTR* file) override {
    if (name) *name = SysAllocString(name_.c_str());
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
  std::wstring name_;
};

}  // namespace

ITypeInfo* NewBenchTypeInfo(const std::wstring& name) {
  auto* info = new BenchTypeInfo(name);
  info->AddRef();
  return info;
}

}  // namespace qva::bench
