#include "excelui/gExcelObject.h"

#include "tests/heard_failures.h"
#include "tests/library_fixture.h"
#include "tests/out_of_memory.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GlobalObject : public LibraryTest {
 protected:
  static std::int16_t CountOf(const Value& value) {
    EXPECT_EQ(value.type(), Value::Type::Int16);
    return value.ToInt16();
  }
  static bool CallUnlessOutOfMemory(const ObjectPtr& object, std::u16string_view member) {
    try {
      Call(object, member);
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }
};

TEST_F(GlobalObject, PublishesItsThirteenMembersInOrder) {
  std::vector<std::string> names;
  for (const Member& member : gExcelObject::Description().members()) names.push_back(ToUtf8(member.name));
  EXPECT_THAT(names, ElementsAre("InitConnectEX", "oBook", "oToolBars", "oEnvironment", "oMyPlant",
                                 "ResetConnectEX", "ResetConnectOnError", "ExcelReportError", "InitToolBars",
                                 "ResetToolBars", "cmdHelp", "InitEnvironment", "ResetEnvironment"));
}

TEST_F(GlobalObject, StartsWithEverythingNothing) {
  const ObjectPtr global = Create(u"gExcelObject");
  for (const auto* property : {u"oBook", u"oToolBars", u"oEnvironment", u"oMyPlant"}) {
    EXPECT_EQ(Get(global, property), Nothing()) << ToUtf8(property);
  }
}

TEST_F(GlobalObject, InitConnectOpensTheBookOfTheSettingInTheStatedOrder) {
  const ObjectPtr global = Create(u"gExcelObject");
  trace.Clear();
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr(), ObjectPtr()})), 1);
  EXPECT_THAT(trace.lines(),
              ElementsAre("CreateObject(\"NVXCommonObjects.CommonObjects\")",
                          "CommonObjects.CreateBook(\"MEDVILNE\")",
                          "CreateObject(\"NVXClientTools.ClientTools\")", "ClientTools.Session",
                          "ClientTools.Session.SetBook(CommonObjects.CreateBook(\"MEDVILNE\"))",
                          "CreateObject(\"NVXCommonObjects.Plant\")",
                          "Plant.Init(CommonObjects.CreateBook(\"MEDVILNE\"))"));
  EXPECT_EQ(Get(GetObject(global, u"oBook"), u"BookCode"), Value(u"MEDVILNE"));
  EXPECT_NE(Get(global, u"oMyPlant"), Nothing());
  EXPECT_THAT(host.books_set, ElementsAre(u"MEDVILNE"));
  EXPECT_THAT(host.plants_made, ElementsAre(u"MEDVILNE"));
}

TEST_F(GlobalObject, InitConnectDoesNotUseTheWorkbookArgument) {
  const ObjectPtr global = Create(u"gExcelObject");
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, u"anything"})), 1);
}

TEST_F(GlobalObject, InitConnectReleasesTheCommonObject) {
  ObjectPtr common;
  platform.object_factory.Register(host::kCommonObjects,
                                   [&] { return common = host.Create(host::kCommonObjects); });
  const ObjectPtr global = Connected();
  ASSERT_TRUE(common);
  EXPECT_EQ(common->ReferenceCount(), 1) << "only this test holds it";
}

TEST_F(GlobalObject, InitConnectReleasesACommonObjectThatGivesNoBook) {
  ObjectPtr common;
  platform.object_factory.Register(host::kCommonObjects,
                                   [&] { return common = host.Create(host::kCommonObjects); });
  SetSetting(u"Forms\\MDI", u"P0", u"NĖRA");
  const ObjectPtr global = Create(u"gExcelObject");
  EXPECT_NE(RaisedBy([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); }), 0);
  ASSERT_TRUE(common);
  EXPECT_EQ(common->ReferenceCount(), 1) << "only this test holds it";
}

TEST_F(GlobalObject, InitConnectWithABookKeepsCountAndPlantAndCreatesNothing) {
  const ObjectPtr book =
      host::CommonObjects(host.Create(host::kCommonObjects)).CreateBook(u"MEDVILNE").object();
  const ObjectPtr global = Create(u"gExcelObject");
  trace.Clear();
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr(), book})), 0);
  EXPECT_EQ(Get(global, u"oBook"), Value(book));
  EXPECT_EQ(Get(global, u"oMyPlant"), Nothing());
  EXPECT_THAT(trace.lines(), IsEmpty());
}

TEST_F(GlobalObject, SecondInitConnectOnlyStoresTheApplication) {
  const ObjectPtr global = Connected();
  const Ref<memory::Application> other_excel = MakeRef<memory::Application>();
  trace.Clear();
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {ObjectPtr(other_excel), ObjectPtr()})), 1);
  EXPECT_THAT(trace.lines(), IsEmpty());
  EXPECT_EQ(TheGlobals().application.object(), ObjectPtr(other_excel));
}

TEST_F(GlobalObject, WhatItMakesGoesOnWithItsOwnApplicationWhoeverConnectsLater) {
  const ObjectPtr global = Connected();
  const Ref<memory::Application> other_excel = MakeRef<memory::Application>();
  const ObjectPtr other = Create(u"gExcelObject");
  Call(other, u"InitConnectEX", {ObjectPtr(other_excel), ObjectPtr()});
  Call(global, u"InitEnvironment");
  for (const auto& each : {excel, other_excel}) Put(each, u"DisplayFormulaBar", false);
  Call(global, u"ResetEnvironment");
  EXPECT_EQ(Get(excel, u"DisplayFormulaBar"), Value(true));
  EXPECT_EQ(Get(other_excel, u"DisplayFormulaBar"), Value(false));
}

TEST_F(GlobalObject, InitConnectReplacesAHeldBookByAPassedOne) {
  const ObjectPtr global = Connected();
  host.books[u"BALTIJA"] = host.books[u"MEDVILNE"];
  const ObjectPtr book =
      host::CommonObjects(host.Create(host::kCommonObjects)).CreateBook(u"BALTIJA").object();
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr(), book})), 1);
  EXPECT_EQ(Get(GetObject(global, u"oBook"), u"BookCode"), Value(u"BALTIJA"));
}

TEST_F(GlobalObject, ASecondInstanceSeesTheSameGlobalsButCountsForItself) {
  const ObjectPtr first = Connected();
  const ObjectPtr second = Create(u"gExcelObject");
  EXPECT_EQ(Get(second, u"oBook"), Get(first, u"oBook"));
  EXPECT_EQ(CountOf(Call(second, u"InitConnectEX", {application, ObjectPtr()})), 0);
}

TEST_F(GlobalObject, InitConnectWithoutTheSettingRaises16514AndStaysUnconnected) {
  SetSetting(u"Forms\\MDI", u"P0", u"");
  host.texts[16514] = u"Nenurodyta apskaitos knyga";
  const ObjectPtr global = Create(u"gExcelObject");
  const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), -2147221504);
  EXPECT_EQ(error->source(), u"InitConnectEX");
  EXPECT_EQ(error->description(), u"Nenurodyta apskaitos knyga");
  EXPECT_EQ(TheGlobals().application.object(), application);
  EXPECT_EQ(Get(global, u"oBook"), Nothing());
  EXPECT_EQ(Get(global, u"oMyPlant"), Nothing());
}

TEST_F(GlobalObject, InitConnectTakesAMissingSettingForAnEmptyOne) {
  {
    OpenedKey key(platform.registry);
    key.Open(HKEY_CURRENT_USER_VALUE, SettingsKeyPath(host::kSettingsApplication, host::kFormsSection),
             kKeySetValue);
    ASSERT_EQ(platform.registry.DeleteValue(key.get(), host::kBookSetting), kRegistrySuccess);
  }
  host.texts[16514] = u"Nenurodyta apskaitos knyga";
  const ObjectPtr global = Create(u"gExcelObject");
  const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->description(), u"Nenurodyta apskaitos knyga");
}

TEST_F(GlobalObject, InitConnectWithoutTheSettingLeavesTheBookNothingWhateverTheHostOpens) {
  SetSetting(u"Forms\\MDI", u"P0", u"");
  host.books[u""] = host.books[u"MEDVILNE"];
  const ObjectPtr global = Create(u"gExcelObject");
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); }), kObjectErrorBase);
  EXPECT_EQ(Get(global, u"oBook"), Nothing());
}

TEST_F(GlobalObject, InitConnectWithAnUnknownBookRaises842WithTheBookInPlace) {
  SetSetting(u"Forms\\MDI", u"P0", u"NĖRA");
  host.texts[842] = u"Nepavyko atverti knygos „%0“";
  const ObjectPtr global = Create(u"gExcelObject");
  const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), -2147221504);
  EXPECT_EQ(error->source(), u"InitConnectEX");
  EXPECT_EQ(error->description(), u"Nepavyko atverti knygos „NĖRA“");
  EXPECT_EQ(Get(global, u"oBook"), Nothing());
  SetSetting(u"Forms\\MDI", u"P0", u"MEDVILNE");
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr()})), 1) << "the count was raised";
}

TEST_F(GlobalObject, InitConnectWithoutTheHostsComponentsRaises842) {
  const ObjectPtr global = Create(u"gExcelObject");
  platform.faults.object_factory.Refuse(host::kCommonObjects);
  const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->description(), u"Tekstas 842: MEDVILNE");
}

TEST_F(GlobalObject, ConnectionCountOverflowIsAnErrorAndMakesNoPlant) {
  InstallServices(
      platform.services());  // without the interceptor, which 32 767 connections would be slow with
  const ObjectPtr global = Create(u"gExcelObject");
  for (int i = 0; i < 32767; ++i) {
    Call(global, u"InitConnectEX", {ObjectPtr(), ObjectPtr()});
    TheGlobals().oBook = {};
  }
  TheGlobals().oMyPlant = {};
  const std::size_t plants = host.plants_made.size();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(RaisedBy([&] { Call(global, u"InitConnectEX", {ObjectPtr(), ObjectPtr()}); }), kOverflow);
    EXPECT_EQ(Get(global, u"oBook"), Nothing());
    EXPECT_EQ(Get(global, u"oMyPlant"), Nothing());
    EXPECT_EQ(host.plants_made.size(), plants);
  }
  const ObjectPtr book =
      host::CommonObjects(host.Create(host::kCommonObjects)).CreateBook(u"MEDVILNE").object();
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {ObjectPtr(), ObjectPtr(), book})), 32767)
      << "the count is unchanged";
}

TEST_F(GlobalObject, ResetConnectLetsGoOfAllButTheApplicationAndTheCounts) {
  const ObjectPtr global = Connected();
  Call(global, u"InitToolBars");
  Call(global, u"InitEnvironment");
  Call(global, u"ResetConnectEX", {u"not used"});
  for (const auto* property : {u"oBook", u"oToolBars", u"oEnvironment", u"oMyPlant"}) {
    EXPECT_EQ(Get(global, property), Nothing()) << ToUtf8(property);
  }
  EXPECT_EQ(TheGlobals().application.object(), application);
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr()})), 1)
      << "the count was set to 0";
}

TEST_F(GlobalObject, InitToolBarsAfterAResetMakesNoCollectionUntilItsCountPassesOneAgain) {
  const ObjectPtr global = Connected();
  Call(global, u"InitToolBars");
  Call(global, u"ResetConnectEX", {std::int16_t{0}});
  Call(global, u"InitToolBars");
  EXPECT_EQ(Get(global, u"oToolBars"), Nothing());
  Call(global, u"ResetToolBars");
  Call(global, u"ResetToolBars");
  Call(global, u"InitToolBars");
  EXPECT_NE(Get(global, u"oToolBars"), Nothing());
}

TEST_F(GlobalObject, ResetConnectOnErrorResetsTheConnection) {
  const ObjectPtr global = Connected();
  Call(global, u"ResetConnectOnError");
  EXPECT_EQ(Get(global, u"oBook"), Nothing());
  EXPECT_EQ(Get(global, u"oMyPlant"), Nothing());
  EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr()})), 1)
      << "the count was set to 0";
}

TEST_F(GlobalObject, ReleaseOfAnInstanceClearsTheApplicationAlone) {
  ObjectPtr global = Connected();
  Call(global, u"InitToolBars");
  Call(global, u"InitEnvironment");
  global.reset();
  EXPECT_FALSE(TheGlobals().application);
  EXPECT_TRUE(TheGlobals().oBook);
  EXPECT_TRUE(TheGlobals().oToolBars);
  EXPECT_TRUE(TheGlobals().oEnvironment);
  EXPECT_TRUE(TheGlobals().oMyPlant);
}

TEST_F(GlobalObject, EachInstanceMakesItsOwnObjectsInPlaceOfAnothersAndAllSeeTheLatest) {
  const ObjectPtr first = Connected();
  const ObjectPtr second = Create(u"gExcelObject");
  for (const auto& [init, property] :
       {std::pair(u"InitToolBars", u"oToolBars"), std::pair(u"InitEnvironment", u"oEnvironment")}) {
    Call(first, init);
    const Value made_by_first = Get(first, property);
    Call(second, init);
    EXPECT_NE(Get(second, property), made_by_first) << ToUtf8(property);
    EXPECT_EQ(Get(first, property), Get(second, property)) << ToUtf8(property);
  }
}

TEST_F(GlobalObject, ResetsOfAnInstanceThatInitialisedNothingLeaveTheObjectsOfAnother) {
  const ObjectPtr first = Connected();
  Call(first, u"InitToolBars");
  Call(first, u"InitEnvironment");
  const ObjectPtr second = Create(u"gExcelObject");
  Call(second, u"ResetToolBars");
  EXPECT_EQ(RaisedBy([&] { Call(second, u"ResetEnvironment"); }), kObjectNotSet);
  EXPECT_NE(Get(first, u"oToolBars"), Nothing());
  EXPECT_NE(Get(first, u"oEnvironment"), Nothing());
}

// The error object of a failed macro.
class ErrObject : public Described<ErrObject> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ErrObject", "")
        .Get<&ErrObject::Text>(u"Description")
        .Get<&ErrObject::Number>(u"Number");
  }
  std::u16string Text() const { return u"Dalyba iš nulio"; }
  std::int32_t Number() const { return 11; }
};

TEST_F(GlobalObject, ExcelReportErrorShowsTheDescriptionAndGivesAVisibleExcelItsScreenBack) {
  const ObjectPtr global = Connected();
  Put(excel, u"Visible", true);
  Put(excel, u"ScreenUpdating", false);
  trace.Clear();
  Call(global, u"ExcelReportError", {MakeRef<ErrObject>()});
  ASSERT_EQ(platform.message_box.boxes().size(), 1u);
  EXPECT_EQ(platform.message_box.boxes()[0].text, u"Dalyba iš nulio");
  EXPECT_EQ(platform.message_box.boxes()[0].style, 16);
  EXPECT_EQ(platform.message_box.boxes()[0].title, u"");
  EXPECT_THAT(trace.lines(), ElementsAre("Application.Visible -> True", "Application.ScreenUpdating = True"));
}

TEST_F(GlobalObject, ExcelReportErrorQuitsAnInvisibleExcelAfterTheMessage) {
  const ObjectPtr global = Connected();
  Put(excel, u"Visible", false);
  trace.Clear();
  Call(global, u"ExcelReportError", {MakeRef<ErrObject>()});
  EXPECT_EQ(platform.message_box.boxes().size(), 1u);
  EXPECT_THAT(trace.lines(), ElementsAre("Application.Visible -> False", "Application.Quit()"));
}

TEST_F(GlobalObject, ExcelReportErrorWithoutAnApplicationOnlyShowsTheMessage) {
  const ObjectPtr global = Create(u"gExcelObject");
  trace.Clear();
  Call(global, u"ExcelReportError", {MakeRef<ErrObject>()});
  EXPECT_EQ(platform.message_box.boxes().size(), 1u);
  EXPECT_THAT(trace.lines(), IsEmpty());
}

TEST_F(GlobalObject, ExcelReportErrorNeverRaises) {
  const ObjectPtr global = Connected();
  EXPECT_EQ(RaisedBy([&] { Call(global, u"ExcelReportError", {ObjectPtr()}); }), 0);
  for (const bool visible : {true, false}) {
    Put(excel, u"Visible", visible);
    // The error object's description, Visible, and ScreenUpdating or Quit.
    for (long n = 1; n <= 3; ++n) {
      for (const auto kind : {CallFailure::Kind::Error, CallFailure::Kind::NoMemory}) {
        failure.Reset(n, kind);
        const ObjectPtr error = interceptor.Wrap(MakeRef<ErrObject>(), u"Err");
        EXPECT_NO_THROW(Call(global, u"ExcelReportError", {error})) << n;
        EXPECT_TRUE(failure.has_failed());
      }
    }
  }
  EXPECT_EQ(platform.message_box.boxes().size(), 13u) << "each time a message";
}

// An Excel whose end releases the workbook's global object, as its closing macros do.
class QuittingExcel : public Described<QuittingExcel> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Application", "")
        .Get<&QuittingExcel::Visible>(u"Visible")
        .Method<&QuittingExcel::Quit>(u"Quit");
  }
  explicit QuittingExcel(ObjectPtr& global) : global_(global) {}
  bool Visible() const { return false; }
  void Quit() {
    global_.reset();
    has_quit_ = true;
  }

 private:
  ObjectPtr& global_;
  bool has_quit_ = false;
};

TEST_F(GlobalObject, ExcelReportErrorSurvivesAnExcelWhoseEndReleasesTheGlobalObject) {
  ObjectPtr global = Create(u"gExcelObject");
  const ObjectPtr caller = global;  // a macro's call holds the object that it calls
  ObjectPtr other = Create(u"gExcelObject");
  Call(global, u"InitConnectEX", {MakeRef<QuittingExcel>(other), ObjectPtr()});
  Call(caller, u"ExcelReportError", {MakeRef<ErrObject>()});
  EXPECT_FALSE(TheGlobals().application);
  EXPECT_EQ(platform.message_box.boxes().size(), 1u);
}

TEST_F(GlobalObject, ToolBarsSurviveUntilTheLastReset) {
  const ObjectPtr global = Create(u"gExcelObject");
  Call(global, u"InitToolBars");
  const Value collection = Get(global, u"oToolBars");
  EXPECT_NE(collection, Nothing());
  Call(global, u"InitToolBars");
  EXPECT_EQ(Get(global, u"oToolBars"), collection);
  Call(global, u"ResetToolBars");
  EXPECT_EQ(Get(global, u"oToolBars"), collection);
  Call(global, u"ResetToolBars");
  EXPECT_EQ(Get(global, u"oToolBars"), Nothing());
}

TEST_F(GlobalObject, ToolBarCountOverflowsAtBothEnds) {
  const ObjectPtr up = Create(u"gExcelObject");
  for (int i = 0; i < 32767; ++i) Call(up, u"InitToolBars");
  EXPECT_EQ(RaisedBy([&] { Call(up, u"InitToolBars"); }), kOverflow);
  Call(up, u"ResetToolBars");
  EXPECT_EQ(RaisedBy([&] { Call(up, u"InitToolBars"); }), 0) << "the count stayed as it was";

  const ObjectPtr down = Create(u"gExcelObject");
  for (int i = 0; i < 32768; ++i) Call(down, u"ResetToolBars");
  EXPECT_EQ(RaisedBy([&] { Call(down, u"ResetToolBars"); }), kOverflow);
}

TEST_F(GlobalObject, EnvironmentIsMadeByTheFirstInitAndReleasedByTheLastReset) {
  const ObjectPtr global = Connected();
  Call(global, u"InitEnvironment");
  const Value environment = Get(global, u"oEnvironment");
  EXPECT_NE(environment, Nothing());
  Call(global, u"InitEnvironment");
  EXPECT_EQ(Get(global, u"oEnvironment"), environment);
  Call(global, u"ResetEnvironment");
  EXPECT_EQ(Get(global, u"oEnvironment"), environment);
  Call(global, u"ResetEnvironment");
  EXPECT_EQ(Get(global, u"oEnvironment"), Nothing());
}

TEST_F(GlobalObject, ResetEnvironmentWithoutSnapshotsCountsDownAndRaisesObjectNotSet) {
  const ObjectPtr global = Connected();
  EXPECT_EQ(RaisedBy([&] { Call(global, u"ResetEnvironment"); }), kObjectNotSet);
  // The count is −1 now, so that this Init makes no environment object.
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitEnvironment"); }), kObjectNotSet);
  EXPECT_EQ(Get(global, u"oEnvironment"), Nothing());
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitEnvironment"); }), 0);
  EXPECT_NE(Get(global, u"oEnvironment"), Nothing());
}

TEST_F(GlobalObject, ResetEnvironmentRestoresOnNestedCallsToo) {
  const ObjectPtr global = Connected();
  Call(global, u"InitEnvironment");
  Call(global, u"InitEnvironment");
  Call(global, u"ResetConnectEX", {std::int16_t{0}});  // takes the snapshots away
  EXPECT_EQ(RaisedBy([&] { Call(global, u"ResetEnvironment"); }), kObjectNotSet)
      << "the first of two was to restore as well";
}

TEST_F(GlobalObject, NothingIsCountedThatCouldNotBeMadeForWantOfMemory) {
  constexpr std::pair<std::u16string_view, std::u16string_view> kMade[] = {
      {u"InitToolBars", u"oToolBars"}, {u"InitEnvironment", u"oEnvironment"}};
  for (const auto& [init, property] : kMade) {
    bool failed = true;
    for (long n = 1; failed; ++n) {
      ResetGlobals();
      const ObjectPtr global = Create(u"gExcelObject");
      {
        const OutOfMemory memory(n);
        EXPECT_TRUE(CallUnlessOutOfMemory(global, init) || memory.has_failed());
        failed = memory.has_failed();
      }
      if (failed) Call(global, init);
      EXPECT_NE(Get(global, property), Nothing()) << ToUtf8(init) << " " << n;
    }
  }
}

TEST_F(GlobalObject, EnvironmentCountOverflowsAtBothEnds) {
  const ObjectPtr down = Create(u"gExcelObject");
  for (int i = 0; i < 32768; ++i) ErrorOf([&] { Call(down, u"ResetEnvironment"); });
  EXPECT_EQ(RaisedBy([&] { Call(down, u"ResetEnvironment"); }), kOverflow);
  const ObjectPtr up = Create(u"gExcelObject");
  for (int i = 0; i < 32767; ++i) Call(up, u"InitEnvironment");
  EXPECT_EQ(RaisedBy([&] { Call(up, u"InitEnvironment"); }), kOverflow);
}

TEST_F(GlobalObject, HelpWithoutToolbarsRaisesObjectNotSet) {
  const ObjectPtr global = Connected();
  EXPECT_EQ(RaisedBy([&] { Call(global, u"cmdHelp"); }), kObjectNotSet);
  Call(global, u"InitToolBars");
  EXPECT_EQ(RaisedBy([&] { Call(global, u"cmdHelp"); }), kObjectNotSet) << "there is no toolbar 1";
}

TEST_F(GlobalObject, WrongNameCountAndTypeGiveAutomationsOwnErrors) {
  const ObjectPtr global = Create(u"gExcelObject");
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitConnect"); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitConnectEX", {application}); }), kWrongArgumentCount);
  EXPECT_EQ(RaisedBy([&] { Call(global, u"InitConnectEX", {u"Excel", 1, ObjectPtr()}); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([&] { Put(global, u"oBook", ObjectPtr()); }), kUnsupportedMember);
}

TEST_F(GlobalObject, NamedArgumentsReachInitConnect) {
  const ObjectPtr global = Create(u"gExcelObject");
  Arguments arguments;
  arguments.Named(u"objWB", Value()).Named(u"APP", application);
  EXPECT_EQ(CountOf(Call(global, u"initconnectex", std::move(arguments))), 1);
}

// Whichever host call fails, InitConnectEX ends as agreed: before the book is there with message 842, after
// it with the failing component's own error. Nothing is kept of it, so that the next call connects as the
// first.
TEST_F(GlobalObject, InitConnectEndsAsAgreedWhicheverHostCallFails) {
  for (long n = 1;; ++n) {
    SCOPED_TRACE(n);
    ResetGlobals();
    ShutDown();
    const ObjectPtr global = Create(u"gExcelObject");
    failure.Reset(n);
    trace.Clear();
    const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
    const bool failed = failure.has_failed();
    failure.Reset(0);
    if (!failed) {
      EXPECT_FALSE(error);
      EXPECT_EQ(n, 8) << "seven host calls connect";
      break;
    }
    ASSERT_TRUE(error);
    if (n <= 2) {  // creation of the common object, CreateBook
      EXPECT_EQ(error->number(), kObjectErrorBase);
      EXPECT_EQ(error->source(), u"InitConnectEX");
      EXPECT_EQ(error->description(), u"Tekstas 842: MEDVILNE");
    } else {
      EXPECT_EQ(error->number(), kAutomationFailed);
    }
    EXPECT_EQ(TheGlobals().application.object(), application);
    EXPECT_EQ(Get(global, u"oBook"), Nothing());
    EXPECT_EQ(Get(global, u"oMyPlant"), Nothing());
    EXPECT_EQ(CountOf(Call(global, u"InitConnectEX", {application, ObjectPtr()})), 1);
    EXPECT_NE(Get(global, u"oBook"), Nothing());
    EXPECT_NE(Get(global, u"oMyPlant"), Nothing());
  }
}

TEST_F(GlobalObject, InitConnectWithNoHostAtAllKeepsNumberAndSourceAndTellsTheReason) {
  for (const std::u16string_view identifier : host::kCreatableClasses)
    platform.faults.object_factory.Refuse(identifier);
  const ObjectPtr global = Create(u"gExcelObject");
  for (const auto* p0 : {u"MEDVILNE", u""}) {
    SetSetting(u"Forms\\MDI", u"P0", p0);
    const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), kObjectErrorBase);
    EXPECT_EQ(error->source(), u"InitConnectEX");
    EXPECT_EQ(error->description(), u"NVXCommonObjects.CommonObjects: no such class")
        << "the texts are not to be had";
    EXPECT_EQ(Get(global, u"oBook"), Nothing());
  }
}

TEST_F(GlobalObject, InitConnectWithoutTheHostsTextsTellsWhyThereIsNoBookFirst) {
  platform.faults.object_factory.Refuse(host::kMessageResource);
  const ObjectPtr global = Create(u"gExcelObject");
  SetSetting(host::kFormsSection, u"P0", u"NERA");
  auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  const auto of_host =
      ErrorOf([&] { host::CommonObjects::Create(platform.object_factory).CreateBook(u"NERA"); });
  ASSERT_TRUE(of_host);
  EXPECT_EQ(error->description(), of_host->description()) << "the host's own account";
  platform.faults.object_factory.Refuse(host::kCommonObjects);
  error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->description(), u"NVXCommonObjects.CommonObjects: no such class");
}

TEST_F(GlobalObject, InitConnectWithTheHostsTextsSaysWhatTheyDoWhateverTheCause) {
  platform.faults.object_factory.Refuse(host::kCommonObjects);
  const ObjectPtr global = Create(u"gExcelObject");
  const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->description(), u"Tekstas 842: MEDVILNE");
}

TEST_F(GlobalObject, AHostComponentThatIsNotThereIsNamedByInitConnectWithNumberAndSourceKept) {
  for (const std::u16string_view identifier : {host::kClientTools, host::kPlant}) {
    ResetGlobals();
    ShutDown();
    const ObjectPtr global = Create(u"gExcelObject");
    platform.faults.object_factory.Refuse(identifier);
    const auto error = ErrorOf([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); });
    ASSERT_TRUE(error) << ToUtf8(identifier);
    EXPECT_EQ(error->number(), kCannotCreateObject);
    EXPECT_EQ(error->source(), u"QVA_Varnholt");
    EXPECT_EQ(error->description(), std::u16string(identifier) + u": no such class");
    platform.faults.object_factory.Allow(identifier);
  }
}

TEST_F(GlobalObject, TellsTheListenerOfAReportedErrorAndOfAConnectionThatFails) {
  const HeardFailures failures;
  const ObjectPtr global = Connected();
  EXPECT_TRUE(failures.failed.empty());
  Call(global, u"ExcelReportError", {MakeRef<ErrObject>()});
  EXPECT_THAT(failures.failed, ElementsAre(u"Dalyba iš nulio"));
  Call(global, u"ResetConnectOnError");
  SetSetting(host::kFormsSection, u"P0", u"NERA");
  EXPECT_NE(RaisedBy([&] { Call(global, u"InitConnectEX", {application, ObjectPtr()}); }), 0);
  EXPECT_EQ(failures.failed.size(), 2u);
}

}  // namespace
}  // namespace qva
