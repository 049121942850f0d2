#include "platform/windows/SafeArrayConversion.h"

#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

class SafeArrayConversionTest : public NothingLeftTest {};

VARIANT ArrayVariant(VARTYPE element_type, const SafeArray& array) {
  return VariantOf(static_cast<VARTYPE>(VT_ARRAY | element_type),
                   [&](VARIANT& v) { v.parray = array.get(); });
}

TEST_F(SafeArrayConversionTest, PlacesElementsOfTwoDimensionsByTheirIndexes) {
  SAFEARRAYBOUND bounds[] = {{2, 1}, {3, -1}};  // two rows from 1, three columns from −1
  const SafeArray array(SafeArrayCreate(VT_I4, 2, bounds));
  for (LONG row = 1; row <= 2; ++row) {
    for (LONG column = -1; column <= 1; ++column) {
      LONG index[] = {row, column};
      LONG content = row * 10 + column;
      ASSERT_EQ(SafeArrayPutElement(array.get(), index, &content), S_OK);
    }
  }
  const Value value = FromVariant(ArrayVariant(VT_I4, array));
  const Array& read = value.AsArray();
  ASSERT_EQ(read.dimensions.size(), 2u);
  EXPECT_EQ(read.dimensions[0].lower, 1);
  EXPECT_EQ(read.dimensions[0].count, 2);
  EXPECT_EQ(read.dimensions[1].lower, -1);
  EXPECT_EQ(read.dimensions[1].count, 3);
  EXPECT_THAT(read.elements, testing::ElementsAre(9, 10, 11, 19, 20, 21));
}

TEST_F(SafeArrayConversionTest, WritesElementsOfThreeDimensionsWhereTheirIndexesSay) {
  Array array{{{0, 2}, {1, 3}, {5, 2}}, {}};
  for (int i = 0; i < 12; ++i) array.elements.emplace_back(std::int32_t{i});
  const Variant variant = ToVariant(array);
  ASSERT_EQ(variant->vt, VT_ARRAY | VT_VARIANT);
  int expected = 0;
  for (LONG i = 0; i < 2; ++i) {
    for (LONG j = 1; j < 4; ++j) {
      for (LONG k = 5; k < 7; ++k) {
        LONG index[] = {i, j, k};
        Variant element;
        ASSERT_EQ(SafeArrayGetElement(variant->parray, index, element.get()), S_OK);
        EXPECT_EQ(element->lVal, expected++);
      }
    }
  }
  EXPECT_EQ(FromVariant(*variant).AsArray().elements, array.elements);
}

TEST_F(SafeArrayConversionTest, ReadsEveryElementType) {
  const VARTYPE types[] = {VT_I1,   VT_UI1,   VT_I2,   VT_UI2,     VT_BOOL,    VT_I4,       VT_UI4,
                           VT_INT,  VT_UINT,  VT_R4,   VT_I8,      VT_UI8,     VT_R8,       VT_CY,
                           VT_DATE, VT_ERROR, VT_BSTR, VT_DECIMAL, VT_VARIANT, VT_DISPATCH, VT_UNKNOWN};
  for (const VARTYPE type : types) {
    const SafeArray array(SafeArrayCreateVector(type, 3, 2));
    ASSERT_TRUE(array) << type;
    const Value value = FromVariant(ArrayVariant(type, array));
    EXPECT_EQ(value.AsArray().elements.size(), 2u) << type;
    EXPECT_EQ(value.AsArray().dimensions[0].lower, 3) << type;
  }
}

TEST_F(SafeArrayConversionTest, ReadsArraysByReferenceAndWithinVariants) {
  SafeArray inner(SafeArrayCreateVector(VT_BSTR, 0, 1));
  LONG index = 0;
  ASSERT_EQ(SafeArrayPutElement(inner.get(), &index, Bstr(u"Ąžuolas").get()), S_OK);
  SafeArray outer(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  VARIANT element = ArrayVariant(VT_BSTR, inner);
  ASSERT_EQ(SafeArrayPutElement(outer.get(), &index, &element), S_OK);
  SAFEARRAY* variable = outer.get();
  VARIANT reference = VariantOf(VT_BYREF | VT_ARRAY | VT_VARIANT, [&](VARIANT& v) { v.pparray = &variable; });
  const Value value = FromVariant(reference);
  EXPECT_EQ(value.AsArray().elements.at(0).ToArray().elements.at(0), Value(u"Ąžuolas"));
}

TEST_F(SafeArrayConversionTest, AnArrayWithoutDimensionsOrElementsIsEmpty) {
  VARIANT undimensioned = VariantOf(VT_ARRAY | VT_I4, [](VARIANT& v) { v.parray = nullptr; });
  EXPECT_TRUE(FromVariant(undimensioned).AsArray().dimensions.empty());
  const SafeArray empty(SafeArrayCreateVector(VT_I4, 0, 0));
  EXPECT_TRUE(FromVariant(ArrayVariant(VT_I4, empty)).AsArray().elements.empty());
  const Variant written = ToVariant(Array{});
  EXPECT_EQ(SafeArrayGetDim(written->parray), 1u);
  EXPECT_EQ(written->parray->rgsabound[0].cElements, 0u);
}

TEST_F(SafeArrayConversionTest, RefusesAnArrayThatIsDeclaredWithWiderElementsThanItHas) {
  const SafeArray array(SafeArrayCreateVector(VT_UI1, 0, 4));
  EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(VT_VARIANT, array)); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(VT_RECORD, array)); }), kTypeMismatch);
}

TEST_F(SafeArrayConversionTest, RefusesAnArrayWhoseNumbersAreDeclaredAsAddresses) {
  const VARTYPE number = sizeof(void*) == 8 ? VT_I8 : VT_I4;  // as wide as an address
  const SafeArray numbers(SafeArrayCreateVector(number, 0, 1));
  const SafeArray texts(SafeArrayCreateVector(VT_BSTR, 0, 1));
  LONG index = 0;
  LONGLONG address = 0x10;
  ASSERT_EQ(SafeArrayPutElement(numbers.get(), &index, &address), S_OK);
  ASSERT_EQ(SafeArrayPutElement(texts.get(), &index, Bstr(u"text").get()), S_OK);
  for (const VARTYPE declared : {VT_BSTR, VT_DISPATCH, VT_UNKNOWN}) {
    EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(declared, numbers)); }), kTypeMismatch) << declared;
  }
  for (const VARTYPE declared : {VT_DISPATCH, VT_UNKNOWN}) {
    EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(declared, texts)); }), kTypeMismatch) << declared;
  }
}

TEST_F(SafeArrayConversionTest, RefusesAnArrayWhoseDecimalsAreDeclaredAsVariants) {
  // In 32 bits one is as long as the other.
  const SafeArray decimals(SafeArrayCreateVector(VT_DECIMAL, 0, 1));
  static_cast<DECIMAL*>(decimals.get()->pvData)->wReserved = VT_BSTR;
  EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(VT_VARIANT, decimals)); }), kTypeMismatch);
}

TEST_F(SafeArrayConversionTest, ReadsObjectsDeclaredAsThePlainerInterfaceThatTheyHaveToo) {
  const auto dispatch = NewDispatch();
  const SafeArray objects(SafeArrayCreateVector(VT_DISPATCH, 0, 1));
  LONG index = 0;
  ASSERT_EQ(SafeArrayPutElement(objects.get(), &index, static_cast<IDispatch*>(dispatch.get())), S_OK);
  const Value value = FromVariant(ArrayVariant(VT_UNKNOWN, objects));
  EXPECT_EQ(ToDispatch(value.AsArray().elements.at(0).ToObject()).get(),
            static_cast<IDispatch*>(dispatch.get()));
}

TEST_F(SafeArrayConversionTest, UnlocksTheArrayAlsoWhenAnElementIsRefused) {
  const SafeArray array(SafeArrayCreateVector(VT_VARIANT, 0, 1));
  static_cast<VARIANT*>(array.get()->pvData)->vt = VT_BYREF | VT_I4;  // a reference to nowhere
  EXPECT_EQ(RaisedBy([&] { FromVariant(ArrayVariant(VT_VARIANT, array)); }), kTypeMismatch);
  EXPECT_EQ(array.get()->cLocks, 0u);
}

TEST_F(SafeArrayConversionTest, ObjectsInArraysAreReleasedWithThem) {
  const auto dispatch = NewDispatch();
  {
    const Variant variant = ToVariant(Array::Of({ObjectOver(dispatch), ObjectOver(dispatch)}));
    const Value back = FromVariant(*variant);
    EXPECT_EQ(dispatch->references, 5u);
  }
  EXPECT_EQ(dispatch->references, 1u);
}

}  // namespace
}  // namespace qva::windows
