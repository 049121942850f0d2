// Defines, rather than declares, the identifiers of the type library's header.
#include <initguid.h>

#include "server/com/ServerClasses.h"

#include <vector>

#include "QVA_Varnholt_faces.h"
#include "server/com/ComObject.h"

namespace qva::com {

const GUID kLibraryId = LIBID_QVA_Varnholt;

namespace {

/// An object that the type library does not describe: late-bound alone.
class PlainComObject final : public ComObject<IDispatch> {
 public:
  using ComObject::ComObject;
};

struct Face {
  std::u16string_view name;
  const CLSID& class_id;
  const IID& interface_id;
  IDispatch* (*make)(ObjectPtr object);
};

template <class T>
IDispatch* Make(ObjectPtr object) {
  return new T(std::move(object));
}

#define QVA_FACE(CLASS) {u"" #CLASS, CLSID_##CLASS, IID__##CLASS, &Make<CLASS>},
const Face kFaces[] = {QVA_FACES(QVA_FACE)};
#undef QVA_FACE

const Face& FaceOf(const PublicClass& public_class) {
  for (const Face& face : kFaces) {
    if (face.name == public_class.description().name()) return face;
  }
  throw AutomationError(kInternalError, u"A public class has no face");
}

}  // namespace

std::span<const ServerClass> ServerClasses() {
  static const std::vector<ServerClass>& classes = []() -> const std::vector<ServerClass>& {
    auto& made = *new std::vector<ServerClass>;
    for (const PublicClass& public_class : PublicClasses()) {
      const Face& face = FaceOf(public_class);
      made.push_back({&public_class, face.class_id, face.interface_id, face.make});
    }
    return made;
  }();
  return classes;
}

const ServerClass* FindServerClass(REFCLSID class_id) {
  for (const ServerClass& server_class : ServerClasses()) {
    if (server_class.class_id == class_id) return &server_class;
  }
  return nullptr;
}

IDispatch* NewComObject(const ObjectPtr& object) {
  for (const ServerClass& server_class : ServerClasses()) {
    if (&server_class.public_class->description() != object->MemberTable()) continue;
    IDispatch* face = server_class.make_face(object);
    face->AddRef();
    return face;
  }
  // No public class, such as a recordset in memory.
  IDispatch* plain = new PlainComObject(object);
  plain->AddRef();
  return plain;
}

}  // namespace qva::com
