// The loaded module as a COM server: its COM objects, its locks and its type library.
#pragma once

#include "platform/object.h"
#include "platform/windows/WindowsApi.h"

namespace qva::com {

// The module lives in one apartment: all of this is called on the user-interface thread of the caller.

/// The COM object of an object of the library, with a reference for the caller: the one that is alive, or a
/// new one. Throws std::bad_alloc.
IDispatch* WrapObject(const ObjectPtr& object);

/// Makes the COM object for an object that has none. Each server defines it: it knows the faces of its
/// classes.
IDispatch* NewComObject(const ObjectPtr& object);

/// Called by a COM object at its birth and end.
void Remember(Object& object, IDispatch* com_object);
void Forget(Object& object) noexcept;

/// Locks that class factories hold, and their number together with that of the COM objects alive.
void Lock() noexcept;
void Unlock() noexcept;
long UseCount() noexcept;

/// The type library in the module's resources; its description of an interface, or of the class of an object.
HRESULT LoadLibraryDescription(ITypeLib** result) noexcept;
HRESULT LoadTypeInfo(REFIID interface_id, ITypeInfo** result) noexcept;
HRESULT LoadClassInfo(Object& object, ITypeInfo** result) noexcept;

}  // namespace qva::com
