#include "server/PublicClasses.h"

#include <algorithm>

#include "excelui/CButtonProperties.h"
#include "excelui/CCommandsEvent.h"
#include "excelui/CDefaultButtons.h"
#include "excelui/CEnvironment.h"
#include "excelui/CToolbar.h"
#include "excelui/CToolbars.h"
#include "excelui/gExcelObject.h"
#include "global/CLockScreen.h"
#include "global/CTools.h"
#include "global/StartUp.h"
#include "period/CDatePic.h"
#include "period/CRepPeriod.h"
#include "platform/text.h"
#include "reports/CReports.h"
#include "storage/CSaveForm.h"
#include "storage/CSetPath.h"

namespace qva {
namespace {

template <class T>
constexpr PublicClass Entry() {
  return {&T::Description, [] { return ObjectPtr(MakeRef<T>()); }};
}

constexpr PublicClass kPublicClasses[] = {
    Entry<gExcelObject>(),      Entry<CTools>(),       Entry<CLockScreen>(),
    Entry<CRepPeriod>(),        Entry<CDatePic>(),     Entry<CReports>(),
    Entry<CSaveForm>(),         Entry<CSetPath>(),     Entry<CToolbar>(),
    Entry<CButtonProperties>(), Entry<CToolbars>(),    Entry<CDefaultButtons>(),
    Entry<CCommandsEvent>(),    Entry<CEnvironment>(),
};

}  // namespace

std::span<const PublicClass> PublicClasses() {
  return kPublicClasses;
}

const PublicClass* FindPublicClass(std::u16string_view programmatic_identifier) {
  const std::u16string prefix = std::u16string(kLibraryName) + u".";
  if (!EqualIgnoringCase(programmatic_identifier.substr(0, prefix.size()), prefix)) return nullptr;
  const std::u16string_view name = programmatic_identifier.substr(prefix.size());
  for (const PublicClass& public_class : kPublicClasses) {
    if (EqualIgnoringCase(public_class.description().name(), name)) return &public_class;
  }
  return nullptr;
}

bool IsPublicObject(const Object& object) {
  const ClassDescription* table = object.MemberTable();
  return table && std::ranges::any_of(kPublicClasses, [table](const PublicClass& public_class) {
           return &public_class.description() == table;
         });
}

ObjectPtr CreatePublicObject(const PublicClass& public_class) {
  StartUp();
  return public_class.create();
}

}  // namespace qva
