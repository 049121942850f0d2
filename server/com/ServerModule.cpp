#include "server/com/ServerModule.h"

#include <atomic>
#include <unordered_map>

#include "platform/member_table.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/OwnFile.h"
#include "platform/windows/WideText.h"

namespace qva::com {
namespace {

std::atomic<long> lock_count = 0;

/// The thread that the module is claimed by, or was last.
DWORD owner = 0;
SRWLOCK owner_guard = SRWLOCK_INIT;

/// The COM object of each object that has one.
std::unordered_map<Object*, IDispatch*>& ComObjects() {
  static auto& objects = *new std::unordered_map<Object*, IDispatch*>;
  return objects;
}

/// The class with the name of the object's member table.
HRESULT FindClass(ITypeLib& library, const ClassDescription& table, ITypeInfo** result) {
  std::wstring name = windows::WideText(table.name());
  MEMBERID id = 0;
  USHORT count = 1;
  const HRESULT code = library.FindName(name.data(), 0, result, &id, &count);
  return SUCCEEDED(code) && count == 0 ? TYPE_E_ELEMENTNOTFOUND : code;
}

}  // namespace

Claim::Claim() noexcept {
  AcquireSRWLockExclusive(&owner_guard);
  is_new_ = owner != GetCurrentThreadId();
  is_granted_ = !is_new_ || UseCount() == 0;
  if (is_granted_) {
    owner = GetCurrentThreadId();
    Lock();
  }
  ReleaseSRWLockExclusive(&owner_guard);
}

Claim::~Claim() {
  if (is_granted_) Unlock();
}

IDispatch* WrapObject(const ObjectPtr& object) {
  const auto found = ComObjects().find(object.get());
  if (found == ComObjects().end()) return NewComObject(object);
  found->second->AddRef();
  return found->second;
}

void Remember(Object& object, IDispatch* com_object) {
  ComObjects().emplace(&object, com_object);
}

void Forget(Object& object) noexcept {
  ComObjects().erase(&object);
}

void Lock() noexcept {
  ++lock_count;
}

void Unlock() noexcept {
  --lock_count;
}

long UseCount() noexcept {
  return lock_count;
}

HRESULT LoadLibraryDescription(ITypeLib** result) noexcept {
  try {
    return LoadTypeLibEx(windows::WideText(windows::OwnFile()).c_str(), REGKIND_NONE, result);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT LoadTypeInfo(REFIID interface_id, ITypeInfo** result) noexcept {
  *result = nullptr;
  windows::ComPtr<ITypeLib> library;
  HRESULT code = library.Obtain(LoadLibraryDescription);
  if (FAILED(code)) return code;
  code = library->GetTypeInfoOfGuid(interface_id, result);
  return code;
}

HRESULT LoadClassInfo(Object& object, ITypeInfo** result) noexcept {
  *result = nullptr;
  const ClassDescription* table = object.MemberTable();
  if (!table) return E_NOTIMPL;
  windows::ComPtr<ITypeLib> library;
  HRESULT code = library.Obtain(LoadLibraryDescription);
  if (FAILED(code)) return code;
  try {
    code = FindClass(*library, *table, result);
  } catch (...) {
    code = E_OUTOFMEMORY;
  }
  return code;
}

}  // namespace qva::com
