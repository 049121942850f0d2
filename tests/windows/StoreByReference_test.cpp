#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

/// A variable of a type that a caller passes by reference.
template <class T>
struct Variable {
  VARTYPE type;
  T content{};

  void Store(const Value& value) {
    VARIANT reference{};
    reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
    reference.byref = &content;
    StoreByReference(reference, value);
  }
  std::int32_t ErrorOfStoring(const Value& value) {
    return RaisedBy([&] { Store(value); });
  }
};

class StoreByReferenceTest : public NothingLeftTest {};

TEST_F(StoreByReferenceTest, ConvertsNumbersToTheVariablesOwnType) {
  const Value value = 41.5;  // a half: rounded to even
  Variable<signed char> i1{VT_I1};
  i1.Store(value);
  EXPECT_EQ(i1.content, 42);
  Variable<BYTE> ui1{VT_UI1};
  ui1.Store(value);
  EXPECT_EQ(ui1.content, 42);
  Variable<SHORT> i2{VT_I2};
  i2.Store(value);
  EXPECT_EQ(i2.content, 42);
  Variable<USHORT> ui2{VT_UI2};
  ui2.Store(value);
  EXPECT_EQ(ui2.content, 42);
  Variable<LONG> i4{VT_I4};
  i4.Store(value);
  EXPECT_EQ(i4.content, 42);
  Variable<INT> integer{VT_INT};
  integer.Store(value);
  EXPECT_EQ(integer.content, 42);
  Variable<ULONG> ui4{VT_UI4};
  ui4.Store(4294967295.0);
  EXPECT_EQ(ui4.content, 4294967295u);
  Variable<UINT> uint{VT_UINT};
  uint.Store(42.5);
  EXPECT_EQ(uint.content, 42u);
  Variable<LONGLONG> i8{VT_I8};
  i8.Store(-1099511627776.0);
  EXPECT_EQ(i8.content, -(1LL << 40));
  Variable<ULONGLONG> ui8{VT_UI8};
  ui8.Store(9223372036854775808.0);
  EXPECT_EQ(ui8.content, 1ULL << 63);
  Variable<float> r4{VT_R4};
  r4.Store(value);
  EXPECT_EQ(r4.content, 41.5f);
  Variable<double> r8{VT_R8};
  r8.Store(std::int16_t{3});
  EXPECT_EQ(r8.content, 3.0);
  Variable<CY> cy{VT_CY};
  cy.Store(value);
  EXPECT_EQ(cy.content.int64, 415000);
  Variable<DATE> date{VT_DATE};
  date.Store(Date{45000});
  EXPECT_EQ(date.content, 45000);
  Variable<VARIANT_BOOL> boolean{VT_BOOL};
  boolean.Store(std::int32_t{2});
  EXPECT_EQ(boolean.content, VARIANT_TRUE);
  Variable<SCODE> error{VT_ERROR};
  error.Store(Missing{});
  EXPECT_EQ(error.content, DISP_E_PARAMNOTFOUND);
}

TEST_F(StoreByReferenceTest, KeepsAllDigitsOfADecimal) {
  Variable<DECIMAL> decimal{VT_DECIMAL};
  decimal.Store(Currency{9223372036854775807});
  Bstr text;
  ASSERT_EQ(VarBstrFromDec(&decimal.content, MAKELCID(LANG_ENGLISH, SORT_DEFAULT), 0, text.Receive()), S_OK);
  EXPECT_EQ(text.Text(), u"922337203685477.5807");
}

TEST_F(StoreByReferenceTest, LeavesADecimalThatAVariantHoldsADecimal) {
  VARIANT variable = VariantOf(VT_DECIMAL, [](VARIANT&) {});
  StoreByReference(VariantOf(VT_DECIMAL | VT_BYREF, [&](VARIANT& v) { v.pdecVal = &variable.decVal; }), 1.5);
  EXPECT_EQ(variable.vt, VT_DECIMAL);
  EXPECT_EQ(FromVariant(variable), Value(1.5));
}

TEST_F(StoreByReferenceTest, RaisesOverflowBeyondTheTypesRangeAndLeavesTheVariable) {
  const auto overflows = [](VARTYPE type, auto content, const Value& value) {
    Variable<decltype(content)> variable{type, content};
    return variable.ErrorOfStoring(value) == kOverflow && variable.content == content;
  };
  EXPECT_TRUE(overflows(VT_I1, static_cast<signed char>(5), 128.0));
  EXPECT_TRUE(overflows(VT_I1, static_cast<signed char>(5), -128.6));
  EXPECT_TRUE(overflows(VT_UI1, BYTE{5}, 256.0));
  EXPECT_TRUE(overflows(VT_I2, SHORT{5}, 40000.0));
  EXPECT_TRUE(overflows(VT_UI2, USHORT{5}, -1.0));
  EXPECT_TRUE(overflows(VT_UI2, USHORT{5}, 65535.5));
  EXPECT_TRUE(overflows(VT_I4, LONG{5}, 2147483648.0));
  EXPECT_TRUE(overflows(VT_UI4, ULONG{5}, 4294967296.0));
  EXPECT_TRUE(overflows(VT_I8, LONGLONG{5}, 9223372036854775808.0));
  EXPECT_TRUE(overflows(VT_UI8, ULONGLONG{5}, 18446744073709551616.0));
  EXPECT_TRUE(overflows(VT_R4, 5.0f, 1e39));
  EXPECT_TRUE(overflows(VT_DATE, 5.0, 3e6));
}

TEST_F(StoreByReferenceTest, RaisesTypeMismatchAndLeavesTheVariable) {
  Variable<SHORT> number{VT_I2, 5};
  EXPECT_EQ(number.ErrorOfStoring(u"five"), kTypeMismatch);
  EXPECT_EQ(number.content, 5);
  Variable<SCODE> error{VT_ERROR, 5};
  EXPECT_EQ(error.ErrorOfStoring(1.0), kTypeMismatch);
  EXPECT_EQ(error.content, 5);
  Variable<SAFEARRAY*> array{VT_ARRAY | VT_I4};
  EXPECT_EQ(array.ErrorOfStoring(1.0), kTypeMismatch);
}

TEST_F(StoreByReferenceTest, RefusesWhatIsNoVariable) {
  EXPECT_EQ(RaisedBy([] { StoreByReference(VARIANT{}, 1.0); }), kTypeMismatch);
  VARIANT nowhere{};
  nowhere.vt = VT_BYREF | VT_I4;
  EXPECT_EQ(RaisedBy([&] { StoreByReference(nowhere, 1.0); }), kTypeMismatch);
  int content = 0;
  VARIANT unknown_type{};
  unknown_type.vt = VT_BYREF | VT_RECORD;
  unknown_type.byref = &content;
  EXPECT_EQ(RaisedBy([&] { StoreByReference(unknown_type, 1.0); }), kTypeMismatch);
}

TEST_F(StoreByReferenceTest, ReplacesText) {
  Variable<BSTR> text{VT_BSTR, Bstr(u"old").Detach()};
  text.Store(std::int32_t{12});
  EXPECT_EQ(Bstr::Adopt(text.content).Text(), u"12");
}

TEST_F(StoreByReferenceTest, ReplacesAnObjectAndReleasesTheOldOne) {
  const auto old = NewDispatch();
  const auto fresh = NewDispatch();
  old->AddRef();
  Variable<IDispatch*> variable{VT_DISPATCH, old.get()};
  variable.Store(ObjectOver(fresh));
  EXPECT_EQ(variable.content, fresh.get());
  EXPECT_EQ(old->references, 1u);
  EXPECT_EQ(fresh->references, 2u);
  variable.Store(ObjectPtr());
  EXPECT_EQ(variable.content, nullptr);
  EXPECT_EQ(fresh->references, 1u);
  EXPECT_EQ(variable.ErrorOfStoring(1.0), kTypeMismatch);

  Variable<IUnknown*> unknown{VT_UNKNOWN};
  unknown.Store(ObjectOver(fresh));
  EXPECT_EQ(unknown.content, static_cast<IUnknown*>(fresh.get()));
  unknown.content->Release();
}

TEST_F(StoreByReferenceTest, AVariantVariableTakesTheValuesOwnType) {
  const auto old = NewDispatch();
  old->AddRef();
  Variable<VARIANT> variable{VT_VARIANT, VariantOf(VT_DISPATCH, [&](VARIANT& v) { v.pdispVal = old.get(); })};
  variable.Store(u"text");
  EXPECT_EQ(old->references, 1u);
  ASSERT_EQ(variable.content.vt, VT_BSTR);
  EXPECT_EQ(FromVariant(variable.content), Value(u"text"));
  variable.Store(std::uint8_t{3});
  EXPECT_EQ(variable.content.vt, VT_UI1);
  EXPECT_EQ(variable.content.bVal, 3);
}

TEST_F(StoreByReferenceTest, AVariantVariableThatIsAReferencePassesTheValueOn) {
  SHORT number = 5;
  Variable<VARIANT> variable{VT_VARIANT, VariantOf(VT_BYREF | VT_I2, [&](VARIANT& v) { v.piVal = &number; })};
  variable.Store(7.0);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(variable.content.vt, VT_BYREF | VT_I2);
  EXPECT_EQ(variable.ErrorOfStoring(40000.0), kOverflow);
  EXPECT_EQ(number, 7);
}

TEST_F(StoreByReferenceTest, ReplacesAnArrayInItsElementType) {
  Variable<SAFEARRAY*> variable{VT_ARRAY | VT_I2, SafeArrayCreateVector(VT_I2, 0, 1)};
  variable.Store(Array::Of({1.0, u"2"}, 5));
  const SafeArray stored(variable.content);
  VARIANT variant = VariantOf(VT_ARRAY | VT_I2, [&](VARIANT& v) { v.parray = stored.get(); });
  const Value value = FromVariant(variant);
  const Array& read = value.AsArray();
  EXPECT_THAT(read.elements, testing::ElementsAre(std::int16_t{1}, std::int16_t{2}));
  EXPECT_EQ(read.dimensions[0].lower, 5);
}

TEST_F(StoreByReferenceTest, LeavesAnArrayThatIsLockedOrFixed) {
  const SafeArray array(SafeArrayCreateVector(VT_I2, 0, 1));
  Variable<SAFEARRAY*> variable{VT_ARRAY | VT_I2, array.get()};
  SafeArrayLock(array.get());
  EXPECT_EQ(variable.ErrorOfStoring(Array::Of({1.0})), 10);
  SafeArrayUnlock(array.get());
  array.get()->fFeatures |= FADF_FIXEDSIZE;
  EXPECT_EQ(variable.ErrorOfStoring(Array::Of({1.0})), 10);
  array.get()->fFeatures &= static_cast<USHORT>(~FADF_FIXEDSIZE);
  EXPECT_EQ(variable.content, array.get());
}

}  // namespace
}  // namespace qva::windows
