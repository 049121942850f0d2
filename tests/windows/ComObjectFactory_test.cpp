// Recordsets on a machine with an ADO that works, with one that does not, and with none that automation
// reaches.
#include "platform/windows/ComObjectFactory.h"

#include "platform/ado.h"
#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

/// Gives the objects of a function.
class TestFactory final : public IClassFactory {
 public:
  std::function<HRESULT(REFIID, void**)> create;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    *result = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    *result = this;
    return S_OK;
  }
  // A part of the test.
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** result) override {
    return create(id, result);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

class ComObjectFactoryTest : public NothingLeftTest {
 protected:
  ~ComObjectFactoryTest() override {
    if (registration) CoRevokeClassObject(registration);
  }
  /// Puts an ADO of ours in front of the machine's.
  void ReplaceAdo() {
    CLSID class_id;
    ASSERT_EQ(CLSIDFromProgID(L"ADODB.Recordset", &class_id), S_OK);
    ASSERT_EQ(CoRegisterClassObject(class_id, &ado_factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &registration),
              S_OK);
  }
  /// Makes the ADO of ours give out an object whose State is answered by `invoke`.
  void GiveOut(std::function<HRESULT(const InvokeCall&)> invoke) {
    ado_factory.create = [this, invoke](REFIID id, void** result) {
      ++created;
      const auto recordset = NewDispatch();
      recordset->names = {u"State"};
      recordset->invoke = invoke;
      return recordset->QueryInterface(id, result);
    };
  }
  /// True for a recordset in memory that works.
  static bool IsInMemory(const ObjectPtr& object) {
    if (!object->MemberTable()) return false;
    const ado::Recordset recordset(object);
    recordset.Fields().Append(u"Code", ado::adVarChar, 5, ado::adFldUnspecified);
    recordset.Open();
    recordset.AddNew(u"Code", u"a");
    return recordset.RecordCount() == 1;
  }

  ComObjectFactory factory;
  TestFactory ado_factory;
  DWORD registration = 0;
  int created = 0;
};

TEST_F(ComObjectFactoryTest, TakesTheADOThatAnswers) {
  ReplaceAdo();
  GiveOut([](const InvokeCall& call) {
    call.result->vt = VT_I4;
    call.result->lVal = 0;
    return S_OK;
  });
  const ObjectPtr recordset = factory.Create(u"adodb.recordset");
  EXPECT_EQ(created, 1);
  EXPECT_EQ(recordset->MemberTable(), nullptr);
  EXPECT_EQ(Get(recordset, u"State").ToInt32(), 0);
}

TEST_F(ComObjectFactoryTest, TakesTheRecordsetInMemoryForAnADOThatRefusesEveryCall) {
  ReplaceAdo();
  GiveOut([](const InvokeCall&) { return TYPE_E_LIBNOTREGISTERED; });
  EXPECT_TRUE(IsInMemory(factory.Create(u"ADODB.Recordset")));
  EXPECT_EQ(created, 1);
}

TEST_F(ComObjectFactoryTest, TakesTheRecordsetInMemoryForAnADOThatCannotBeCreated) {
  ReplaceAdo();
  ado_factory.create = [this](REFIID, void**) {
    ++created;
    return E_NOINTERFACE;
  };
  EXPECT_TRUE(IsInMemory(factory.Create(u"ADODB.Recordset")));
  EXPECT_EQ(created, 1);
}

TEST_F(ComObjectFactoryTest, GivesARecordsetThatWorksOnThisMachine) {
  const ado::Recordset recordset = ado::Recordset::Create(factory);
  recordset.Fields().Append(u"Code", ado::adVarChar, 5, ado::adFldUnspecified);
  recordset.Fields().Append(u"Id", ado::adCurrency, 0, ado::adFldIsNullable);
  recordset.Open();
  recordset.AddNew(Array::Of({u"Code", u"Id"}), Array::Of({u"a", 5}));
  recordset.AddNew(Array::Of({u"Code"}), Array::Of({u"b"}));
  recordset.MoveFirst();
  const ado::Recordset clone = recordset.Clone();
  EXPECT_EQ(clone.GetRows().ToArray().elements, (std::vector<Value>{u"a", u"b", Currency{50000}, Null()}));
  recordset.Delete();
  EXPECT_EQ(clone.RecordCount(), 1);
  EXPECT_EQ(ErrorNumberIn([&] { recordset.Fields().Item(u"None"); }), ado::adErrItemNotFound);
}

}  // namespace
}  // namespace qva::windows
