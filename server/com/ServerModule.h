// The loaded module as a COM server: its COM objects, its locks and its type library.
#pragma once

#include "platform/object.h"
#include "platform/windows/WindowsApi.h"

namespace qva::com {

// The module works for one apartment at a time: neither it nor the library guards itself, and what the
// library keeps for all its objects - Excel, the host's - is of the apartment that it came from. All of this
// is called on that apartment's thread.

/// Asks for the module on behalf of this thread, and keeps it as long as this lives. It goes to a thread
/// while no other one has COM objects or locks of it.
class Claim {
 public:
  Claim() noexcept;
  ~Claim();
  Claim(const Claim&) = delete;
  Claim& operator=(const Claim&) = delete;

  bool is_granted() const { return is_granted_; }
  /// Whether the module was another thread's, or nobody's, before.
  bool is_new() const { return is_new_; }

 private:
  bool is_new_ = false;
  bool is_granted_ = false;
};

/// The COM object of an object of the library, with a reference for the caller: the one that is alive, or a
/// new one. Throws std::bad_alloc.
IDispatch* WrapObject(const ObjectPtr& object);

/// Makes the COM object for an object that has none. Each server defines it: it knows the faces of its
/// classes.
IDispatch* NewComObject(const ObjectPtr& object);

/// Called by a COM object at its birth and end.
void Remember(Object& object, IDispatch* com_object);
void Forget(Object& object) noexcept;

/// Locks, which COM objects, class factories and their callers hold, and their number.
void Lock() noexcept;
void Unlock() noexcept;
long UseCount() noexcept;

/// A lock of an object's.
class ModuleLock {
 public:
  ModuleLock() noexcept { Lock(); }
  ~ModuleLock() { Unlock(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
};

/// The type library in the module's resources; its description of an interface, or of the class of an object.
HRESULT LoadLibraryDescription(ITypeLib** result) noexcept;
HRESULT LoadTypeInfo(REFIID interface_id, ITypeInfo** result) noexcept;
HRESULT LoadClassInfo(Object& object, ITypeInfo** result) noexcept;

}  // namespace qva::com
