#include "global/StartUp.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StartUpTest : public LibraryTest {};

TEST_F(StartUpTest, RunsOnceAheadOfTheFirstObject) {
  EXPECT_EQ(TheStartUpState().initialised, 0);
  EXPECT_FALSE(TheStartUpState().form_debug);
  Create(u"gExcelObject");
  EXPECT_EQ(TheStartUpState().initialised, 1);
  EXPECT_THAT(trace.lines(), ElementsAre("CreateObject(\"QVA_Common.MessageResource\")",
                                         "MessageResource.Init(\"QVAFormRes\")",
                                         "CreateObject(\"NVXClientTools.ClientTools\")"));
  EXPECT_TRUE(TheStartUpState().host_tools) << "it is kept";
  trace.Clear();
  Create(u"gExcelObject");
  EXPECT_THAT(trace.lines(), IsEmpty());
}

TEST_F(StartUpTest, FormDebugIsFalseWithoutTheSetting) {
  StartUp();
  EXPECT_FALSE(TheStartUpState().form_debug);
}

TEST_F(StartUpTest, FormDebugFollowsTheSettingsText) {
  const std::pair<const char16_t*, bool> cases[] = {
      {u"True", true}, {u"false", false}, {u"0", false}, {u"2", true}, {u"-1", true}};
  for (const auto& [text, expected] : cases) {
    ShutDown();
    SetSetting(u"General", u"AppFormDebug", text);
    StartUp();
    EXPECT_EQ(TheStartUpState().form_debug, expected) << ToUtf8(text);
  }
}

TEST_F(StartUpTest, ANonBooleanFormDebugIsATypeMismatchAtLoad) {
  for (const auto* text : {u"taip", u""}) {
    SetSetting(u"General", u"AppFormDebug", text);
    EXPECT_EQ(RaisedBy([] { Create(u"gExcelObject"); }), kTypeMismatch);
    EXPECT_EQ(TheStartUpState().initialised, 0);
  }
  SetSetting(u"General", u"AppFormDebug", u"1");
  EXPECT_EQ(RaisedBy([] { Create(u"gExcelObject"); }), 0) << "the next load tries again";
}

TEST_F(StartUpTest, AnUnreadableSettingYieldsItsDefault) {
  SetSetting(u"General", u"AppFormDebug", u"1");
  platform.faults.registry.Refuse(FaultyRegistry::Operation::Query, kRegistryAccessDenied);
  StartUp();
  EXPECT_FALSE(TheStartUpState().form_debug);
}

TEST_F(StartUpTest, MissingHostComponentsDoNotStopIt) {
  platform.faults.object_factory.Refuse(host::kMessageResource);
  platform.faults.object_factory.Refuse(host::kClientTools);
  StartUp();
  EXPECT_EQ(TheStartUpState().initialised, 1);
  const auto error = ErrorOf([] { HostText(842); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kCannotCreateObject);
  EXPECT_EQ(error->description(), u"QVA_Common.MessageResource: no such class");
}

TEST_F(StartUpTest, MessageTextsComeFromTheResourceByNumber) {
  StartUp();
  host.texts[811] = u"Neteisingas laikotarpis";
  EXPECT_EQ(HostText(811), u"Neteisingas laikotarpis");
  EXPECT_EQ(host.resource_library, u"QVAFormRes");
}

TEST_F(StartUpTest, AResourceThatFailsToInitialiseIsTriedAgain) {
  failure.Reset(2);  // MessageResource.Init
  StartUp();
  failure.Reset(0);
  EXPECT_EQ(HostText(811), u"Tekstas 811");
}

TEST_F(StartUpTest, ForeignIdentifiersAreNoPublicClasses) {
  EXPECT_EQ(FindPublicClass(u"QVA_Varnholt.CFile"), nullptr);
  EXPECT_EQ(FindPublicClass(u"QVA_Varnholt"), nullptr);
  EXPECT_EQ(FindPublicClass(u"Other.gExcelObject"), nullptr);
  EXPECT_NE(FindPublicClass(u"qva_varnholt.GEXCELOBJECT"), nullptr);
}

}  // namespace
}  // namespace qva
