// The public classes as COM knows them: class and interface identifiers, and the faces.
#pragma once

#include <span>

#include "platform/windows/WindowsApi.h"
#include "server/PublicClasses.h"

namespace qva::com {

struct ServerClass {
  const PublicClass* public_class;
  CLSID class_id;
  IID interface_id;
  /// A new COM object around an object of the class, without references.
  IDispatch* (*make_face)(ObjectPtr object);
};

/// The classes in the order of PublicClasses.
std::span<const ServerClass> ServerClasses();

/// Null when no class has the identifier.
const ServerClass* FindServerClass(REFCLSID class_id);

/// The identifier of the type library.
extern const GUID kLibraryId;

}  // namespace qva::com
