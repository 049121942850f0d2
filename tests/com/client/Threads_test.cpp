// Threads of one process that each want objects of the library.
#include <thread>

#include "tests/com/client/apartment.h"

namespace qva::com {
namespace {

class Threads : public ServerTest {
 protected:
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

  /// What an entry of the module says to a thread that asks for a class.
  HRESULT AskForClass() const {
    void* factory = nullptr;
    const HRESULT code =
        Export<GetClassObject>("DllGetClassObject")(CLSID_CTools, IID_IClassFactory, &factory);
    EXPECT_EQ(SUCCEEDED(code), factory != nullptr);
    if (factory) static_cast<IUnknown*>(factory)->Release();
    return code;
  }

  OtherApartment other_;
};

TEST_F(Threads, OneIsToldThatAnotherOneHasObjects) {
  const auto tools = New<_CTools>(CLSID_CTools);
  HRESULT code = S_OK;
  ErrorObject error;
  other_.Run([&] {
    code = AskForClass();
    error = TakeErrorObject();
  });
  EXPECT_EQ(code, RPC_E_WRONG_THREAD);
  EXPECT_EQ(error.description,
            u"Objects of another thread are alive, and the library works for one thread at a time");
  EXPECT_EQ(AskForClass(), S_OK) << "the thread whose objects they are";
}

TEST_F(Threads, OneIsToldThatAnotherOneHasAFactoryOrALock) {
  auto factory = Factory(CLSID_CTools);
  HRESULT code = S_OK;
  const auto ask = [&] { code = AskForClass(); };
  other_.Run(ask);
  EXPECT_EQ(code, RPC_E_WRONG_THREAD);
  factory->LockServer(TRUE);
  factory = {};
  other_.Run(ask);
  EXPECT_EQ(code, RPC_E_WRONG_THREAD);
  Factory(CLSID_CTools)->LockServer(FALSE);
  other_.Run(ask);
  EXPECT_EQ(code, S_OK);
}

TEST_F(Threads, TheLibraryWorksForWhicheverHasObjects) {
  New<_CTools>(CLSID_CTools);
  ComPtr<_CButtonProperties> theirs;
  unsigned char count = 0;
  other_.Run([&] {
    theirs = New<_CButtonProperties>(CLSID_CButtonProperties);
    theirs->Add(2);
    theirs->get_TotalButtons(&count);
  });
  EXPECT_EQ(count, 2);
  EXPECT_EQ(AskForClass(), RPC_E_WRONG_THREAD);
  other_.Run([&] { theirs = {}; });
  EXPECT_TRUE(New<_CTools>(CLSID_CTools));
}

TEST_F(Threads, OneDoesNotGetWhatTheLibraryKeptForAnother) {
  const ComPtr<IDispatch> control = NewRegistered(L"QVA_TestBench.Control");
  const auto live = [&] { return Invoke(*control, IdOf(*control, L"LiveObjects"), kCall).value.ToInt32(); };
  const std::int32_t before = live();
  {
    const ComPtr<IDispatch> excel = NewRegistered(L"QVA_TestBench.Excel");
    const auto global = New<_gExcelObject>(CLSID_gExcelObject);
    short count = 0;
    EXPECT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
  }
  EXPECT_GT(live(), before) << "what is kept shows";
  other_.Run([&] { EXPECT_EQ(AskForClass(), S_OK); });
  EXPECT_EQ(live(), before);
}

/// Each creates an object, works with it and lets it go, again and again; at a time one of them alone is let
/// in.
TEST_F(Threads, DoNotMeetInTheLibraryHoweverTheyAsk) {
  std::atomic<int> inside = 0, most = 0, done = 0, refused = 0;
  const auto work = [&] {
    for (int i = 0; i < 1000000 && refused < 1000; ++i) {
      void* factory = nullptr;
      const HRESULT code =
          Export<GetClassObject>("DllGetClassObject")(CLSID_CButtonProperties, IID_IClassFactory, &factory);
      if (code == RPC_E_WRONG_THREAD) {
        ++refused;
        SetErrorInfo(0, nullptr);
        continue;
      }
      most = std::max(most.load(), ++inside);
      {
        const auto classes = ComPtr<IClassFactory>::Adopt(static_cast<IClassFactory*>(factory));
        ComPtr<_CButtonProperties> buttons;
        buttons.Obtain([&](_CButtonProperties** received) {
          return classes->CreateInstance(nullptr, __uuidof(_CButtonProperties),
                                         reinterpret_cast<void**>(received));
        });
        buttons->Add(1);
        --inside;
      }
      ++done;
    }
  };
  std::thread other([&work] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    work();
    CoUninitialize();
  });
  work();
  other.join();
  EXPECT_EQ(most, 1);
  EXPECT_GE(refused, 1000) << "they met at the door";
  EXPECT_GT(done, 0);
}

}  // namespace
}  // namespace qva::com
