// VARIANTs and arrays by chance, honest ones and others: what is read stays as it was and can be written and
// read again, and a variable takes a value or stays as it was. Each run has one seed that is always the same
// and one of its own; QVA_VARIANT_SEED repeats the latter.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <random>

#include "tests/windows/windows_test.h"

namespace qva::windows {
namespace {

constexpr VARTYPE kScalars[] = {VT_I1,      VT_UI1,  VT_I2,    VT_UI2,  VT_I4,       VT_UI4,    VT_INT,
                                VT_UINT,    VT_I8,   VT_UI8,   VT_R4,   VT_R8,       VT_CY,     VT_DATE,
                                VT_DECIMAL, VT_BOOL, VT_ERROR, VT_BSTR, VT_DISPATCH, VT_UNKNOWN};
constexpr VARTYPE kNoValues[] = {VT_RECORD, VT_VARIANT,        VT_VOID, VT_LPWSTR,
                                 VT_CLSID,  VT_VECTOR | VT_I4, 0x7777};
constexpr int kInputs = 20000;
constexpr int kDeepestArray = 3;

/// The place of a VARIANT's content.
void* ContentOf(VARIANT& variant) {
  return variant.vt == VT_DECIMAL ? static_cast<void*>(&variant.decVal) : &variant.llVal;
}

bool IsSameNumber(double a, double b) {
  // A decimal has other digits than the double that is read of it.
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         std::abs(a - b) <= 1e-14 * std::abs(a);
}

bool IsSame(const Value& a, const Value& b) {
  if (a.type() != b.type()) return false;
  if (a.Is(Value::Type::Double)) return IsSameNumber(a.As<double>(), b.As<double>());
  if (a.Is(Value::Type::Date)) return IsSameNumber(a.As<Date>().serial, b.As<Date>().serial);
  if (a.Is(Value::Type::Object))
    return ToUnknown(a.As<ObjectPtr>()).get() == ToUnknown(b.As<ObjectPtr>()).get();
  if (!a.Is(Value::Type::Array)) return a == b;
  const Array& one = a.AsArray();
  const Array& other = b.AsArray();
  // An array that never had dimensions gets one of no elements.
  const bool has_same_bounds =
      one.dimensions.empty() ||
      std::ranges::equal(one.dimensions, other.dimensions, [](const auto& x, const auto& y) {
        return x.lower == y.lower && x.count == y.count;
      });
  return has_same_bounds && std::ranges::equal(one.elements, other.elements, IsSame);
}

class RandomVariantsTest : public NothingLeftTest {
 protected:
  void TryInputs(std::uint64_t seed) {
    random_.seed(seed);
    for (int n = 0; n < kInputs && !HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message() << "input " << n << " of seed " << seed);
      TryReading();
      TryStoring();
      referred_.clear();
      EXPECT_EQ(dispatch_->references, 1u);
    }
  }

 private:
  std::uint64_t Below(std::uint64_t end) { return random_() % end; }
  bool OneIn(std::uint64_t n) { return Below(n) == 0; }
  template <std::size_t kCount>
  VARTYPE OneOf(const VARTYPE (&types)[kCount]) {
    return types[Below(kCount)];
  }

  /// Bits by chance, often those of small or special numbers.
  std::uint64_t Bits() {
    constexpr double kSpecial[] = {
        0.5,  1.5,       -1.0,        2147483647.5,       1e15,   922337203685477.5807,
        1e19, -657434.5, 2958465.999, 1.8446744073709e19, 3.5e38, 1e300};
    switch (Below(4)) {
      case 0:
        return Below(8);
      case 1:
        return 0 - Below(8);
      case 2:
        return std::bit_cast<std::uint64_t>(kSpecial[Below(std::size(kSpecial))]);
      default:
        return random_();
    }
  }

  Variant AnyScalar(VARTYPE type) {
    Variant variant;
    switch (type) {
      case VT_BSTR: {
        std::u16string text;
        while (!OneIn(4)) text += static_cast<char16_t>(OneIn(3) ? random_() : u'0' + Below(10));
        variant->bstrVal = OneIn(8) ? nullptr : Bstr(text).Detach();
        break;
      }
      case VT_DISPATCH:
      case VT_UNKNOWN:
        variant->pdispVal = OneIn(3) ? nullptr : ComPtr<IDispatch>(dispatch_.get()).Detach();
        break;
      case VT_DECIMAL:
        variant->decVal.Lo64 = Bits();
        variant->decVal.Hi32 = static_cast<ULONG>(Below(3));
        variant->decVal.scale = static_cast<BYTE>(Below(32));
        break;
      default:
        variant->ullVal = Bits();
    }
    variant->vt = type;  // last, since a decimal's content lies over it
    return variant;
  }

  Variant AnyArray(int depth) {
    const VARTYPE type = OneIn(3) ? static_cast<VARTYPE>(VT_VARIANT) : OneOf(kScalars);
    SAFEARRAYBOUND bounds[3];
    const auto dimensions = static_cast<UINT>(1 + Below(3));
    std::size_t count = 1;
    for (UINT d = 0; d < dimensions; ++d) {
      bounds[d] = {static_cast<ULONG>(Below(4)), static_cast<LONG>(Below(7)) - 3};
      count *= bounds[d].cElements;
    }
    Variant variant;
    variant->parray = SafeArrayCreate(type, dimensions, bounds);
    variant->vt = static_cast<VARTYPE>(VT_ARRAY | type);
    auto* place = static_cast<char*>(variant->parray->pvData);
    const std::size_t size = variant->parray->cbElements;
    for (std::size_t i = 0; i < count; ++i, place += size) {
      Variant element = type == VT_VARIANT ? AnyVariant(depth + 1) : AnyScalar(type);
      VARIANT held = element.Detach();
      std::memcpy(place, type == VT_VARIANT ? &held : ContentOf(held), size);
      // Bits that decimals leave alone, and where a VARIANT has its type.
      if (type == VT_DECIMAL) reinterpret_cast<DECIMAL*>(place)->wReserved = static_cast<USHORT>(Below(0x20));
    }
    // Now and then the sender's word for the elements is not what they are.
    if (OneIn(8))
      variant->vt = static_cast<VARTYPE>(VT_ARRAY | (OneIn(3) ? VARTYPE{VT_VARIANT} : OneOf(kScalars)));
    return variant;
  }

  Variant AnyVariant(int depth = 0) {
    switch (Below(12)) {
      case 0:
        return {};
      case 1: {
        Variant null;
        null->vt = VT_NULL;
        return null;
      }
      case 2: {
        Variant none;
        none->vt = OneOf(kNoValues);
        return none;
      }
      case 3: {
        Variant nowhere;
        nowhere->vt = static_cast<VARTYPE>(VT_BYREF | OneOf(kScalars));
        return nowhere;
      }
      case 4:
        if (depth < kDeepestArray)
          return Variant::Adopt(ReferenceTo(referred_.emplace_back(AnyVariant(depth + 1))));
        return {};
      case 5:
      case 6:
        if (depth < kDeepestArray) return AnyArray(depth);
        return {};
      default:
        return AnyScalar(OneOf(kScalars));
    }
  }

  /// A reference to a variable, in its own type or as a variable of any.
  VARIANT ReferenceTo(Variant& variable) {
    VARIANT reference{};
    VARIANT& content = *variable.get();
    const bool has_own_type = content.vt & VT_ARRAY || std::ranges::count(kScalars, content.vt) == 1;
    if (has_own_type && !OneIn(3)) {
      reference.vt = static_cast<VARTYPE>(VT_BYREF | content.vt);
      reference.byref = content.vt & VT_ARRAY ? static_cast<void*>(&content.parray) : ContentOf(content);
    } else {
      reference.vt = VT_BYREF | VT_VARIANT;
      reference.pvarVal = &content;
    }
    return reference;
  }

  void TryReading() {
    const Variant variant = AnyVariant();
    const VARIANT before = *variant;
    Value value;
    const std::int32_t error = RaisedBy([&] { value = FromVariant(*variant); });
    EXPECT_TRUE(error == 0 || error == kTypeMismatch) << error;
    EXPECT_EQ(std::memcmp(&before, &*variant, sizeof before), 0);
    EXPECT_TRUE(error != 0 || IsSame(value, FromVariant(*ToVariant(value)))) << "type " << variant->vt;
    const bool has_array = (variant->vt & (VT_ARRAY | VT_BYREF)) == VT_ARRAY;
    EXPECT_TRUE(!has_array || variant->parray->cLocks == 0);
  }

  void TryStoring() {
    Variant& variable = referred_.emplace_back(AnyVariant(kDeepestArray - 1));
    const VARIANT reference = ReferenceTo(variable);
    const Variant source = AnyVariant();
    Value value;
    RaisedBy([&] { value = FromVariant(*source); });
    const VARIANT before = *variable;
    const std::int32_t error = RaisedBy([&] { StoreByReference(reference, value); });
    SCOPED_TRACE(testing::Message() << testing::PrintToString(value) << " in type " << reference.vt
                                    << ", where type " << before.vt << " was and " << variable->vt << " is");
    constexpr std::int32_t kErrors[] = {
        0, kOverflow, kTypeMismatch, kObjectNotSet, kInvalidUseOfNull, kUnsupportedMember};
    EXPECT_EQ(std::ranges::count(kErrors, error), 1) << error;
    if (error != 0) {
      EXPECT_EQ(std::memcmp(&before, &*variable, sizeof before), 0);
      return;
    }
    EXPECT_TRUE(reference.vt == (VT_BYREF | VT_VARIANT) || variable->vt == before.vt);
    const Value stored = FromVariant(reference);
    StoreByReference(reference, stored);
    EXPECT_TRUE(IsSame(FromVariant(reference), stored));
    const bool takes_any = reference.vt == (VT_BYREF | VT_VARIANT) && !(variable->vt & VT_BYREF);
    EXPECT_TRUE(!takes_any || IsSame(value, stored));
  }

  std::mt19937_64 random_;
  ComPtr<TestDispatch> dispatch_ = NewDispatch();
  std::deque<Variant> referred_;  ///< what references point to
};

TEST_F(RandomVariantsTest, OfOneSeedAreReadAndStored) {
  TryInputs(1);
}

TEST_F(RandomVariantsTest, OfAnySeedAreReadAndStored) {
  const char* asked = std::getenv("QVA_VARIANT_SEED");
  const std::uint64_t seed = asked ? std::strtoull(asked, nullptr, 10) : std::random_device()();
  std::printf("QVA_VARIANT_SEED=%llu\n", static_cast<unsigned long long>(seed));
  TryInputs(seed);
}

}  // namespace
}  // namespace qva::windows
