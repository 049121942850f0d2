#include "platform/windows/DispatchObject.h"

#include <dispex.h>

#include <limits>

#include "platform/windows/Busy.h"
#include "tests/windows/test_types.h"
#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

/// While it lives, pauses are counted instead of made, and the time is what they would have taken.
class CountedPauses {
 public:
  CountedPauses() { current_ = this; }
  CountedPauses(const CountedPauses&) = delete;
  CountedPauses& operator=(const CountedPauses&) = delete;
  ~CountedPauses() { current_ = nullptr; }

  int count = 0;

  static void WINAPI Pause(DWORD milliseconds) {
    if (!current_) return Own<decltype(&Sleep)>("Sleep")(milliseconds);
    ++current_->count;
    current_->time_ += milliseconds;
  }
  static ULONGLONG WINAPI Time() {
    return current_ ? current_->time_ : Own<decltype(&GetTickCount64)>("GetTickCount64")();
  }

 private:
  /// Windows' own function.
  template <class Function>
  static Function Own(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), name)));
  }

  static inline CountedPauses* current_ = nullptr;
  ULONGLONG time_ = 0;
};

}  // namespace

/// In the place of what the linker would take from Windows' import library.
#ifdef _WIN64
decltype(&Sleep) sleep_import asm("__imp_Sleep") = &CountedPauses::Pause;
decltype(&GetTickCount64) tick_count_import asm("__imp_GetTickCount64") = &CountedPauses::Time;
#else
decltype(&Sleep) sleep_import asm("__imp__Sleep@4") = &CountedPauses::Pause;
decltype(&GetTickCount64) tick_count_import asm("__imp__GetTickCount64@0") = &CountedPauses::Time;
#endif

namespace {

using testing::ElementsAre;

constexpr int kBusyPauses = kBusyLimitMilliseconds / kBusyPauseMilliseconds;

class DispatchObjectTest : public NothingLeftTest {
 protected:
  /// What the object saw of a call.
  struct Seen {
    DISPID id = 0;
    WORD flags = 0;
    std::vector<Value> arguments;  ///< as they lie, from the first in memory
    std::vector<DISPID> names;
    bool wants_result = false;
  };

  DispatchObjectTest() {
    dispatch->invoke = [this](const InvokeCall& call) {
      seen = {.id = call.id, .flags = call.flags, .wants_result = call.result != nullptr};
      for (UINT i = 0; i < call.parameters.cArgs; ++i) {
        seen.arguments.push_back(FromVariant(call.parameters.rgvarg[i]));
      }
      for (UINT i = 0; i < call.parameters.cNamedArgs; ++i) {
        seen.names.push_back(call.parameters.rgdispidNamedArgs[i]);
      }
      if (call.result) *call.result = ToVariant(u"result").Detach();
      return S_OK;
    };
  }

  /// Makes the object answer every call with a code and a place of the argument that is at fault.
  void Fail(HRESULT code, std::optional<UINT> place = {}) {
    dispatch->invoke = [=](const InvokeCall& call) {
      if (place && call.argument) *call.argument = *place;
      return code;
    };
  }

  ComPtr<TestDispatch> dispatch = NewDispatch();
  ObjectPtr object = ObjectOver(dispatch);
  Seen seen;
};

TEST_F(DispatchObjectTest, GetAndCallReachPropertiesAndMethods) {
  EXPECT_EQ(Get(object, u"Alpha"), Value(u"result"));
  EXPECT_EQ(seen.id, 1);
  EXPECT_EQ(seen.flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
  EXPECT_EQ(Call(object, u"Beta"), Value(u"result"));
  EXPECT_EQ(seen.id, 2);
  EXPECT_EQ(seen.flags, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
  EXPECT_TRUE(seen.arguments.empty());
}

TEST_F(DispatchObjectTest, TheEmptyNameIsTheDefaultMember) {
  Get(object, u"", {std::int16_t{1}});
  EXPECT_EQ(seen.id, DISPID_VALUE);
  EXPECT_EQ(dispatch->lookups, 0);
}

TEST_F(DispatchObjectTest, PassesArgumentsFromLastToFirstWithTheNamedOnesBeforeThem) {
  Call(object, u"Alpha",
       Arguments{std::int16_t{1}, u"two", Missing{}}.Named(u"Gamma", 3.5).Named(u"beta", true));
  EXPECT_THAT(seen.arguments,
              ElementsAre(Value(3.5), Value(true), Value(Missing{}), Value(u"two"), Value(std::int16_t{1})));
  EXPECT_THAT(seen.names, ElementsAre(3, 2));
}

TEST_F(DispatchObjectTest, PutsTheNewValueAsTheArgumentThatIsNamedForIt) {
  Put(object, u"Alpha", u"new");
  EXPECT_EQ(seen.flags, DISPATCH_PROPERTYPUT);
  EXPECT_THAT(seen.names, ElementsAre(DISPID_PROPERTYPUT));
  EXPECT_THAT(seen.arguments, ElementsAre(Value(u"new")));
  EXPECT_FALSE(seen.wants_result);

  Arguments indexed{std::int16_t{1}, std::int16_t{2}, u"new"};
  indexed.Named(u"Beta", 7.0);
  object->Invoke(Access::PutRef, u"Alpha", indexed);
  EXPECT_EQ(seen.flags, DISPATCH_PROPERTYPUTREF);
  EXPECT_THAT(seen.names, ElementsAre(DISPID_PROPERTYPUT, 2));
  EXPECT_THAT(seen.arguments,
              ElementsAre(Value(u"new"), Value(7.0), Value(std::int16_t{2}), Value(std::int16_t{1})));
}

TEST_F(DispatchObjectTest, APutWithoutAValueIsAWrongNumberOfArguments) {
  Arguments none;
  EXPECT_EQ(RaisedBy([&] { object->Invoke(Access::Put, u"Alpha", none); }), kWrongArgumentCount);
}

TEST_F(DispatchObjectTest, UnknownNamesAreErrors) {
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Delta"); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Call(object, u"Delta", Arguments{}.Named(u"Beta", 1.0)); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Call(object, u"Alpha", Arguments{}.Named(u"Delta", 1.0)); }),
            kNamedArgumentNotFound);
  EXPECT_EQ(RaisedBy([&] { Call(object, u"", Arguments{}.Named(u"Beta", 1.0)); }), kNamedArgumentNotFound);
  EXPECT_EQ(dispatch->calls, 0);
}

TEST_F(DispatchObjectTest, ProtocolErrorsHaveThePlatformsNumbers) {
  const std::pair<HRESULT, std::int32_t> cases[] = {
      {DISP_E_UNKNOWNNAME, 438},
      {DISP_E_MEMBERNOTFOUND, 438},
      {DISP_E_BADPARAMCOUNT, 450},
      {DISP_E_TYPEMISMATCH, 13},
      {DISP_E_OVERFLOW, 6},
      {DISP_E_PARAMNOTOPTIONAL, 449},
      {DISP_E_PARAMNOTFOUND, 448},
      {DISP_E_BADINDEX, 9},
      {E_OUTOFMEMORY, 7},
      {REGDB_E_CLASSNOTREG, 429},
      {static_cast<HRESULT>(0x800A03EC), 1004},
      {RPC_E_DISCONNECTED, RPC_E_DISCONNECTED},
  };
  for (const auto& [code, number] : cases) {
    Fail(code);
    const auto error = ErrorOf([&] { Get(object, u"Alpha"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number(), number) << std::hex << code;
    EXPECT_FALSE(error->description().empty());
  }
}

TEST_F(DispatchObjectTest, ErrorsTellTheCallersPositionOfTheArgument) {
  Fail(DISP_E_TYPEMISMATCH, 2);  // the first positional one: it lies last
  Arguments arguments{1.0, 2.0};
  arguments.Named(u"Gamma", 3.0);
  EXPECT_EQ(ErrorOf([&] { Call(object, u"Alpha", arguments); })->argument(), 0);
  Fail(DISP_E_OVERFLOW, 1);
  EXPECT_EQ(ErrorOf([&] { Call(object, u"Alpha", arguments); })->argument(), 1);
  Fail(DISP_E_TYPEMISMATCH, 0);
  EXPECT_EQ(ErrorOf([&] { Call(object, u"Alpha", arguments); })->argument(), 2);
  Fail(DISP_E_TYPEMISMATCH, 77);
  EXPECT_EQ(ErrorOf([&] { Call(object, u"Alpha", arguments); })->argument(), -1);
  Fail(DISP_E_TYPEMISMATCH);
  EXPECT_EQ(ErrorOf([&] { Call(object, u"Alpha", arguments); })->argument(), -1);
}

TEST_F(DispatchObjectTest, KeepsWhatTheObjectTellsOfItsError) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->scode = static_cast<SCODE>(0x80040001);
    call.info->bstrSource = Bstr(u"Šaltinis").Detach();
    call.info->bstrDescription = Bstr(u"Aprašymas").Detach();
    call.info->bstrHelpFile = Bstr(u"help.chm").Detach();
    return DISP_E_EXCEPTION;
  };
  const auto error = ErrorOf([&] { Get(object, u"Alpha"); });
  EXPECT_EQ(error->number(), kObjectErrorBase + 1);
  EXPECT_EQ(error->source(), u"Šaltinis");
  EXPECT_EQ(error->description(), u"Aprašymas");
}

HRESULT STDMETHODCALLTYPE FillInLater(EXCEPINFO* info) {
  info->bstrDescription = Bstr(u"later").Detach();
  return S_OK;
}

TEST_F(DispatchObjectTest, FetchesErrorInformationThatTheObjectPutOff) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->scode = static_cast<SCODE>(0x800A03EC);
    call.info->pfnDeferredFillIn = &FillInLater;
    return DISP_E_EXCEPTION;
  };
  const auto error = ErrorOf([&] { Get(object, u"Alpha"); });
  EXPECT_EQ(error->number(), kApplicationDefined);
  EXPECT_EQ(error->description(), u"later");
}

TEST_F(DispatchObjectTest, TakesTheNumberFromEitherFieldOfTheErrorInformation) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->wCode = 1234;
    return DISP_E_EXCEPTION;
  };
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), 1234);
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->scode = E_OUTOFMEMORY;
    return DISP_E_EXCEPTION;
  };
  const auto error = ErrorOf([&] { Get(object, u"Alpha"); });
  EXPECT_EQ(error->number(), kOutOfMemory);
  EXPECT_EQ(error->description(), StandardDescription(kOutOfMemory));
}

TEST_F(DispatchObjectTest, ResolvesANameOnceInWhateverLetterCase) {
  for (int i = 0; i < 5; ++i) {
    Get(object, u"Alpha");
    Get(object, u"ALPHA");
    Put(object, u"alpha", 1.0);
  }
  EXPECT_EQ(dispatch->lookups, 1);
  Call(object, u"Alpha", Arguments{}.Named(u"Beta", 1.0));
  Call(object, u"Alpha", Arguments{}.Named(u"BETA", 1.0));
  EXPECT_EQ(dispatch->lookups, 2);
  Get(object, u"Gamma");
  EXPECT_EQ(dispatch->lookups, 3);
}

TEST_F(DispatchObjectTest, TellsNamesApartThatStandInOnePlaceOneAfterTheOther) {
  std::vector<DISPID> ids;
  std::u16string name;
  for (const std::u16string_view next : {u"Alpha", u"Gamma", u"Alpha", u"Alpha", u"Gamma", u"Gamma"}) {
    name.assign(next);
    Get(object, name);
    ids.push_back(seen.id);
  }
  EXPECT_NE(ids[0], ids[1]);
  EXPECT_THAT(ids, ElementsAre(ids[0], ids[1], ids[0], ids[0], ids[1], ids[1]));
}

TEST_F(DispatchObjectTest, ObjectsOfOneTypeShareTheirNames) {
  const ComPtr<ITypeInfo> type = NewType(u"_Range");
  const std::uint64_t before = DispatchNames::LookupCount();
  for (int i = 0; i < 10; ++i) {
    const auto one = NewDispatch();
    one->type = type;
    const ObjectPtr over = ObjectOver(one);
    Get(over, u"Alpha");
    Get(over, u"Beta");
    EXPECT_EQ(over->TypeName(), u"Range");
  }
  EXPECT_EQ(DispatchNames::LookupCount() - before, 2u);
}

TEST_F(DispatchObjectTest, ObjectsWithoutATypeOfTheirOwnShareNothing) {
  for (const bool has_type : {false, true}) {
    const auto first = NewDispatch();
    const auto second = NewDispatch();
    second->names = {u"Gamma", u"Alpha"};
    if (has_type) {
      const auto nameless = ComPtr<ITypeInfo>(new TestType(GUID_NULL, u"Class"));
      first->type = nameless;
      second->type = nameless;
    }
    int first_id = 0;
    int second_id = 0;
    first->invoke = [&](const InvokeCall& call) { return first_id = call.id, S_OK; };
    second->invoke = [&](const InvokeCall& call) { return second_id = call.id, S_OK; };
    Get(ObjectOver(first), u"Alpha");
    Get(ObjectOver(second), u"Alpha");
    EXPECT_EQ(first_id, 1);
    EXPECT_EQ(second_id, 2);
  }
}

TEST_F(DispatchObjectTest, ObjectsThatMayGrowShareNothing) {
  const ComPtr<ITypeInfo> type = NewType(u"ScriptObject");
  for (const int position : {1, 2, 1}) {
    const auto one = NewDispatch();
    one->type = type;
    one->query = [&](REFIID id, void** result) {
      // An IDispatchEx is an IDispatch with further members, which nobody here calls.
      const bool is_known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(IDispatchEx);
      *result = is_known ? one.get() : nullptr;
      if (is_known) one->AddRef();
      return is_known ? S_OK : E_NOINTERFACE;
    };
    if (position == 2) one->names = {u"Gamma", u"Alpha"};
    int id = 0;
    one->invoke = [&](const InvokeCall& call) { return id = call.id, S_OK; };
    Get(ObjectOver(one), u"Alpha");
    EXPECT_EQ(id, position);
    one->query = nullptr;
  }
}

TEST_F(DispatchObjectTest, AnObjectWithoutTypeInformationIsAnObject) {
  EXPECT_EQ(object->TypeName(), u"Object");
}

TEST_F(DispatchObjectTest, AsksABusyServerAgain) {
  for (const HRESULT busy :
       {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER, static_cast<HRESULT>(0x800AC472)}) {
    int asked = 0;
    dispatch->invoke = [&](const InvokeCall& call) {
      if (++asked < 3) return busy;
      *call.result = ToVariant(u"done").Detach();
      return S_OK;
    };
    EXPECT_EQ(Get(object, u"Alpha"), Value(u"done"));
    EXPECT_EQ(asked, 3);
  }
}

TEST_F(DispatchObjectTest, AsksABusyServerAgainForTheIdOfAName) {
  dispatch->resolve = [&](DISPID* ids) {
    if (dispatch->lookups < 3) return RPC_E_SERVERCALL_RETRYLATER;
    ids[0] = 2;
    return S_OK;
  };
  EXPECT_EQ(Get(object, u"Beta"), Value(u"result"));
  EXPECT_EQ(seen.id, 2);
  EXPECT_EQ(dispatch->lookups, 3);
}

TEST_F(DispatchObjectTest, GivesUpOnAServerThatStaysBusy) {
  Fail(RPC_E_CALL_REJECTED);
  const CountedPauses pauses;
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), RPC_E_CALL_REJECTED);
  EXPECT_EQ(pauses.count, kBusyPauses);
  EXPECT_EQ(dispatch->calls, kBusyPauses + 1);
}

TEST_F(DispatchObjectTest, AnOperationOfManyCallsWaitsForABusyServerOnce) {
  Fail(RPC_E_CALL_REJECTED);
  const BusyBudget operation;
  const CountedPauses pauses;
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), RPC_E_CALL_REJECTED);
  const int calls = dispatch->calls;
  for (int i = 0; i < 47; ++i) {
    EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), RPC_E_CALL_REJECTED);
  }
  EXPECT_EQ(pauses.count, kBusyPauses);
  EXPECT_EQ(dispatch->calls, calls + 47) << "each is tried";
}

TEST_F(DispatchObjectTest, EachOperationWaitsForABusyServerAnew) {
  int asked = 0;
  int refused = std::numeric_limits<int>::max();
  const CountedPauses pauses;
  dispatch->invoke = [&](const InvokeCall& call) {
    if (++asked <= refused) return RPC_E_CALL_REJECTED;
    *call.result = ToVariant(u"done").Detach();
    return S_OK;
  };
  {
    const BusyBudget operation;
    EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), RPC_E_CALL_REJECTED) << "all is used up";
  }
  const BusyBudget operation;
  refused = asked + 2;
  EXPECT_EQ(Get(object, u"Alpha"), Value(u"done"));
}

TEST_F(DispatchObjectTest, AnOperationThatShowsADialogWaitsForABusyServerAnew) {
  int asked = 0;
  int refused = std::numeric_limits<int>::max();
  dispatch->invoke = [&](const InvokeCall& call) {
    if (++asked <= refused) return RPC_E_CALL_REJECTED;
    *call.result = ToVariant(u"done").Detach();
    return S_OK;
  };
  const BusyBudget operation;
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), RPC_E_CALL_REJECTED) << "all is used up";
  Sleep(kBusyLimitMilliseconds + 100);  // the user's time
  refused = asked + 2;
  EXPECT_EQ(Get(object, u"Alpha"), Value(u"done"));
}

TEST_F(DispatchObjectTest, ReferencesAreBackWhereTheyWere) {
  const auto argument = NewDispatch();
  for (int i = 0; i < 100; ++i) Call(object, u"Alpha", {ObjectOver(argument), u"text"});
  seen = {};
  EXPECT_EQ(argument->references, 1u);
  EXPECT_EQ(dispatch->references, 2u);
  object.reset();
  EXPECT_EQ(dispatch->references, 1u);
}

}  // namespace
}  // namespace qva::windows
