#include "platform/windows/OwnObject.h"

#include "platform/member_table.h"
#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

class Thing : public Described<Thing> {
 public:
  static ClassBuilder Describe() { return ClassBuilder(u"Thing", ""); }
};

/// The COM object of an object, as a server makes it.
class Wrapper : public OwnObject, public TestDispatch {
 public:
  Wrapper(ObjectPtr object, const void* module) : object_(std::move(object)), module_(module) {
    query = [this](REFIID id, void** result) {
      *result = nullptr;
      if (id == __uuidof(OwnObject)) *result = static_cast<OwnObject*>(this);
      if (id == IID_IDispatch || id == IID_IUnknown) *result = static_cast<IDispatch*>(this);
      if (!*result) return E_NOINTERFACE;
      TestDispatch::AddRef();
      return S_OK;
    };
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override { return query(id, result); }
  ULONG STDMETHODCALLTYPE AddRef() override { return TestDispatch::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return TestDispatch::Release(); }
  HRESULT STDMETHODCALLTYPE Unwrap(OwnObjectQuestion* question) override {
    if (module_ == ThisModule()) return AnswerOwnObject(question, *object_);
    return S_OK;  // the answer of a module that was asked by another one
  }

 private:
  ObjectPtr object_;
  const void* module_;
};

class OwnObjectTest : public NothingLeftTest {
 protected:
  ~OwnObjectTest() override {
    InstallOwnObjectWrapper(nullptr);
    known_wrapper = {};
  }
  static inline ComPtr<IDispatch> known_wrapper;
};

TEST_F(OwnObjectTest, AnObjectOfTheLibraryComesBackAsItself) {
  const auto thing = MakeRef<Thing>();
  const auto wrapper = ComPtr<Wrapper>::Adopt(new Wrapper(thing, ThisModule()));
  EXPECT_EQ(ToObject(static_cast<IDispatch*>(wrapper.get())), ObjectPtr(thing));
  EXPECT_EQ(ToObject(static_cast<IUnknown*>(static_cast<IDispatch*>(wrapper.get()))), ObjectPtr(thing));
  EXPECT_EQ(thing->ReferenceCount(), 2);
}

TEST_F(OwnObjectTest, AnObjectOfAnotherModuleIsOneOfSomeoneElse) {
  const auto thing = MakeRef<Thing>();
  const int other_module = 0;
  const auto wrapper = ComPtr<Wrapper>::Adopt(new Wrapper(thing, &other_module));
  const ObjectPtr object = ToObject(static_cast<IDispatch*>(wrapper.get()));
  EXPECT_NE(object, ObjectPtr(thing));
  EXPECT_EQ(ToDispatch(object).get(), static_cast<IDispatch*>(wrapper.get()));
}

TEST_F(OwnObjectTest, TheQuestionOfAnotherModuleIsNotAnswered) {
  const auto thing = MakeRef<Thing>();
  const int other_module = 0;
  OwnObjectQuestion question{.module = &other_module};
  EXPECT_EQ(AnswerOwnObject(&question, *thing), S_OK);
  EXPECT_EQ(question.object, nullptr);
  EXPECT_EQ(AnswerOwnObject(nullptr, *thing), E_POINTER);
}

TEST_F(OwnObjectTest, GoesOutAsTheCOMObjectThatTheServerMakes) {
  const auto thing = MakeRef<Thing>();
  known_wrapper = ComPtr<IDispatch>::Adopt(static_cast<TestDispatch*>(new Wrapper(thing, ThisModule())));
  InstallOwnObjectWrapper([](const ObjectPtr&) { return ComPtr<IDispatch>(known_wrapper).Detach(); });
  const Variant variant = ToVariant(thing);
  EXPECT_EQ(variant->vt, VT_DISPATCH);
  EXPECT_EQ(variant->pdispVal, known_wrapper.get());
}

TEST_F(OwnObjectTest, CannotGoOutWithoutAServer) {
  EXPECT_EQ(RaisedBy([] { ToVariant(MakeRef<Thing>()); }), kInternalError);
}

}  // namespace
}  // namespace qva::windows
