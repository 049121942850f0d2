// The type library against the member tables, member by member.
#include <functional>

#include "platform/text.h"
#include "server/PublicClasses.h"
#include "server/com/AutomationTypes.h"
#include "tests/com/client/client.h"

namespace qva::com {
namespace {

/// A description that type information lends.
template <class Description>
class Lent {
 public:
  Lent(Description* description, std::function<void(Description*)> give_back)
      : description_(description), give_back_(std::move(give_back)) {}
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;
  ~Lent() {
    if (description_) give_back_(description_);
  }
  const Description* operator->() const { return description_; }
  const Description& operator*() const { return *description_; }

 private:
  Description* description_;
  std::function<void(Description*)> give_back_;
};

Lent<TYPEATTR> AttributesOf(ITypeInfo& type) {
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(type.GetTypeAttr(&attributes), S_OK);
  return {attributes, [&type](TYPEATTR* lent) { type.ReleaseTypeAttr(lent); }};
}

Lent<FUNCDESC> FunctionOf(ITypeInfo& type, std::size_t index) {
  FUNCDESC* function = nullptr;
  EXPECT_EQ(type.GetFuncDesc(static_cast<UINT>(index), &function), S_OK);
  return {function, [&type](FUNCDESC* lent) { type.ReleaseFuncDesc(lent); }};
}

std::string NameOf(ITypeInfo& type) {
  Bstr name;
  type.GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
  return ToUtf8(name.Text());
}

ComPtr<ITypeInfo> Referred(ITypeInfo& type, HREFTYPE reference) {
  ComPtr<ITypeInfo> referred;
  referred.Obtain([&](ITypeInfo** received) { return type.GetRefTypeInfo(reference, received); });
  return referred;
}

/// A type as the IDL writes it: "VT_8", "VT_9", "_CToolbar*", "enDateType".
std::string TypeText(ITypeInfo& type, const TYPEDESC& description) {
  if (description.vt == VT_PTR) return TypeText(type, *description.lptdesc) + "*";
  if (description.vt == VT_USERDEFINED) return NameOf(*Referred(type, description.hreftype));
  return "VT_" + std::to_string(description.vt);
}

std::string ExpectedType(const Parameter& parameter) {
  std::string text = "VT_" + std::to_string(VariantType(parameter.type));
  if (!parameter.object_class.empty()) text = "_" + ToUtf8(parameter.object_class) + "*";
  if (parameter.name == u"DateType") text = "enDateType";
  return text + (parameter.by_reference ? "*" : "");
}

INVOKEKIND ExpectedKind(MemberKind kind) {
  switch (kind) {
    case MemberKind::Get:
      return INVOKE_PROPERTYGET;
    case MemberKind::Put:
      return INVOKE_PROPERTYPUT;
    case MemberKind::PutRef:
      return INVOKE_PROPERTYPUTREF;
    case MemberKind::Method:
      break;
  }
  return INVOKE_FUNC;
}

class TypeLibrary : public ServerTest {
 protected:
  TypeLibrary() {
    library_.Obtain(
        [](ITypeLib** received) { return LoadTypeLibEx(LibraryPath().c_str(), REGKIND_NONE, received); });
  }

  ComPtr<ITypeInfo> Find(std::u16string_view name) const {
    std::wstring wanted = windows::WideText(name);
    ComPtr<ITypeInfo> type;
    MEMBERID member = 0;
    USHORT count = 1;
    type.Obtain([&](ITypeInfo** received) {
      return library_->FindName(wanted.data(), 0, received, &member, &count);
    });
    return type;
  }

  /// The vtable half of a dual interface, by the class's name.
  ComPtr<ITypeInfo> VtableOf(std::u16string_view class_name) const {
    const ComPtr<ITypeInfo> dual = Find(u"_" + std::u16string(class_name));
    if (!dual) return {};
    HREFTYPE reference = 0;
    EXPECT_EQ(dual->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    return Referred(*dual, reference);
  }

  ComPtr<ITypeLib> library_;
};

void ExpectZero(const Value& value) {
  if (value.Is(Value::Type::Text)) {
    EXPECT_EQ(value.ToText(), u"");
  } else if (!value.IsNothing()) {
    EXPECT_EQ(value.ToDouble(), 0);
  }
}

void ExpectParameter(ITypeInfo& type, const ELEMDESC& element, const Parameter& parameter) {
  EXPECT_EQ(TypeText(type, element.tdesc), ExpectedType(parameter));
  const USHORT flags = element.paramdesc.wParamFlags;
  EXPECT_TRUE(flags & PARAMFLAG_FIN);
  EXPECT_EQ((flags & PARAMFLAG_FOUT) != 0, parameter.by_reference);
  EXPECT_EQ((flags & PARAMFLAG_FOPT) != 0, parameter.optional);
  EXPECT_FALSE(flags & PARAMFLAG_FRETVAL);
  // An omitted VARIANT says so itself, and an omitted reference is the zero of its type.
  const bool says_itself = parameter.type == ParameterType::Any || parameter.by_reference;
  EXPECT_EQ((flags & PARAMFLAG_FHASDEFAULT) != 0, parameter.optional && !says_itself);
  if (parameter.optional && parameter.by_reference) ExpectZero(parameter.default_value);
  if (!(flags & PARAMFLAG_FHASDEFAULT)) return;
  const Value value = windows::FromVariant(element.paramdesc.pparamdescex->varDefaultValue);
  if (parameter.type == ParameterType::Object) {
    EXPECT_TRUE(value.IsNothing() || value == Value(std::int32_t{0}));
  } else {
    EXPECT_EQ(value.ToText(), parameter.default_value.ToText());
  }
}

TEST_F(TypeLibrary, BearsTheNameAndVersionOfTheLibrary) {
  ASSERT_TRUE(library_);
  Bstr name;
  Bstr help;
  ASSERT_EQ(library_->GetDocumentation(-1, name.Receive(), help.Receive(), nullptr, nullptr), S_OK);
  EXPECT_EQ(name.Text(), u"QVA_Varnholt");
  EXPECT_NE(help.Text(), u"");
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
  library_->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibrary, HoldsThePublicClassesTheirInterfacesAndTheEnumerationAlone) {
  ASSERT_TRUE(library_);
  EXPECT_EQ(library_->GetTypeInfoCount(), 2 * PublicClasses().size() + 1);
  for (const char16_t* internal : {u"CFile", u"CWinRegistry", u"CExcelState"}) EXPECT_FALSE(Find(internal));
}

TEST_F(TypeLibrary, NamesTheDateTypes) {
  const ComPtr<ITypeInfo> type = Find(u"enDateType");
  ASSERT_TRUE(type);
  const auto attributes = AttributesOf(*type);
  EXPECT_EQ(attributes->typekind, TKIND_ENUM);
  const char16_t* const names[] = {u"FullDate", u"YearAndMonth", u"YearAndQuater"};
  ASSERT_EQ(attributes->cVars, std::size(names));
  for (UINT i = 0; i < attributes->cVars; ++i) {
    VARDESC* constant = nullptr;
    ASSERT_EQ(type->GetVarDesc(i, &constant), S_OK);
    Bstr name;
    type->GetDocumentation(constant->memid, name.Receive(), nullptr, nullptr, nullptr);
    EXPECT_EQ(name.Text(), names[i]);
    EXPECT_EQ(windows::FromVariant(*constant->lpvarValue).ToInt32(), static_cast<std::int32_t>(i + 1));
    type->ReleaseVarDesc(constant);
  }
}

TEST_F(TypeLibrary, GivesEachClassItsDualInterface) {
  for (const PublicClass& public_class : PublicClasses()) {
    const std::u16string name(public_class.description().name());
    SCOPED_TRACE(ToUtf8(name));
    const ComPtr<ITypeInfo> type = Find(name);
    ASSERT_TRUE(type);
    const auto attributes = AttributesOf(*type);
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE);
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FAPPOBJECT) != 0, name == u"gExcelObject");
    ASSERT_EQ(attributes->cImplTypes, 1);
    HREFTYPE reference = 0;
    ASSERT_EQ(type->GetRefTypeOfImplType(0, &reference), S_OK);
    const ComPtr<ITypeInfo> dual = Referred(*type, reference);
    EXPECT_EQ(NameOf(*dual), "_" + ToUtf8(name));
    EXPECT_TRUE(AttributesOf(*dual)->wTypeFlags & TYPEFLAG_FDUAL);
    EXPECT_EQ(AttributesOf(*VtableOf(name))->wTypeFlags & (TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION),
              TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION);
  }
}

TEST_F(TypeLibrary, ExplainsEachClassAsItsMemberTableDoes) {
  for (const PublicClass& public_class : PublicClasses()) {
    const std::u16string name(public_class.description().name());
    for (const std::u16string& described : {name, u"_" + name}) {
      Bstr help;
      ASSERT_EQ(Find(described)->GetDocumentation(MEMBERID_NIL, nullptr, help.Receive(), nullptr, nullptr),
                S_OK);
      EXPECT_EQ(ToUtf8(help.Text()), public_class.description().help()) << ToUtf8(described);
    }
  }
}

TEST_F(TypeLibrary, IsWhatTheObjectsOfEachClassSayOfThemselves) {
  const auto excel = NewRegistered(L"QVA_TestBench.Excel");
  const auto global = New<_gExcelObject>(CLSID_gExcelObject);
  for (const PublicClass& public_class : PublicClasses()) {
    // With an application at hand every class can be created; the end of a gExcelObject takes it away.
    short count = 0;
    ASSERT_EQ(global->InitConnectEX(excel.get(), LeftOut(), excel.get(), &count), S_OK);
    const std::u16string name(public_class.description().name());
    SCOPED_TRACE(ToUtf8(name));
    const IID interface_id = AttributesOf(*Find(u"_" + name))->guid;
    const CLSID class_id = AttributesOf(*Find(name))->guid;
    const auto object = New<IDispatch>(class_id);
    ASSERT_TRUE(object) << ToUtf8(TakeErrorObject().description);

    ComPtr<IUnknown> early;
    EXPECT_EQ(early.Obtain([&](IUnknown** received) {
      return object->QueryInterface(interface_id, reinterpret_cast<void**>(received));
    }),
              S_OK);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(type.Obtain([&](ITypeInfo** received) { return object->GetTypeInfo(0, 0, received); }), S_OK);
    EXPECT_EQ(AttributesOf(*type)->guid, interface_id);
    ASSERT_EQ(type.Obtain([&](ITypeInfo** received) {
      return object.Query<IProvideClassInfo>()->GetClassInfo(received);
    }),
              S_OK);
    EXPECT_EQ(AttributesOf(*type)->guid, class_id);

    const auto support = object.Query<ISupportErrorInfo>();
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(interface_id), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(class_id), S_FALSE);
  }
}

TEST_F(TypeLibrary, SaysOfEveryMemberWhatTheMemberTableSays) {
  std::size_t members_seen = 0;
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    SCOPED_TRACE(ToUtf8(table.name()));
    const ComPtr<ITypeInfo> type = VtableOf(table.name());
    ASSERT_TRUE(type);
    ASSERT_EQ(AttributesOf(*type)->cFuncs, table.members().size());
    std::vector<std::u16string> names;  // in the order of their ids
    for (std::size_t i = 0; i < table.members().size(); ++i) {
      const Member& member = table.members()[i];
      SCOPED_TRACE(ToUtf8(member.name));
      const auto function = FunctionOf(*type, i);

      const bool is_first_of_name = names.empty() || names.back() != member.name;
      if (is_first_of_name) names.emplace_back(member.name);
      EXPECT_EQ(function->memid, static_cast<MEMBERID>(names.size()));
      EXPECT_EQ(function->invkind, ExpectedKind(member.kind));
      EXPECT_EQ(function->oVft, static_cast<SHORT>((7 + i) * sizeof(void*)));

      Bstr name;
      Bstr help;
      type->GetDocumentation(function->memid, name.Receive(), help.Receive(), nullptr, nullptr);
      EXPECT_EQ(name.Text(), member.name);
      EXPECT_EQ(ToUtf8(help.Text()), member.help);

      const bool has_result = member.result != ParameterType::None;
      ASSERT_EQ(function->cParams, static_cast<SHORT>(member.parameters.size() + (has_result ? 1 : 0)));
      BSTR parameter_names[32] = {};
      UINT count = 0;
      type->GetNames(function->memid, parameter_names, std::size(parameter_names), &count);
      for (UINT n = 0; n < count; ++n) {
        const Bstr parameter_name = Bstr::Adopt(parameter_names[n]);
        // Of a property that is read and written, the names asked for by id are those of the first half.
        if (n == 0 || n > member.parameters.size() || !is_first_of_name) continue;
        EXPECT_EQ(parameter_name.Text(), member.parameters[n - 1].name);
      }
      for (std::size_t p = 0; p < member.parameters.size(); ++p) {
        SCOPED_TRACE(ToUtf8(member.parameters[p].name));
        ExpectParameter(*type, function->lprgelemdescParam[p], member.parameters[p]);
      }
      if (has_result) {
        const ELEMDESC& result = function->lprgelemdescParam[member.parameters.size()];
        const Parameter expected{.name = u"result",
                                 .type = member.result,
                                 .by_reference = true,
                                 .object_class = member.result_class};
        EXPECT_EQ(TypeText(*type, result.tdesc), ExpectedType(expected));
        EXPECT_EQ(result.paramdesc.wParamFlags & (PARAMFLAG_FIN | PARAMFLAG_FOUT | PARAMFLAG_FRETVAL),
                  PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
      }
      ++members_seen;
    }
  }
  EXPECT_GT(members_seen, 100u);
}

}  // namespace
}  // namespace qva::com
