// The automation variant: every value that crosses the protocol, and automation's conversions between them.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/object.h"

namespace qva {

/// A date and time: whole days since 30 December 1899, the time of day as the fraction. For days before
/// that the fraction still counts forward from midnight of its day, as automation's DATE does.
struct Date {
  double serial = 0;
  friend auto operator<=>(const Date&, const Date&) = default;
};

/// A fixed-point amount, scaled by 10 000 (automation's CY).
struct Currency {
  std::int64_t scaled = 0;
  friend auto operator<=>(const Currency&, const Currency&) = default;
};

/// The database null: known to be without a value.
struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// An optional argument that the caller left out (VT_ERROR with DISP_E_PARAMNOTFOUND).
struct Missing {
  friend bool operator==(const Missing&, const Missing&) = default;
};

/// An error held as a value, such as the #N/A of a cell (VT_ERROR with any other code).
struct ErrorValue {
  std::int32_t code = 0;
  friend bool operator==(const ErrorValue&, const ErrorValue&) = default;
};

/// An array of values with any bounds. Immutable once it stands in a Value.
struct Array {
  struct Dimension {
    std::int32_t lower = 0;
    std::int32_t count = 0;
  };
  std::vector<Dimension> dimensions;
  std::vector<Value> elements;  ///< last dimension running fastest

  /// A one-dimensional array whose first index is `lower`.
  static Value Of(std::vector<Value> elements, std::int32_t lower = 0);
  /// A block of `rows` by `columns`, both from 1, as the cells of a range travel.
  static Value Block(std::int32_t rows, std::int32_t columns, std::vector<Value> elements);
};

/// One value of the automation protocol. Copying is cheap but for text; objects are shared.
class Value {
 public:
  /// What the value holds, in the order of the variant.
  enum class Type {
    Empty,
    Null,
    Missing,
    Error,
    Boolean,
    Byte,
    Int16,
    Int32,
    Double,
    Currency,
    Date,
    Text,
    Object,
    Array
  };

  Value() = default;
  Value(Null v) : data_(v) {}
  Value(Missing v) : data_(v) {}
  Value(ErrorValue v) : data_(v) {}
  Value(bool v) : data_(v) {}
  Value(std::uint8_t v) : data_(v) {}
  Value(std::int16_t v) : data_(v) {}
  Value(std::int32_t v) : data_(v) {}
  Value(double v) : data_(v) {}
  Value(Currency v) : data_(v) {}
  Value(Date v) : data_(v) {}
  Value(std::u16string v) : data_(std::move(v)) {}
  Value(std::u16string_view v) : data_(std::u16string(v)) {}
  Value(const char16_t* v) : data_(std::u16string(v)) {}
  Value(ObjectPtr v) : data_(std::move(v)) {}
  template <class T>
  requires std::derived_from<T, Object> Value(const Ref<T>& v) : data_(ObjectPtr(v)) {}
  Value(Array v) : data_(std::make_shared<const Array>(std::move(v))) {}
  Value(const void*) = delete;  // a pointer must never become a Boolean

  Type type() const { return static_cast<Type>(data_.index()); }
  bool Is(Type t) const { return type() == t; }
  /// True for an object that is a null reference ("Nothing").
  bool IsNothing() const;

  /// Conversions by automation's rules. All raise AutomationError: 13 (Type mismatch) when the value cannot
  /// become the type, 6 (Overflow) when it lies outside the type's range, 94 (Invalid use of Null) for Null.
  /// An object stands for the value of its default property; a null reference raises 91. Numbers in text
  /// are read by the user's regional settings.

  /// "True" and "False" in any letter case, or a number: 0 is false, anything else true.
  bool ToBoolean() const;
  /// Whole numbers round half to even: 0.5 is 0, 1.5 is 2.
  std::uint8_t ToByte() const;
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  double ToDouble() const;
  Currency ToCurrency() const;  ///< text by its own digits, not by way of a double
  /// A number is a serial date; text is a date, a time or both by the user's regional settings.
  /// Range: 1 January 100 to 31 December 9999, otherwise Overflow, also of what is a date already.
  Date ToDate() const;
  /// Numbers with up to 15 digits, Booleans as "True"/"False", dates by the regional short date and long
  /// time.
  std::u16string ToText() const;
  /// The object itself, which may be a null reference. Anything else raises 13.
  const ObjectPtr& ToObject() const;
  /// The array. Anything else raises 13.
  const Array& ToArray() const;

  /// Access to what is held, without conversion. The type must be right.
  template <class T>
  const T& As() const {
    return std::get<T>(data_);
  }
  const Array& AsArray() const { return *std::get<std::shared_ptr<const Array>>(data_); }

  /// Same type and same content; objects and arrays are equal when they are one and the same.
  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::variant<std::monostate, Null, Missing, ErrorValue, bool, std::uint8_t, std::int16_t, std::int32_t,
               double, Currency, Date, std::u16string, ObjectPtr, std::shared_ptr<const Array>>
      data_;
};

/// The value as a reader would write it in a macro: 12, "text", #2024-06-12#, Nothing. For traces and tests.
std::u16string DescribeValue(const Value& value);

}  // namespace qva
