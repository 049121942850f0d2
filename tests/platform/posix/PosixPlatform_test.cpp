#include "platform/posix/PosixPlatform.h"

#include <gmock/gmock.h>

#include "platform/ado.h"
#include "platform/host.h"
#include "platform/memory/MemoryMessageBox.h"
#include "platform/memory/MemoryObjectFactory.h"
#include "platform/settings.h"
#include "tests/files.h"
#include "tests/missing_services.h"
#include "tests/temporary_environment.h"
#include "tests/test_paths.h"

namespace qva {
namespace {

class PosixPlatformTest : public testing::Test {
 protected:
  PosixPlatformTest() {
    environment.Set("QVA_VARNHOLT_REGISTRY", folder / "registry.reg");
    environment.Set("QVA_VARNHOLT_ANSWERS", folder / "answers");
    environment.Set("QVA_VARNHOLT_MESSAGE_LOG", folder / "log");
    environment.Set("QVA_VARNHOLT_DRIVES", folder / "drives");
    environment.Set("QVA_HOST_DATABASE", folder / "host.sqlite");
  }
  ~PosixPlatformTest() override { InstallServices({}); }

  TemporaryFolder folder;
  TemporaryEnvironment environment;
};

TEST_F(PosixPlatformTest, GivesEveryService) {
  EXPECT_THAT(MissingServices(PosixPlatform({}).services()), testing::IsEmpty());
}

TEST_F(PosixPlatformTest, ServicesUseThePlacesThatTheEnvironmentNames) {
  WriteFile(folder / "registry.reg",
            "Windows Registry Editor Version 5.00\n"
            "[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Quillon Enterprise\\Forms\\MDI]\n"
            "\"P0\"=\"MEDVILNE\"\n");
  WriteFile(folder / "answers", "Ne\n");
  PosixPlatform platform({});
  InstallServices(platform.services());
  const Services& services = GetServices();
  EXPECT_EQ(
      GetSetting(*services.registry, *services.locale, u"Quillon Enterprise", u"Forms\\MDI", u"P0", u""),
      u"MEDVILNE");
  const std::u16string captions[] = {u"Taip", u"Ne"};
  EXPECT_EQ(services.message_box->Ask(u"?", u"", captions), 2);
  EXPECT_THAT(FileContent(folder / "log"), testing::HasSubstr("answer:  2 Ne"));
  EXPECT_GT(services.clock->Now().serial, 45000);
  services.files->OpenChannel(1, u"C:\\x.txt", ChannelMode::Output)->PrintLine(u"Ąžuolas");
  EXPECT_EQ(FileContent(folder / "drives" / "C" / "x.txt"), "\xC0\xFEuolas\r\n");
  EXPECT_NE(services.environment->GetVariable(u"QVA_VARNHOLT_ANSWERS", {}), 0u);
}

TEST_F(PosixPlatformTest, ModulesAreOpenedOnTheServicesAsTheFrontDoorLeftThem) {
  PosixPlatform platform({HostModuleFile()});
  MemoryMessageBox box;
  platform.services().message_box = &box;
  InstallServices(platform.services());
  Call(platform.services().object_factory->Create(host::kMessage), u"Show",
       {u"Klausimas", u"", Array::Of({u"Gerai"})});
  ASSERT_EQ(box.boxes().size(), 1u);
  EXPECT_EQ(box.boxes().front().text, u"Klausimas");
}

TEST_F(PosixPlatformTest, RecordsetsAreInMemoryUnlessAFactoryMakesOthers) {
  PosixPlatform platform({HostModuleFile()});
  InstallServices(platform.services());
  const ado::Recordset recordset = ado::Recordset::Create(*platform.services().object_factory);
  recordset.Fields().Append(u"Code", ado::adVarChar, 5, ado::adFldUnspecified);
  recordset.Open();
  EXPECT_EQ(recordset.RecordCount(), 0);

  MemoryObjectFactory other;
  other.Register(ado::kRecordset, []() -> ObjectPtr { throw AutomationError(kInternalError); });
  PosixPlatform with_other({}, {&other});
  EXPECT_THROW(with_other.services().object_factory->Create(ado::kRecordset), AutomationError);
}

}  // namespace
}  // namespace qva
