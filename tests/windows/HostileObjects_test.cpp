// Objects that break COM's rules in the ways that are met in the field.
#include "platform/windows/OwnObject.h"
#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

class HostileObjectTest : public NothingLeftTest {
 protected:
  ComPtr<TestDispatch> dispatch = NewDispatch();
};

/// An address that leads nowhere.
template <class T>
T* Nowhere() {
  return reinterpret_cast<T*>(static_cast<ULONG_PTR>(0x10));
}

TEST_F(HostileObjectTest, SaysFalseToAnInterfaceAndGivesNone) {
  dispatch->query = [](REFIID, void** result) {
    *result = nullptr;
    return S_FALSE;
  };
  const ObjectPtr object = ObjectOver(dispatch);
  EXPECT_EQ(Get(object, u"Alpha"), Value());
  const ObjectPtr unknown = ToObject(static_cast<IUnknown*>(dispatch.get()));
  EXPECT_EQ(RaisedBy([&] { Get(unknown, u"Alpha"); }), kUnsupportedMember);
}

TEST_F(HostileObjectTest, RefusesAnInterfaceAndLeavesAnAddress) {
  dispatch->query = [](REFIID, void** result) {
    *result = Nowhere<void>();
    return E_NOINTERFACE;
  };
  EXPECT_EQ(Get(ObjectOver(dispatch), u"Alpha"), Value());
}

TEST_F(HostileObjectTest, SaysYesToEveryInterface) {
  dispatch->query = [&](REFIID, void** result) {
    *result = dispatch.get();
    dispatch->AddRef();
    return S_OK;
  };
  {
    const ObjectPtr object = ObjectOver(dispatch);
    EXPECT_EQ(Get(object, u"Alpha"), Value());
    EXPECT_EQ(ToDispatch(object).get(), static_cast<IDispatch*>(dispatch.get()));
  }
  EXPECT_EQ(dispatch->references, 1u);
}

TEST_F(HostileObjectTest, FailsAndLeavesAResultBehind) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.result->vt = VT_DISPATCH;
    call.result->pdispVal = Nowhere<IDispatch>();
    return E_FAIL;
  };
  EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), E_FAIL);
}

TEST_F(HostileObjectTest, FailsWithoutARaiseAndLeavesErrorInformationBehind) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->bstrSource = Nowhere<OLECHAR>();
    call.info->bstrDescription = Nowhere<OLECHAR>();
    return DISP_E_MEMBERNOTFOUND;
  };
  EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), kUnsupportedMember);
}

TEST_F(HostileObjectTest, RaisesWithoutErrorInformation) {
  dispatch->invoke = [](const InvokeCall&) { return DISP_E_EXCEPTION; };
  const auto error = ErrorOf([&] { Get(ObjectOver(dispatch), u"Alpha"); });
  EXPECT_EQ(error->number(), kAutomationFailed);
  EXPECT_EQ(error->description(), StandardDescription(kAutomationFailed));
}

TEST_F(HostileObjectTest, RaisesWithASuccessCode) {
  dispatch->invoke = [](const InvokeCall& call) {
    call.info->scode = S_FALSE;
    return DISP_E_EXCEPTION;
  };
  EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), kAutomationFailed);
}

TEST_F(HostileObjectTest, SucceedsWithoutTouchingTheResult) {
  dispatch->invoke = [](const InvokeCall&) { return S_OK; };
  EXPECT_EQ(Get(ObjectOver(dispatch), u"Alpha"), Value());
}

TEST_F(HostileObjectTest, ReturnsAResultOfNoType) {
  for (const int type : {0x7777, static_cast<int>(VT_VARIANT), static_cast<int>(VT_BYREF)}) {
    dispatch->invoke = [=](const InvokeCall& call) {
      call.result->vt = static_cast<VARTYPE>(type);
      call.result->byref = nullptr;
      return S_OK;
    };
    EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), kTypeMismatch) << type;
  }
}

TEST_F(HostileObjectTest, ReturnsAReferenceAsItsResult) {
  static LONG number = 5;
  dispatch->invoke = [](const InvokeCall& call) {
    call.result->vt = VT_BYREF | VT_I4;
    call.result->plVal = &number;
    return S_OK;
  };
  EXPECT_EQ(Get(ObjectOver(dispatch), u"Alpha"), Value(std::int32_t{5}));
}

TEST_F(HostileObjectTest, ResolvesANameWithoutGivingItsNumber) {
  dispatch->resolve = [](DISPID*) { return S_OK; };
  EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), kUnsupportedMember);
  EXPECT_EQ(dispatch->calls, 0);
}

TEST_F(HostileObjectTest, RefusesANameAndGivesANumber) {
  dispatch->resolve = [](DISPID* ids) {
    ids[0] = 1;
    return DISP_E_UNKNOWNNAME;
  };
  const ObjectPtr object = ObjectOver(dispatch);
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { Get(object, u"Alpha"); }), kUnsupportedMember) << "nothing was remembered";
  EXPECT_EQ(dispatch->calls, 0);
}

TEST_F(HostileObjectTest, CannotResolveNamesForAReasonOfItsOwn) {
  dispatch->resolve = [](DISPID*) { return RPC_E_DISCONNECTED; };
  EXPECT_EQ(RaisedBy([&] { Get(ObjectOver(dispatch), u"Alpha"); }), RPC_E_DISCONNECTED);
}

TEST_F(HostileObjectTest, DiesDuringTheCall) {
  ObjectPtr object = ObjectOver(dispatch);
  dispatch->invoke = [&](const InvokeCall& call) {
    const long alive = TestDispatch::LiveCount();
    object.reset();
    dispatch = {};
    EXPECT_EQ(TestDispatch::LiveCount(), alive) << "the call itself keeps the object";
    *call.result = ToVariant(u"last words").Detach();
    return S_OK;
  };
  Object& raw = *object;
  Arguments none;
  EXPECT_EQ(raw.Invoke(Access::Get, u"Alpha", none), Value(u"last words"));
  EXPECT_FALSE(object);
}

TEST_F(HostileObjectTest, DiesDuringTheCallAndFails) {
  ObjectPtr object = ObjectOver(dispatch);
  dispatch->invoke = [&](const InvokeCall&) {
    object.reset();
    dispatch = {};
    return RPC_E_DISCONNECTED;
  };
  Object& raw = *object;
  Arguments none;
  EXPECT_EQ(RaisedBy([&] { raw.Invoke(Access::Get, u"Alpha", none); }), RPC_E_DISCONNECTED);
}

TEST_F(HostileObjectTest, ChangesItsArguments) {
  dispatch->invoke = [](const InvokeCall& call) {
    VariantClear(&call.parameters.rgvarg[0]);
    call.parameters.rgvarg[0] = ToVariant(u"changed").Detach();
    return S_OK;
  };
  Arguments arguments{u"mine"};
  ObjectOver(dispatch)->Invoke(Access::Call, u"Alpha", arguments);
  EXPECT_EQ(arguments.positional[0], Value(u"mine"));
}

}  // namespace
}  // namespace qva::windows
