// The library as it is shipped, where memory runs out within it.
#include <cstring>

#include "platform/error.h"
#include "platform/excel_constants.h"
#include "server/PublicClasses.h"
#include "tests/com/client/member_calls.h"
#include "tests/windows/windows_test.h"

namespace qva::com {
namespace {

/// Where a loaded library keeps the address of a function that it imports by name.
void** ImportedFunction(HMODULE library, const char* name) {
  auto* const base = reinterpret_cast<BYTE*>(library);
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
  const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* module = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports); module->Name;
       ++module) {
    auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
    auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++addresses) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(import->Name), name) == 0) {
        return reinterpret_cast<void**>(&addresses->u1.Function);
      }
    }
  }
  return nullptr;
}

/// Whether one block of memory is refused, or every later one, too.
enum class Repeat { Once, ForEver };

/// Lets the n-th block of memory that the library asks for from now on be refused; the others are given. One
/// at a time.
class RefusedMemory {
 public:
  explicit RefusedMemory(int at, Repeat repeat = Repeat::Once)
      : malloc_(ImportedFunction(GetModuleHandleW(LibraryPath().c_str()), "malloc")) {
    if (!malloc_) throw std::runtime_error("the library imports no malloc");
    countdown = at;
    is_for_ever = repeat == Repeat::ForEver;
    original = *malloc_;
    Put(reinterpret_cast<void*>(&Malloc));
  }
  ~RefusedMemory() { Put(original); }
  RefusedMemory(const RefusedMemory&) = delete;
  RefusedMemory& operator=(const RefusedMemory&) = delete;

  bool was_refused() const { return countdown <= 0; }

 private:
  static void* __cdecl Malloc(std::size_t size) {
    --countdown;
    if (countdown == 0 || (countdown < 0 && is_for_ever)) return nullptr;
    return reinterpret_cast<void*(__cdecl*)(std::size_t)>(original)(size);
  }
  void Put(void* function) const {
    DWORD before = 0;
    VirtualProtect(malloc_, sizeof *malloc_, PAGE_READWRITE, &before);
    *malloc_ = function;
    VirtualProtect(malloc_, sizeof *malloc_, before, &before);
  }

  static inline int countdown = 0;
  static inline bool is_for_ever = false;
  static inline void* original = nullptr;
  void** malloc_;
};

class OutOfMemory : public ServerTest {
 protected:
  OutOfMemory() {
    const auto host = NewRegistered(L"NVXCommonObjects.CommonObjects");
    const Bstr code(u"MEDVILNE");
    const Answer book = Invoke(*host, IdOf(*host, L"CreateBook"), kCall, {Text(code)});
    short count = 0;
    EXPECT_EQ(global_->InitConnectEX(excel_.get(), LeftOut(),
                                     windows::ToDispatch(book.value.ToObject()).get(), &count),
              S_OK);
  }

  Value Read(const wchar_t* property) const {
    return Invoke(*excel_, IdOf(*excel_, property), DISPATCH_PROPERTYGET).value;
  }
  void Put(const wchar_t* property, VARIANT value) const {
    Invoke(*excel_, IdOf(*excel_, property), DISPATCH_PROPERTYPUT, {value}, {DISPID_PROPERTYPUT});
  }
  /// A new object of a factory's class; nothing where it cannot be made.
  template <class Interface>
  static ComPtr<Interface> TryNew(IClassFactory& factory) {
    ComPtr<Interface> object;
    object.Obtain([&](Interface** received) {
      return factory.CreateInstance(nullptr, __uuidof(Interface), reinterpret_cast<void**>(received));
    });
    return object;
  }

  /// Refuses the library's requests for memory one by one until an object is created; gives how many.
  static int RefusedCreations(IClassFactory& factory, Repeat repeat) {
    for (int n = 1;; ++n) {
      void* created = nullptr;
      HRESULT code = E_UNEXPECTED;
      bool was_refused = false;
      {
        const RefusedMemory memory(n, repeat);
        code = factory.CreateInstance(nullptr, IID_IDispatch, &created);
        was_refused = memory.was_refused();
      }
      const auto object = ComPtr<IDispatch>::Adopt(static_cast<IDispatch*>(created));
      EXPECT_EQ(static_cast<bool>(object), code == S_OK) << n;
      // Some of what is made can be done without.
      const bool is_told = code == E_OUTOFMEMORY || code == ErrorResult(kOutOfMemory);
      EXPECT_TRUE(code == S_OK || (was_refused && is_told)) << n << ": " << std::hex << code;
      if (!was_refused || HasFailure()) return n - 1;
    }
  }

  /// The same of a member, called on a new object each time. Its outcome is the error, or what it is without
  /// a refusal.
  int RefusedCalls(IClassFactory& factory, const Member& member, Repeat repeat) {
    const auto call = [&](int refused, bool& was_refused) {
      user_key_.Empty();
      short count = 0;
      EXPECT_EQ(global_->InitConnectEX(excel_.get(), LeftOut(), excel_.get(), &count), S_OK);
      const auto object = TryNew<IDispatch>(factory);
      std::deque<TestArgument> arguments = ArgumentsOf(member, NewOwnObjects(member));
      const DISPID id = IdOf(*object, windows::WideText(member.name).c_str());
      const RefusedMemory memory(refused, repeat);
      Answer answer = InvokeMember(*object, id, member, arguments);
      was_refused = memory.was_refused();
      return answer;
    };
    constexpr int kNone = 1 << 30;
    bool was_refused = false;
    const Answer undisturbed = call(kNone, was_refused);
    for (int n = 1;; ++n) {
      const Answer answer = call(n, was_refused);
      const bool is_told = answer.code == DISP_E_EXCEPTION &&
                           answer.error_code == ErrorResult(kOutOfMemory) &&
                           answer.description == u"Out of memory";
      const bool is_same = answer.code == undisturbed.code && answer.error_code == undisturbed.error_code;
      EXPECT_TRUE(is_same || (was_refused && is_told)) << n << ": " << std::hex << answer.error_code;
      if (!was_refused || HasFailure()) return n - 1;
      bool is_refused_anew = false;
      EXPECT_EQ(call(kNone, is_refused_anew).error_code, undisturbed.error_code) << "the next call";
    }
  }

  bool IsScreenLive() const { return Read(L"ScreenUpdating").ToBoolean(); }

  OwnUserKey user_key_;
  ComPtr<IDispatch> excel_ = NewRegistered(L"QVA_TestBench.Excel");
  ComPtr<_gExcelObject> global_ = New<_gExcelObject>(CLSID_gExcelObject);
};

TEST_F(OutOfMemory, EndsNothingWhereAScreenLockIsLetGo) {
  const Bstr busy(u"Skaičiuojama");
  int refused = 0;
  for (bool was_refused = true; was_refused; refused += was_refused) {
    auto lock = New<_CLockScreen>(CLSID_CLockScreen);
    Put(L"StatusBar", Text(busy));
    ASSERT_FALSE(IsScreenLive());
    {
      const RefusedMemory memory(refused + 1);
      lock = {};
      was_refused = memory.was_refused();
    }
    // Whichever step it was, the two others are taken.
    const int left = !IsScreenLive() + (Read(L"Cursor") == Value(std::int32_t{xlWait})) +
                     (Read(L"StatusBar") == Value(busy.Text()));
    EXPECT_LE(left, was_refused ? 1 : 0) << refused + 1;
  }
  EXPECT_GE(refused, 3) << "not every step ran out of memory";
}

TEST_F(OutOfMemory, EndsNothingWhereAnErrorIsReported) {
  const auto error = windows::NewDispatch();
  error->names = {u"Description"};
  error->invoke = [](const windows::InvokeCall& call) {
    *call.result = windows::ToVariant(u"Neapdorota klaida").Detach();
    return S_OK;
  };
  int refused = 0;
  int without_description = 0;
  for (bool was_refused = true; was_refused; refused += was_refused) {
    Put(L"ScreenUpdating", Number(0));
    const int asked = error->calls;
    HRESULT code = E_UNEXPECTED;
    {
      const RefusedMemory memory(refused + 1);
      code = global_->ExcelReportError(error.get());
      was_refused = memory.was_refused();
    }
    // The call itself may not have come to pass; what did goes on behind a step that failed.
    if (code != S_OK) {
      EXPECT_EQ(code, ErrorResult(kOutOfMemory)) << refused + 1;
    } else if (error->calls == asked || !was_refused) {
      EXPECT_TRUE(IsScreenLive()) << refused + 1;
      ++without_description;
    }
  }
  EXPECT_GE(without_description, 2) << "the description was always asked for";
  EXPECT_GE(error->calls, 3) << "no later step ran out of memory";
}

TEST_F(OutOfMemory, IsAnErrorOfEveryMemberAndOfEveryCreationAndNothingStaysOfIt) {
  std::size_t members = 0;
  int refusals = 0;
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    const auto factory = PublicFactory(table.name());
    SCOPED_TRACE(ToUtf8(table.name()));
    for (const Repeat repeat : {Repeat::Once, Repeat::ForEver}) {
      refusals += RefusedCreations(*factory, repeat);
      for (const Member& member : table.members()) {
        SCOPED_TRACE(ToUtf8(member.name));
        refusals += RefusedCalls(*factory, member, repeat);
        members += repeat == Repeat::Once;
      }
    }
  }
  EXPECT_GT(members, 100u) << "the tables are there";
  EXPECT_GT(refusals, 1000);
  RecordProperty("refusals", refusals);
}

TEST_F(OutOfMemory, EndsNothingAndLeavesTheScreenLiveWhereverItHappensInASession) {
  const auto reports_factory = Factory(CLSID_CReports);
  const auto period_factory = Factory(CLSID_CRepPeriod);
  const auto form_factory = Factory(CLSID_CSaveForm);
  const Bstr caption(u"Balansas"), address(u"B2:C3");
  const auto sheet = windows::ToDispatch(Read(L"ActiveSheet").ToObject());
  const Value range = Invoke(*sheet, IdOf(*sheet, L"Range"), kCall, {Text(address)}).value;
  const auto cells = windows::ToDispatch(range.ToObject());
  for (const Repeat repeat : {Repeat::Once, Repeat::ForEver}) {
    int refused = 0;
    for (bool was_refused = true; was_refused; refused += was_refused) {
      {
        const RefusedMemory memory(refused + 1, repeat);
        short count = 0;
        global_->InitConnectEX(excel_.get(), LeftOut(), nullptr, &count);
        global_->InitToolBars();
        global_->InitEnvironment();
        ComPtr<_CEnvironment> environment;
        environment.Obtain([&](_CEnvironment** received) { return global_->get_oEnvironment(received); });
        if (environment) {
          environment->SetDefaultAppState(VARIANT_FALSE);
          environment->SetDefaultExcelState();
        }
        if (const auto reports = TryNew<_CReports>(*reports_factory)) {
          reports->Init(caption.get());
          reports->Locking(cells.get());
          reports->ColorRanges(cells.get(), nullptr, nullptr, VARIANT_TRUE);
          reports->ClearFormulas(cells.get());
        }
        if (const auto period = TryNew<_CRepPeriod>(*period_factory)) {
          VARIANT_BOOL edited = VARIANT_FALSE;
          period->Init(sheet.get());
          period->Edit(&edited);
        }
        if (const auto form = TryNew<_CSaveForm>(*form_factory)) form->Init();
        environment = {};
        global_->ResetEnvironment();
        global_->ResetToolBars();
        was_refused = memory.was_refused();
      }
      // With none at all the screen cannot be asked to go on.
      if (repeat == Repeat::Once) {
        ASSERT_TRUE(IsScreenLive()) << refused + 1;
      }
      Put(L"ScreenUpdating", Number(-1));
    }
    EXPECT_GE(refused, 500) << "a session asks for more memory";
  }
}

}  // namespace
}  // namespace qva::com
