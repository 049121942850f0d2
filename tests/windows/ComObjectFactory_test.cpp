// Recordsets on a machine with an ADO that works, with those that lose data, and with none that automation
// reaches.
#include "platform/windows/ComObjectFactory.h"

#include "platform/ado.h"
#include "platform/recordset/RecordsetFactory.h"
#include "tests/platform/object_factory_contract.h"
#include "tests/windows/windows_test.h"

namespace qva {
namespace {

struct ComSystem {
  static constexpr std::u16string_view kKnown = ado::kRecordset;
  ObjectFactory& factory() { return com; }

  windows::ComObjectFactory com;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(ComObjectFactory, ObjectFactoryContract, ComSystem);

}  // namespace qva

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

/// What an ADO of the tests does in its own way: given the object, the member and its arguments, the result
/// of the member; none where it does what ADO does.
using Flaw = std::function<std::optional<Value>(const ObjectPtr&, std::u16string_view, Arguments&)>;

/// The COM object of a recordset in memory, or of what it gives out, with a flaw.
ComPtr<TestDispatch> Disguised(const ObjectPtr& object, const Flaw& flaw) {
  const auto dispatch = NewDispatch();
  dispatch->names = {u"Fields", u"Append", u"Count",   u"Item",      u"Name",
                     u"State",  u"Open",   u"EOF",     u"MoveFirst", u"MoveNext",
                     u"AddNew", u"Clone",  u"GetRows", u"Delete",    u"RecordCount"};
  dispatch->invoke = [object, flaw, names = dispatch->names](const InvokeCall& call) {
    const std::u16string& member = names.at(call.id - 1);
    Arguments arguments;
    for (UINT i = call.parameters.cArgs; i > 0; --i) {
      arguments.positional.push_back(FromVariant(call.parameters.rgvarg[i - 1]));
    }
    try {
      const std::optional<Value> own = flaw(object, member, arguments);
      const Value result = own ? *own : object->Invoke(Access::Call, member, arguments);
      if (result.Is(Value::Type::Object)) {
        call.result->vt = VT_DISPATCH;
        call.result->pdispVal = Disguised(result.ToObject(), flaw).Detach();
      } else if (call.result) {
        *call.result = ToVariant(result).Detach();
      }
      return S_OK;
    } catch (const AutomationError&) {
      return E_NOTIMPL;
    }
  };
  return dispatch;
}

Flaw Refuses(std::u16string_view refused) {
  return [refused](const ObjectPtr&, std::u16string_view member, Arguments&) -> std::optional<Value> {
    if (member == refused) throw AutomationError(kInvalidProcedureCall);
    return std::nullopt;
  };
}
Flaw Answers(std::u16string_view answered, Value answer) {
  return [=](const ObjectPtr&, std::u16string_view member, Arguments&) {
    return member == answered ? std::optional(answer) : std::nullopt;
  };
}

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
  /// Makes the ADO of ours give out recordsets with a flaw.
  void GiveOut(const Flaw& flaw) {
    ado_factory.create = [this, flaw](REFIID id, void** result) {
      ++created;
      return Disguised(recordset::NewRecordset(), flaw)->QueryInterface(id, result);
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

TEST_F(ComObjectFactoryTest, TakesTheADOThatKeepsRecordsAfterOneTrial) {
  ReplaceAdo();
  GiveOut([](const ObjectPtr&, std::u16string_view, Arguments&) { return std::nullopt; });
  const ObjectPtr recordset = factory.Create(u"adodb.recordset");
  EXPECT_EQ(created, 2);
  EXPECT_EQ(recordset->MemberTable(), nullptr);
  EXPECT_EQ(Get(recordset, u"State").ToInt32(), ado::adStateClosed) << "not the one that was tried";
  EXPECT_EQ(factory.Create(u"ADODB.Recordset")->MemberTable(), nullptr);
  EXPECT_EQ(created, 3);
}

/// A class in the registry for one test: its identifier, and a server where there is one.
class RegisteredClass {
 public:
  explicit RegisteredClass(const wchar_t* server, REGSAM view = 0) {
    Set(kIdentifierKey, kClassId, 0);
    if (server) Set(kServerKey, server, view);
  }
  RegisteredClass(const RegisteredClass&) = delete;
  RegisteredClass& operator=(const RegisteredClass&) = delete;
  ~RegisteredClass() {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\QVA.TestedClass");
    for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY}) {
      RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kServerKey, view, 0);
      RegDeleteKeyExW(HKEY_LOCAL_MACHINE, kClassKey, view, 0);
    }
  }

 private:
  static constexpr wchar_t kClassId[] = L"{4B0E6C6A-54B5-4D0C-9E0F-2F1C3C7E9A11}";
  static constexpr wchar_t kIdentifierKey[] = L"Software\\Classes\\QVA.TestedClass\\CLSID";
  static constexpr wchar_t kClassKey[] = L"Software\\Classes\\CLSID\\{4B0E6C6A-54B5-4D0C-9E0F-2F1C3C7E9A11}";
  static constexpr wchar_t kServerKey[] =
      L"Software\\Classes\\CLSID\\{4B0E6C6A-54B5-4D0C-9E0F-2F1C3C7E9A11}\\InprocServer32";

  static void Set(const wchar_t* path, const std::wstring& text, REGSAM view) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_SET_VALUE | view, nullptr, &key,
                              nullptr),
              ERROR_SUCCESS);
    RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
  }
};

#ifdef _WIN64
constexpr REGSAM kOtherView = KEY_WOW64_32KEY;
const std::string kBits = "64-bit", kOtherBits = "32-bit";
#else
constexpr REGSAM kOtherView = KEY_WOW64_64KEY;
const std::string kBits = "32-bit", kOtherBits = "64-bit";
#endif

TEST_F(ComObjectFactoryTest, TellsTheClassTheCodeAndTheBitnessOfWhatCannotBeCreated) {
  const auto description_of = [&](std::u16string_view identifier) {
    const AutomationError error = ErrorOf([&] { factory.Create(identifier); }).value();
    EXPECT_EQ(error.number(), kCannotCreateObject);
    EXPECT_EQ(error.source(), u"QVA_Varnholt");
    return ToUtf8(error.description());
  };
  EXPECT_EQ(description_of(u"QVA.NoSuchClass"), "QVA.NoSuchClass: 0x800401F3, not registered for " + kBits);
  {
    const RegisteredClass without_server(nullptr);
    EXPECT_EQ(description_of(u"QVA.TestedClass"), "QVA.TestedClass: 0x80040154, not registered for " + kBits);
  }
  {
    const RegisteredClass for_others(L"C:\\none.dll", kOtherView);
    // Wine tells another code here than Windows.
    EXPECT_THAT(description_of(u"QVA.TestedClass"),
                testing::EndsWith(", not registered for " + kBits + ", but for " + kOtherBits));
  }
  {
    const RegisteredClass refused(nullptr);
    CLSID class_id;
    ASSERT_EQ(CLSIDFromProgID(L"QVA.TestedClass", &class_id), S_OK);
    ado_factory.create = [](REFIID, void**) { return E_ACCESSDENIED; };
    ASSERT_EQ(CoRegisterClassObject(class_id, &ado_factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &registration),
              S_OK);
    EXPECT_THAT(description_of(u"QVA.TestedClass"),
                testing::AllOf(testing::StartsWith("QVA.TestedClass: 0x80070005, "),
                               testing::EndsWith(" (" + kBits + ")")));
  }
}

TEST_F(ComObjectFactoryTest, TriesNoADOBeforeARecordsetIsAskedFor) {
  ReplaceAdo();
  GiveOut(Refuses(u""));
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"QVA.NoSuchClass"); }), kCannotCreateObject);
  EXPECT_EQ(created, 0);
}

TEST_F(ComObjectFactoryTest, TakesTheRecordsetInMemoryForAnADOThatLosesData) {
  const auto drops_values = [](const ObjectPtr&, std::u16string_view member, Arguments& arguments) {
    if (member == u"AddNew") arguments.positional.at(1) = Array::Of({Null(), Null()});
    return std::optional<Value>();
  };
  const auto moves_clones_along = [](const ObjectPtr& object, std::u16string_view member, Arguments&) {
    return member == u"Clone" ? std::optional<Value>(object) : std::nullopt;
  };
  const std::pair<const char*, Flaw> flaws[] = {
      {"no fields can be made", Refuses(u"Append")},
      {"fields are not made", Answers(u"Append", Value())},
      {"fields are not counted", Answers(u"Count", 0)},
      {"fields have no names", Answers(u"Name", u"")},
      {"cannot be opened", Refuses(u"Open")},
      {"adds no records", Refuses(u"AddNew")},
      {"forgets that a record is added", Answers(u"AddNew", Value())},
      {"drops the values of a new record", drops_values},
      {"gives no block of records", Refuses(u"GetRows")},
      {"gives an empty block of records", Answers(u"GetRows", Array{})},
      {"has no clones", Refuses(u"Clone")},
      {"moves clones along", moves_clones_along},
      {"deletes no records", Refuses(u"Delete")},
      {"forgets that a record is deleted", Answers(u"Delete", Value())},
      {"does not move", Refuses(u"MoveNext")},
      {"does not count", Answers(u"RecordCount", -1)},
      {"has no end", Answers(u"EOF", false)},
  };
  ReplaceAdo();
  for (const auto& [what, flaw] : flaws) {
    SCOPED_TRACE(what);
    ComObjectFactory new_factory;
    GiveOut(flaw);
    created = 0;
    EXPECT_TRUE(IsInMemory(new_factory.Create(u"ADODB.Recordset")));
    EXPECT_TRUE(IsInMemory(new_factory.Create(u"ADODB.Recordset")));
    EXPECT_EQ(created, 1) << "tried once";
  }
}

TEST_F(ComObjectFactoryTest, TakesTheRecordsetInMemoryForAnADOThatRefusesEveryCall) {
  ReplaceAdo();
  GiveOut([](const ObjectPtr&, std::u16string_view, Arguments&) -> std::optional<Value> {
    throw AutomationError(kInvalidProcedureCall);
  });
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
  EXPECT_EQ(RaisedBy([&] { recordset.Fields().Item(u"None"); }), ado::adErrItemNotFound);
}

}  // namespace
}  // namespace qva::windows
