// Identity, counting and unloading.
#include "platform/error.h"
#include "tests/com/client/client.h"
#include "tests/windows/windows_test.h"

namespace qva::com {
namespace {

class Lifetime : public ServerTest {
 protected:
  /// Creates an object in each way, uses it and lets it go.
  void OneRound() {
    const auto list = New<_CButtonProperties>(CLSID_CButtonProperties);
    const auto late = list.Query<IDispatch>();
    const Bstr text(u"Spausdinti");
    list->Add(1);
    list->put_sBCaption(1, text.get());
    Invoke(*late, 4, kCall, {Number(1)});
    Invoke(*late, 4, kCall, {Number(2)});  // an error with all its texts
    list->get_sBCaption(2, Bstr().Receive());
    SetErrorInfo(0, nullptr);
    const auto toolbar = New<_CToolbar>(CLSID_CToolbar);
    const auto events = New<_CCommandsEvent>(CLSID_CCommandsEvent);
    toolbar->putref_CmdEvent(events.get());
    ComPtr<_CCommandsEvent> read;
    read.Obtain([&](_CCommandsEvent** received) { return toolbar->get_CmdEvent(received); });
  }
};

TEST_F(Lifetime, KeepsOneIdentityForAllInterfaces) {
  const auto tools = New<_CTools>(CLSID_CTools);
  const auto unknown = tools.Query<IUnknown>();
  EXPECT_EQ(tools.Query<IDispatch>().Query<IUnknown>().get(), unknown.get());
  EXPECT_EQ(tools.Query<ISupportErrorInfo>().Query<IUnknown>().get(), unknown.get());
  EXPECT_EQ(tools.Query<IProvideClassInfo>().Query<IUnknown>().get(), unknown.get());
  EXPECT_EQ(unknown.Query<_CTools>().get(), tools.get());
  EXPECT_FALSE(tools.Query<_CToolbar>());
}

TEST_F(Lifetime, DescribesItself) {
  const auto tools = New<_CTools>(CLSID_CTools);
  UINT count = 0;
  EXPECT_EQ(tools->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(type.Obtain([&](ITypeInfo** received) { return tools->GetTypeInfo(0, 0, received); }), S_OK);
  Bstr name;
  type->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
  EXPECT_EQ(name.Text(), u"_CTools");
  ComPtr<ITypeInfo> class_type;
  ASSERT_EQ(class_type.Obtain([&](ITypeInfo** received) {
    return tools.Query<IProvideClassInfo>()->GetClassInfo(received);
  }),
            S_OK);
  Bstr class_name;
  class_type->GetDocumentation(MEMBERID_NIL, class_name.Receive(), nullptr, nullptr, nullptr);
  EXPECT_EQ(class_name.Text(), u"CTools");
}

TEST_F(Lifetime, StaysLoadedWhileAnObjectLives) {
  const auto tools = New<_CTools>(CLSID_CTools);
  EXPECT_EQ(CanUnload(), S_FALSE);
}

TEST_F(Lifetime, StaysLoadedWhileAFactoryLivesOrIsLocked) {
  auto factory = Factory(CLSID_CTools);
  EXPECT_EQ(CanUnload(), S_FALSE);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  factory = {};
  EXPECT_EQ(CanUnload(), S_FALSE);
  EXPECT_EQ(Factory(CLSID_CTools)->LockServer(FALSE), S_OK);
  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(Lifetime, RefusesAggregationAndStrangers) {
  const auto tools = New<_CTools>(CLSID_CTools);
  void* object = &object;
  EXPECT_EQ(Factory(CLSID_CTools)->CreateInstance(tools.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  EXPECT_FALSE(Factory(IID_IDispatch));
}

TEST_F(Lifetime, LeavesNothingBehindWhenCreationFails) {
  // Without an application there is no screen to lock.
  void* object = &object;
  EXPECT_EQ(Factory(CLSID_CLockScreen)->CreateInstance(nullptr, IID_IUnknown, &object),
            ErrorResult(kObjectNotSet));
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(TakeErrorObject().description, u"Object variable or With block variable not set");
}

TEST_F(Lifetime, LetsGoOfTheGlobalsBeforeItIsUnloaded) {
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  {
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    ASSERT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    ASSERT_EQ(global->InitToolBars(), S_OK);
  }
  EXPECT_EQ(CanUnload(), S_OK);
}

// The member goes on to thaw the screen of the globals' Excel, which the module lets go of when it is not in
// use.
TEST_F(Lifetime, LastsThroughACallInWhichTheCallerLetsGoOfTheLastObject) {
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  const DISPID screen_updating = IdOf(*excel, L"ScreenUpdating");
  for (const bool is_late : {false, true}) {
    auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    ASSERT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    Invoke(*excel, screen_updating, DISPATCH_PROPERTYPUT, {Number(0)}, {DISPID_PROPERTYPUT});
    const auto error = windows::NewDispatch();
    error->names = {u"Description"};
    error->invoke = [&](const windows::InvokeCall&) {
      global = {};
      EXPECT_EQ(CanUnload(), S_FALSE);
      return E_FAIL;
    };
    _gExcelObject* raw = global.get();
    const DISPID member = IdOf(*raw, L"ExcelReportError");
    EXPECT_EQ(is_late ? Invoke(*raw, member, kCall, {ObjectArgument(error.get())}).code
                      : raw->ExcelReportError(error.get()),
              S_OK);
    EXPECT_EQ(error->calls, 1);
    EXPECT_EQ(Invoke(*excel, screen_updating, DISPATCH_PROPERTYGET).value, Value(true)) << is_late;
    EXPECT_EQ(CanUnload(), S_OK);
  }
}

TEST_F(Lifetime, StandsObjectsThatBreakTheRules) {
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  const auto hostile = windows::NewDispatch();
  hostile->names = {u"Description", u"Visible"};
  short count = 0;

  // Interfaces refused with a code of success, and refused with rubbish in place of the object.
  for (const auto& refusal :
       std::vector<std::function<HRESULT(REFIID, void**)>>{[](REFIID, void**) { return S_FALSE; },
                                                           [](REFIID, void** result) {
                                                             *result = reinterpret_cast<void*>(8);
                                                             return E_NOINTERFACE;
                                                           }}) {
    hostile->query = refusal;
    EXPECT_EQ(global->InitConnectEX(hostile.get(), LeftOut(), hostile.get(), &count), S_OK);
  }
  hostile->query = nullptr;

  // An exception without a word about it, an answer of a type that does not exist, and a failure that leaves
  // its rubbish behind.
  for (const auto& answer : std::vector<std::function<HRESULT(const windows::InvokeCall&)>>{
           [](const windows::InvokeCall&) { return DISP_E_EXCEPTION; },
           [](const windows::InvokeCall& call) {
             call.result->vt = 0x0fff;
             return S_OK;
           },
           [](const windows::InvokeCall& call) {
             call.result->vt = VT_DISPATCH;
             call.result->pdispVal = nullptr;
             return E_FAIL;
           }}) {
    hostile->invoke = answer;
    EXPECT_EQ(global->ExcelReportError(hostile.get()), S_OK);
  }
  EXPECT_EQ(global->ResetConnectEX(LeftOut()), S_OK);
}

/// Less than one leaked object of 16 bytes in each of 10 000 rounds.
constexpr SIZE_T kLeak = 128 * 1024;

TEST_F(Lifetime, TheMeasureOfMemorySeesALeak) {
  const SIZE_T before = PrivateBytes();
  std::vector<Bstr> kept;
  for (int i = 0; i < 10000; ++i) kept.emplace_back(u"leak");
  EXPECT_GT(PrivateBytes(), before + kLeak);
}

TEST_F(Lifetime, DoesNotGrowInTenThousandRounds) {
  for (int i = 0; i < 1000; ++i) OneRound();
  ASSERT_EQ(CanUnload(), S_OK);
  // Some systems themselves grow for a while, which ends; what leaks does not.
  SIZE_T before = 0, after = 0;
  for (int attempt = 0; attempt == 0 || (attempt < 4 && after >= before + kLeak); ++attempt) {
    before = PrivateBytes();
    for (int i = 0; i < 10000; ++i) OneRound();
    EXPECT_EQ(CanUnload(), S_OK);
    after = PrivateBytes();
    std::cout << "private bytes: " << before << " before, " << after << " after 10 000 rounds\n";
  }
  EXPECT_LT(after, before + kLeak);
}

}  // namespace
}  // namespace qva::com
