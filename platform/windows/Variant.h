// The owners of an automation variant and of an automation array.
#pragma once

#include <type_traits>
#include <utility>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Owns what a VARIANT holds. A sequence of these is a sequence of VARIANTs.
class Variant {
 public:
  Variant() { VariantInit(&variant_); }
  Variant(Variant&& other) noexcept : variant_(other.Detach()) {}
  Variant& operator=(Variant&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Variant() { VariantClear(&variant_); }

  /// Takes over a VARIANT that the caller owns.
  static Variant Adopt(const VARIANT& variant) {
    Variant owner;
    owner.variant_ = variant;
    return owner;
  }
  /// Gives what is held to the caller.
  VARIANT Detach() {
    const VARIANT held = variant_;
    VariantInit(&variant_);
    return held;
  }

  VARIANT* get() { return &variant_; }
  const VARIANT& operator*() const { return variant_; }
  VARIANT* operator->() { return &variant_; }
  const VARIANT* operator->() const { return &variant_; }

 private:
  VARIANT variant_;
};

static_assert(sizeof(Variant) == sizeof(VARIANT) && std::is_standard_layout_v<Variant>);

/// Owns a SAFEARRAY and everything in it, or none.
class SafeArray {
 public:
  SafeArray() = default;
  SafeArray(SafeArray&& other) noexcept : array_(other.Detach()) {}
  SafeArray& operator=(SafeArray&& other) noexcept {
    std::swap(array_, other.array_);
    return *this;
  }
  ~SafeArray() {
    if (array_) SafeArrayDestroy(array_);
  }

  /// Takes over an array that the caller owns.
  static SafeArray Adopt(SAFEARRAY* array) {
    SafeArray owner;
    owner.array_ = array;
    return owner;
  }
  /// Gives the array to the caller.
  SAFEARRAY* Detach() { return std::exchange(array_, nullptr); }

  SAFEARRAY* get() const { return array_; }
  explicit operator bool() const { return array_ != nullptr; }

 private:
  SAFEARRAY* array_ = nullptr;
};

}  // namespace qva::windows
