// What tests of the library share: the in-memory platform and host, a trace of all calls into them, and the
// proof that nothing stays alive.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/memory/CallCount.h"
#include "platform/memory/CallFailure.h"
#include "platform/memory/CallTime.h"
#include "platform/memory/CallTrace.h"
#include "platform/memory/Interceptor.h"
#include "platform/memory/MemoryHost.h"
#include "platform/memory/MemoryPlatform.h"
#include "platform/memory/excel/Application.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "server/PublicClasses.h"
#include "tests/raised_error.h"
#include "tests/readable_values.h"

namespace qva {

/// A fresh library on the in-memory platform. Objects are created and called as a macro does it: by
/// programmatic identifier and member name.
class LibraryTest : public testing::Test {
 protected:
  LibraryTest() {
    host.message_box = &platform.message_box;
    host.list_chooser = &platform.list_chooser;
    for (const std::u16string_view identifier : host::kCreatableClasses) {
      platform.object_factory.Register(identifier, [this, identifier] { return host.Create(identifier); });
    }
    Services services = platform.services();
    services.object_factory = &factory;
    InstallServices(services);
    SetSetting(u"Forms\\MDI", u"P0", u"MEDVILNE");
    excel = MakeRef<memory::Application>();
    application = interceptor.Wrap(excel, u"Application");
  }

  ~LibraryTest() override {
    application.reset();
    excel.reset();
    ResetGlobals();
    ShutDown();
    EXPECT_EQ(Object::LiveCount(), live_before) << "objects stay alive";
    EXPECT_EQ(platform.registry.OpenHandles(), 0u) << "registry keys stay open";
    InstallServices({});
  }

  void SetSetting(std::u16string_view section, std::u16string_view key, std::u16string_view text) {
    platform.registry.SetText(SettingsKeyPath(host::kSettingsApplication, section), key,
                              platform.locale.ToAnsi(text));
  }

  static ObjectPtr Create(std::u16string_view class_name) {
    const PublicClass* found = FindPublicClass(u"QVA_Varnholt." + std::u16string(class_name));
    return found ? CreatePublicObject(*found) : ObjectPtr();
  }

  /// Connects a new global object to Excel and to the book "MEDVILNE".
  ObjectPtr Connected() {
    ObjectPtr global = Create(u"gExcelObject");
    Call(global, u"InitConnectEX", {application, ObjectPtr()});
    return global;
  }

  static Value Nothing() { return ObjectPtr(); }

  const long live_before = Object::LiveCount();
  MemoryPlatform platform;
  MemoryHost host = MemoryHost::Sample();
  CallTrace trace;
  CallCount count;
  CallFailure failure{0, AutomationError(kAutomationFailed, u"Server", u"The call failed")};
  CallTime call_time{platform.clock};
  Interceptor interceptor{&trace, &count, &failure, &call_time};
  InterceptedFactory factory{interceptor, platform.faults.object_factory};
  Ref<memory::Application> excel;  ///< Excel as it is
  ObjectPtr application;           ///< Excel as the library gets it: every call is traced
};

}  // namespace qva
