// A report session from the client's side: what it costs, and that nothing of it stays.
#include "tests/com/client/client.h"

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

  /// What the library asked for, of all objects together.
  struct Lookups {
    std::int32_t count;
    std::u16string repeated;  ///< "type.member" that it asked for more than once
  };

  /// Connects, prepares and fills a report, with toolbars, environment and locked screen.
  Lookups Run() const {
    const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
    const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
    const Bstr code(u"MEDVILNE");
    const Bstr address(u"B2");
    const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
    const ComPtr<IDispatch> cell = Object(Object(excel, L"ActiveSheet"), L"Range", {Text(address)});
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
  const SIZE_T before = run(200);
  const SIZE_T after = run(1000);
  EXPECT_LT(after, before + 32 * 1024) << "less than one leaked object of 32 bytes a report";
  std::cout << "private bytes: " << before << " before, " << after << " after 1000 reports\n";
}

}  // namespace
}  // namespace qva::com
