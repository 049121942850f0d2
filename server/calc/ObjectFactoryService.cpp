#include "server/calc/ObjectFactoryService.h"

#include "platform/ado.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/forms/CalcWindows.h"
#include "platform/calc/toolbars/ToolbarMembers.h"
#include "platform/host.h"
#include "platform/posix/PosixPlatform.h"
#include "platform/text.h"
#include "server/PublicClasses.h"
#include "server/calc/BasicError.h"
#include "server/calc/CallLog.h"
#include "server/calc/ComponentFolder.h"
#include "server/calc/PublishedObject.h"

namespace qva::calc {
namespace {

using css::uno::XInterface;

/// The services of this machine, from the first object on. Never destroyed: the last objects may outlive
/// everything that could do it.
PosixPlatform& ThePlatform() {
  static PosixPlatform& platform = *[] {
    auto* made = new PosixPlatform({ComponentFolder() / QVA_HOST_MODULE_NAME});
    new calc::CalcWindows(made->services());
    return made;
  }();
  return platform;
}

/// Basic asks for everything that it creates by name, UNO's own structures among it. What is not ours is its.
bool IsOurs(std::u16string_view identifier) {
  const std::u16string library = std::u16string(kLibraryName) + u".";
  return EqualIgnoringCase(identifier.substr(0, library.size()), library) ||
         host::IsHostIdentifier(identifier) || EqualIgnoringCase(identifier, ado::kRecordset);
}

ObjectPtr CreateObject(std::u16string_view identifier) {
  if (const PublicClass* public_class = FindPublicClass(identifier)) return CreatePublicObject(*public_class);
  return ThePlatform().services().object_factory->Create(identifier);
}

/// What Basic gets besides a pending error. For nothing at all it would report an error of its own.
class NoObject : public Described<NoObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Nothing", "Stands for an object that was not created");
  }
};

}  // namespace

ObjectFactoryService::ObjectFactoryService(const Reference<css::uno::XComponentContext>& context) {
  InstallConversion(context, &PublishedObject::Of);
  AddOverrides(ToolbarOverrides());
  InstallServices(ThePlatform().services());
  StartCallLog();
}

Reference<XInterface> ObjectFactoryService::createInstance(const OUString& identifier) {
  try {
    const std::u16string name = FromUno(identifier);
    if (!IsOurs(name)) return {};
    PrepareErrors(Context());
    return PublishedObject::Of(CreateObject(name));
  } catch (...) {
    RaiseInMacro(CaughtError());
  }
  Reference<XInterface> nothing;
  IgnoreFailures([&] { nothing = PublishedObject::Of(MakeRef<NoObject>()); });
  return nothing;
}

Reference<XInterface> ObjectFactoryService::createInstanceWithArguments(const OUString& identifier,
                                                                        const Sequence<Any>&) {
  return createInstance(identifier);
}

Sequence<OUString> ObjectFactoryService::getAvailableServiceNames() {
  Sequence<OUString> names;
  IgnoreFailures([&] {
    Sequence<OUString> all(static_cast<sal_Int32>(PublicClasses().size()));
    OUString* name = all.getArray();
    for (const PublicClass& public_class : PublicClasses()) {
      *name++ =
          ToUno(std::u16string(kLibraryName) + u"." + std::u16string(public_class.description().name()));
    }
    names = all;
  });
  return names;
}

}  // namespace qva::calc
