#include "platform/windows/VariantConversion.h"

#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

class FromVariantTest : public NothingLeftTest {};

struct Case {
  const char* name;
  VARIANT variant;
  Value expected;
};

std::vector<Case> ScalarCases() {
  DECIMAL decimal{};
  VarDecFromR8(-12.5, &decimal);
  return {
      {"VT_I1", VariantOf(VT_I1, [](VARIANT& v) { v.cVal = static_cast<CHAR>(-128); }), std::int16_t{-128}},
      {"VT_UI1", VariantOf(VT_UI1, [](VARIANT& v) { v.bVal = 255; }), std::uint8_t{255}},
      {"VT_I2", VariantOf(VT_I2, [](VARIANT& v) { v.iVal = -32768; }), std::int16_t{-32768}},
      {"VT_UI2", VariantOf(VT_UI2, [](VARIANT& v) { v.uiVal = 65535; }), std::int32_t{65535}},
      {"VT_I4", VariantOf(VT_I4, [](VARIANT& v) { v.lVal = -5; }), std::int32_t{-5}},
      {"VT_INT", VariantOf(VT_INT, [](VARIANT& v) { v.intVal = 7; }), std::int32_t{7}},
      {"VT_UI4", VariantOf(VT_UI4, [](VARIANT& v) { v.ulVal = 7; }), std::int32_t{7}},
      {"VT_UI4 great", VariantOf(VT_UI4, [](VARIANT& v) { v.ulVal = 4294967295u; }), 4294967295.0},
      {"VT_UINT", VariantOf(VT_UINT, [](VARIANT& v) { v.uintVal = 2147483648u; }), 2147483648.0},
      {"VT_I8", VariantOf(VT_I8, [](VARIANT& v) { v.llVal = -9; }), std::int32_t{-9}},
      {"VT_I8 great", VariantOf(VT_I8, [](VARIANT& v) { v.llVal = 1LL << 40; }), 1099511627776.0},
      {"VT_UI8", VariantOf(VT_UI8, [](VARIANT& v) { v.ullVal = 1ULL << 63; }), 9223372036854775808.0},
      {"VT_R4", VariantOf(VT_R4, [](VARIANT& v) { v.fltVal = 0.25f; }), 0.25},
      {"VT_R8", VariantOf(VT_R8, [](VARIANT& v) { v.dblVal = 0.1; }), 0.1},
      {"VT_CY", VariantOf(VT_CY, [](VARIANT& v) { v.cyVal.int64 = -12345; }), Currency{-12345}},
      {"VT_DATE", VariantOf(VT_DATE, [](VARIANT& v) { v.date = 45000.5; }), Date{45000.5}},
      {"VT_DECIMAL", VariantOf(VT_DECIMAL, [&](VARIANT& v) { v.decVal = decimal; }), -12.5},
      {"VT_BOOL", VariantOf(VT_BOOL, [](VARIANT& v) { v.boolVal = VARIANT_TRUE; }), true},
      {"VT_BOOL 1", VariantOf(VT_BOOL, [](VARIANT& v) { v.boolVal = 1; }), true},
      {"VT_BOOL 0", VariantOf(VT_BOOL, [](VARIANT& v) { v.boolVal = VARIANT_FALSE; }), false},
      {"VT_ERROR", VariantOf(VT_ERROR, [](VARIANT& v) { v.scode = static_cast<SCODE>(0x800A07FA); }),
       ErrorValue{static_cast<std::int32_t>(0x800A07FA)}},
      {"missing", VariantOf(VT_ERROR, [](VARIANT& v) { v.scode = DISP_E_PARAMNOTFOUND; }), Missing{}},
      {"no text", VariantOf(VT_BSTR, [](VARIANT& v) { v.bstrVal = nullptr; }), u""},
      {"no object", VariantOf(VT_DISPATCH, [](VARIANT& v) { v.pdispVal = nullptr; }), ObjectPtr()},
      {"no unknown", VariantOf(VT_UNKNOWN, [](VARIANT& v) { v.punkVal = nullptr; }), ObjectPtr()},
  };
}

TEST_F(FromVariantTest, ReadsEveryScalarByValueAndByReference) {
  for (Case& c : ScalarCases()) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(FromVariant(c.variant), c.expected);
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(c.variant.vt | VT_BYREF);
    reference.byref = c.variant.vt == VT_DECIMAL ? static_cast<void*>(&c.variant.decVal) : &c.variant.llVal;
    EXPECT_EQ(FromVariant(reference), c.expected);
    VARIANT outer{};
    outer.vt = VT_BYREF | VT_VARIANT;
    outer.pvarVal = &reference;
    EXPECT_EQ(FromVariant(outer), c.expected) << "a reference to a reference";
  }
}

TEST_F(FromVariantTest, ReadsEmptyAndNull) {
  EXPECT_EQ(FromVariant(VARIANT{}), Value());
  EXPECT_EQ(FromVariant(VariantOf(VT_NULL, [](VARIANT&) {})), Value(Null{}));
}

TEST_F(FromVariantTest, KeepsZerosInsideText) {
  const Bstr text(std::u16string_view(u"a\0ž", 3));
  VARIANT variant = VariantOf(VT_BSTR, [&](VARIANT& v) { v.bstrVal = text.get(); });
  EXPECT_EQ(FromVariant(variant), Value(std::u16string(u"a\0ž", 3)));
}

TEST_F(FromVariantTest, RefusesTypesThatAutomationHasNoValueOf) {
  for (const int type : std::initializer_list<int>{VT_RECORD, VT_VARIANT, VT_VOID, VT_LPWSTR, VT_CLSID,
                                                   VT_VECTOR | VT_I4, 0x7777}) {
    VARIANT variant{};
    variant.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(RaisedBy([&] { FromVariant(variant); }), kTypeMismatch) << type;
  }
}

TEST_F(FromVariantTest, RefusesReferencesToNowhere) {
  for (const int type :
       std::initializer_list<int>{VT_I4, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_ARRAY | VT_I4}) {
    VARIANT variant{};
    variant.vt = static_cast<VARTYPE>(type | VT_BYREF);
    EXPECT_EQ(RaisedBy([&] { FromVariant(variant); }), kTypeMismatch) << type;
  }
}

TEST_F(FromVariantTest, RefusesAVariantThatRefersToItself) {
  VARIANT variant{};
  variant.vt = VT_BYREF | VT_VARIANT;
  variant.pvarVal = &variant;
  EXPECT_EQ(RaisedBy([&] { FromVariant(variant); }), kTypeMismatch);
}

TEST_F(FromVariantTest, AnIncomingObjectKeepsOneReferenceOfItsOwn) {
  const auto dispatch = NewDispatch();
  {
    VARIANT variant = VariantOf(VT_DISPATCH, [&](VARIANT& v) { v.pdispVal = dispatch.get(); });
    const Value value = FromVariant(variant);
    EXPECT_EQ(dispatch->references, 2u);
    IUnknown* unknown = dispatch.get();
    variant = VariantOf(VT_UNKNOWN | VT_BYREF, [&](VARIANT& v) { v.ppunkVal = &unknown; });
    const Value second = FromVariant(variant);
    EXPECT_EQ(dispatch->references, 3u);
  }
  EXPECT_EQ(dispatch->references, 1u);
}

class ToVariantTest : public NothingLeftTest {};

TEST_F(ToVariantTest, WritesEveryTypeAndReadsItBack) {
  const std::pair<Value, VARTYPE> cases[] = {
      {Value(), VT_EMPTY},
      {Null{}, VT_NULL},
      {Missing{}, VT_ERROR},
      {ErrorValue{-2146826246}, VT_ERROR},
      {true, VT_BOOL},
      {std::uint8_t{200}, VT_UI1},
      {std::int16_t{-300}, VT_I2},
      {std::int32_t{100000}, VT_I4},
      {0.5, VT_R8},
      {Currency{12345}, VT_CY},
      {Date{45000.25}, VT_DATE},
      {u"Ąžuolas", VT_BSTR},
      {ObjectPtr(), VT_DISPATCH},
  };
  for (const auto& [value, type] : cases) {
    const Variant variant = ToVariant(value);
    EXPECT_EQ(variant->vt, type) << ToUtf8(DescribeValue(value));
    EXPECT_EQ(FromVariant(*variant), value);
  }
}

TEST_F(ToVariantTest, TrueIsMinusOne) {
  EXPECT_EQ(ToVariant(true)->boolVal, -1);
}

TEST_F(ToVariantTest, AnObjectThatCameInGoesOutAsItself) {
  const auto dispatch = NewDispatch();
  {
    const Value value = ObjectOver(dispatch);
    const Variant first = ToVariant(value);
    const Variant second = ToVariant(value);
    EXPECT_EQ(first->pdispVal, dispatch.get());
    EXPECT_EQ(second->pdispVal, dispatch.get());
    EXPECT_EQ(dispatch->references, 4u);
  }
  EXPECT_EQ(dispatch->references, 1u);
}

TEST_F(ToVariantTest, AnObjectWithoutAutomationIsKeptAndHandedBack) {
  const auto dispatch = NewDispatch();
  dispatch->query = [&](REFIID id, void** result) {
    *result = nullptr;
    if (id != IID_IUnknown) return E_NOINTERFACE;
    *result = dispatch.get();
    dispatch->AddRef();
    return S_OK;
  };
  {
    const ObjectPtr object = ToObject(static_cast<IUnknown*>(dispatch.get()));
    EXPECT_EQ(RaisedBy([&] { Call(object, u"Alpha"); }), kUnsupportedMember);
    const Variant variant = ToVariant(object);
    EXPECT_EQ(variant->vt, VT_UNKNOWN);
    EXPECT_EQ(variant->punkVal, dispatch.get());
    EXPECT_EQ(RaisedBy([&] { ToDispatch(object); }), kTypeMismatch);
  }
  EXPECT_EQ(dispatch->references, 1u);
}

}  // namespace
}  // namespace qva::windows
