// A report session from the client's side: what it costs, and that nothing of it stays.
#include "platform/windows/Busy.h"
#include "tests/com/client/client.h"
#include "tests/windows/windows_test.h"

namespace qva::com {
namespace {

class Session : public ServerTest {
 protected:
  std::int32_t LiveObjects() const {
    return Invoke(*control_, IdOf(*control_, L"LiveObjects"), kCall).value.ToInt32();
  }

  /// An object that a call late-bound by the client gives.
  static ComPtr<IDispatch> Object(const ComPtr<IDispatch>& parent, const wchar_t* member,
                                  std::vector<VARIANT> arguments = {}) {
    const Answer answer = Invoke(*parent, IdOf(*parent, member), kCall, std::move(arguments));
    EXPECT_EQ(answer.code, S_OK);
    return windows::ToDispatch(answer.value.ToObject());
  }

  static void Put(const ComPtr<IDispatch>& object, const wchar_t* member, VARIANT value) {
    EXPECT_EQ(
        Invoke(*object, IdOf(*object, member), DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT}).code,
        S_OK);
  }

  /// Describes a toolbar of one button with a hot key on the sheet.
  static void DescribeToolbar(const ComPtr<IDispatch>& sheet) {
    struct Named {
      const char16_t* address;
      const char16_t* name;
      const char16_t* text;
      LONG number;
    };
    for (const Named& cell : {Named{u"H1", u"nTotalButtons", nullptr, 1},
                              {u"I1", u"sToolBarCaption", u"Ataskaita", 0},
                              {u"J1", u"bMenuBar", nullptr, 0},
                              {u"H4", nullptr, nullptr, 1},
                              {u"I4", nullptr, nullptr, 59},
                              {u"J4", nullptr, u"Saugoti", 0},
                              {u"N4", nullptr, u"^{s}", 0},
                              {u"O4", nullptr, nullptr, 1},
                              {u"Q4", nullptr, u"Saugoti", 0},
                              {u"H3", u"Button_ID", nullptr, 0},
                              {u"I3", u"Button_FaceID", nullptr, 0},
                              {u"J3", u"Button_Captions", nullptr, 0},
                              {u"K3", u"Button_Pictures", nullptr, 0},
                              {u"L3", u"Button_Tag", nullptr, 0},
                              {u"M3", u"Button_TooltipText", nullptr, 0},
                              {u"N3", u"Button_OnKey", nullptr, 0},
                              {u"O3", u"Button_Visible", nullptr, 0},
                              {u"P3", u"Button_BeginGroup", nullptr, 0},
                              {u"Q3", u"Button_OnAction", nullptr, 0}}) {
      const Bstr address(cell.address);
      const Bstr text(cell.text ? cell.text : u"");
      const ComPtr<IDispatch> range = Object(sheet, L"Range", {Text(address)});
      Put(range, L"Value", cell.text ? Text(text) : Number(cell.number));
      if (!cell.name) continue;
      const Bstr name(cell.name);
      Put(range, L"Name", Text(name));
    }
  }

  /// Builds the toolbar, shows it, hides its button, and adds the command to the menu.
  static void UseToolbar(_gExcelObject& global, const ComPtr<IDispatch>& sheet) {
    ComPtr<_CToolbars> toolbars;
    toolbars.Obtain([&](_CToolbars** received) { return global.get_oToolBars(received); });
    unsigned char id = 0;
    EXPECT_EQ(toolbars->CreateToolbar(sheet.get(), &id), S_OK);
    EXPECT_EQ(id, 1);
    ComPtr<_CToolbar> toolbar;
    toolbar.Obtain([&](_CToolbar** received) { return toolbars->Item(id, received); });
    EXPECT_EQ(toolbar->put_VisibleToolbar(VARIANT_TRUE), S_OK);
    unsigned char result = 9;
    EXPECT_EQ(toolbar->VisibleButton(1, VARIANT_FALSE, &result), S_OK);
    EXPECT_EQ(result, 0);
    LONG index = 0;
    EXPECT_EQ(toolbar->iHelp(&index), S_OK);
    EXPECT_EQ(index, 8);
    const Bstr macro(u"RestoreApp");
    EXPECT_EQ(toolbars->cmdGoToAppShow(macro.get()), S_OK);
  }

  /// What the library asked for, of all objects together.
  struct Lookups {
    std::int32_t count;
    std::u16string repeated;  ///< "type.member" that it asked for more than once
  };

  /// Connects, prepares and fills a report, with a toolbar, environment and locked screen.
  Lookups Run() const {
    const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
    const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
    const Bstr code(u"MEDVILNE");
    const Bstr address(u"B2");
    const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
    const ComPtr<IDispatch> sheet = Object(excel, L"ActiveSheet");
    const ComPtr<IDispatch> cell = Object(sheet, L"Range", {Text(address)});
    DescribeToolbar(sheet);
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    const auto reports = New<_CReports>(CLSID_CReports);
    const Bstr caption(u"Balansas");

    const DISPID clear = IdOf(*control_, L"ClearLookups");
    const DISPID lookups = IdOf(*control_, L"Lookups");
    const DISPID repeated = IdOf(*control_, L"RepeatedLookups");
    EXPECT_EQ(Invoke(*control_, clear, kCall).code, S_OK);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), book.get(), &count), S_OK);
    EXPECT_EQ(global->InitToolBars(), S_OK);
    UseToolbar(*global.get(), sheet);
    EXPECT_EQ(global->InitEnvironment(), S_OK);
    ComPtr<_CEnvironment> environment;
    environment.Obtain([&](_CEnvironment** received) { return global->get_oEnvironment(received); });
    EXPECT_EQ(environment->SetDefaultAppState(VARIANT_FALSE), S_OK);
    EXPECT_EQ(environment->SetDefaultExcelState(), S_OK);
    environment = {};
    EXPECT_TRUE(New<_CLockScreen>(CLSID_CLockScreen));
    EXPECT_EQ(reports->Init(caption.get()), S_OK);
    IDispatch* name = cell.get();
    EXPECT_EQ(FillName(*reports, name), S_OK);
    EXPECT_EQ(name, cell.get()) << "the variable stays what it was";
    EXPECT_EQ(global->ResetEnvironment(), S_OK);
    EXPECT_EQ(global->ResetToolBars(), S_OK);
    EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
    const Lookups asked{Invoke(*control_, lookups, kCall).value.ToInt32(),
                        Invoke(*control_, repeated, kCall).value.ToText()};
    EXPECT_EQ(Invoke(*cell, IdOf(*cell, L"Value"), kCall).value, Value(u"UAB „Medvilnė“"));
    return asked;
  }

  static HRESULT FillName(_CReports& reports, IDispatch*& name) {
    IDispatch** const none = nullptr;
    return reports.FillAttr(none, none, &name, none, none, none, none, none, none, none, none, none, none,
                            nullptr, none, none, none, none, none, none, none, none, none);
  }

  ComPtr<IDispatch> control_ = NewRegistered(L"QVA_TestBench.Control");
};

TEST_F(Session, LeavesNothingAlive) {
  const std::int32_t before = LiveObjects();
  Run();
  EXPECT_EQ(CanUnload(), S_OK);
  EXPECT_EQ(LiveObjects(), before);
}

TEST_F(Session, AsksForTheIdOfANameOnceInTheLifeOfTheLibrary) {
  const Lookups first = Run();  // the library was loaded for this test
  EXPECT_GT(first.count, 10);
  EXPECT_EQ(first.repeated, u"");
  EXPECT_EQ(Run().count, 0);
}

TEST_F(Session, TheCountSeesARepeatedLookup) {
  const DISPID repeated = IdOf(*control_, L"RepeatedLookups");
  Invoke(*control_, IdOf(*control_, L"ClearLookups"), kCall);
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  IdOf(*excel, L"Visible");
  EXPECT_EQ(Invoke(*control_, repeated, kCall).value, Value(u""));
  IdOf(*NewRegistered(L"QVA_TestBench.Excel"), L"VISIBLE");
  EXPECT_EQ(Invoke(*control_, repeated, kCall).value, Value(u"application.visible"));
}

TEST_F(Session, AnOperationWaitsForABusyExcelOnceHoweverManyCallsItMakes) {
  const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
  const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
  const Bstr code(u"MEDVILNE");
  const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  short count = 0;
  EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), book.get(), &count), S_OK);
  EXPECT_EQ(global->InitEnvironment(), S_OK);
  ComPtr<_CEnvironment> environment;
  environment.Obtain([&](_CEnvironment** received) { return global->get_oEnvironment(received); });

  const DISPID busy = IdOf(*control_, L"BeBusy");
  const DISPID put_back = IdOf(*environment, L"SetDefaultExcelState");
  const DISPID turned_away = IdOf(*control_, L"TurnedAway");
  constexpr std::int32_t kTries = windows::kBusyLimitMilliseconds / windows::kBusyPauseMilliseconds + 1;
  for (const bool is_late : {false, true}) {
    SCOPED_TRACE(is_late);
    EXPECT_EQ(environment->SetDefaultAppState(VARIANT_FALSE), S_OK);
    const std::int32_t before = Invoke(*control_, turned_away, kCall).value.ToInt32();
    Invoke(*control_, busy, kCall, {Number(1)});
    if (is_late) {
      Invoke(*environment, put_back, kCall);
    } else {
      environment->SetDefaultExcelState();
    }
    Invoke(*control_, busy, kCall, {Number(0)});
    const std::int32_t tries = Invoke(*control_, turned_away, kCall).value.ToInt32() - before;
    EXPECT_GT(tries, 0);
    EXPECT_LT(tries, 2 * kTries) << "the first call alone waits, all others try once";
  }
  environment = {};
  EXPECT_EQ(global->ResetEnvironment(), S_OK);
  EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
}

TEST_F(Session, TheEndOfAnObjectWaitsForABusyExcelOnceHoweverManyCallsItMakes) {
  const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
  const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
  const Bstr code(u"MEDVILNE");
  const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  short count = 0;
  EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), book.get(), &count), S_OK);
  auto lock = New<_CLockScreen>(CLSID_CLockScreen);

  const DISPID busy = IdOf(*control_, L"BeBusy");
  const DISPID turned_away = IdOf(*control_, L"TurnedAway");
  constexpr std::int32_t kTries = windows::kBusyLimitMilliseconds / windows::kBusyPauseMilliseconds + 1;
  const std::int32_t before = Invoke(*control_, turned_away, kCall).value.ToInt32();
  Invoke(*control_, busy, kCall, {Number(1)});
  lock = {};
  Invoke(*control_, busy, kCall, {Number(0)});
  const std::int32_t tries = Invoke(*control_, turned_away, kCall).value.ToInt32() - before;
  EXPECT_GT(tries, 1);
  EXPECT_LT(tries, 2 * kTries);
  EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
}

// The sheet, too, is busy, and lets go of the toolbars that are asked to read it.
TEST_F(Session, ACallWaitsForABusyExcelOnceThoughItsObjectEndsWithIt) {
  const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
  const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
  const Bstr code(u"MEDVILNE");
  const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  short count = 0;
  EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), book.get(), &count), S_OK);

  const DISPID busy = IdOf(*control_, L"BeBusy");
  const DISPID turned_away = IdOf(*control_, L"TurnedAway");
  constexpr std::int32_t kTries = windows::kBusyLimitMilliseconds / windows::kBusyPauseMilliseconds + 1;
  for (const bool is_late : {false, true}) {
    SCOPED_TRACE(is_late);
    ASSERT_EQ(global->InitToolBars(), S_OK);
    ComPtr<_CToolbars> toolbars;
    toolbars.Obtain([&](_CToolbars** received) { return global->get_oToolBars(received); });
    const auto sheet = windows::NewDispatch();
    sheet->names = {u"Parent"};
    sheet->invoke = [&](const windows::InvokeCall&) {
      if (toolbars) {
        EXPECT_EQ(global->ResetToolBars(), S_OK);
        Invoke(*control_, busy, kCall, {Number(1)});
        toolbars = {};
      }
      return RPC_E_CALL_REJECTED;
    };
    const std::int32_t before = Invoke(*control_, turned_away, kCall).value.ToInt32();
    _CToolbars* raw = toolbars.get();
    const DISPID member = IdOf(*raw, L"CreateToolbar");
    unsigned char id = 0;
    if (is_late) {
      Invoke(*raw, member, kCall, {ObjectArgument(sheet.get())});
    } else {
      raw->CreateToolbar(sheet.get(), &id);
    }
    Invoke(*control_, busy, kCall, {Number(0)});
    const std::int32_t tries = Invoke(*control_, turned_away, kCall).value.ToInt32() - before;
    EXPECT_GT(sheet->calls, kTries / 2) << "the call waited";
    EXPECT_GT(tries, 0) << "the end was turned away, too";
    EXPECT_LT(tries, kTries / 2);
  }
  EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
}

TEST_F(Session, DoesNotGrowInAThousandReports) {
  const DISPID reset = IdOf(*control_, L"Reset");
  const auto run = [&](int times) {
    for (int i = 0; i < times; ++i) {
      Run();
      Invoke(*control_, reset, kCall);  // the stand-ins write down what happens
    }
    EXPECT_EQ(CanUnload(), S_OK);
    return PrivateBytes();
  };
  // What leaks grows every time; Wine's own memory only now and then.
  SIZE_T before = 0, after = run(200);
  for (int times = 0; times < 4 && after >= before + 32 * 1024; ++times) {
    before = after;
    after = run(1000);
  }
  EXPECT_LT(after, before + 32 * 1024) << "less than one leaked object of 32 bytes a report";
  std::cout << "private bytes: " << before << " before, " << after << " after 1000 reports\n";
}

}  // namespace
}  // namespace qva::com
