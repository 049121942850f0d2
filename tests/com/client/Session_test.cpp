// A report session from the client's side: what it costs, and that nothing of it stays.
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

class Session : public ServerTest {
 protected:
  std::int32_t Lookups() const {
    return Invoke(*control_, IdOf(*control_, L"Lookups"), kCall).value.ToInt32();
  }
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

  /// Connects, prepares and fills a report. Result: how often the library asked for the ids of names.
  std::int32_t Run() const {
    const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
    const ComPtr<IDispatch> host = NewRegistered(L"NVXCommonObjects.CommonObjects");
    const Bstr code(u"MEDVILNE");
    const Bstr address(u"B2");
    const ComPtr<IDispatch> book = Object(host, L"CreateBook", {Text(code)});
    const ComPtr<IDispatch> cell = Object(Object(excel, L"ActiveSheet"), L"Range", {Text(address)});
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    const auto reports = New<_CReports>(CLSID_CReports);
    const Bstr caption(u"Balansas");

    const std::int32_t before = Lookups();
    const std::int32_t own = Lookups() - before;  // the question is a lookup itself
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), book.get(), &count), S_OK);
    EXPECT_EQ(reports->Init(caption.get()), S_OK);
    IDispatch* name = cell.get();
    EXPECT_EQ(FillName(*reports, name), S_OK);
    EXPECT_EQ(name, cell.get()) << "the variable stays what it was";
    EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
    const std::int32_t lookups = Lookups() - before - 2 * own;
    EXPECT_EQ(Invoke(*cell, IdOf(*cell, L"Value"), kCall).value, Value(u"UAB „Medvilnė“"));
    return lookups;
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
  EXPECT_GT(Run(), 0);  // the library was loaded for this test
  EXPECT_EQ(Run(), 0);
}

}  // namespace
}  // namespace qva::com
