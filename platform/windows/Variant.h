// The owners of an automation variant and of an automation array.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "platform/windows/Handle.h"

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
using SafeArray = std::unique_ptr<SAFEARRAY, GivenBackBy<SafeArrayDestroy>>;

}  // namespace qva::windows
