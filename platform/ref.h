// The one owner of automation objects: a counted reference.
#pragma once

#include <concepts>
#include <cstddef>
#include <utility>

namespace qva {

/// Holds one reference to a T (an automation object), or none. Made from a raw pointer it adds a reference;
/// a reference that is already owed to us is taken over with Adopt, so that the reader sees it.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  explicit Ref(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <std::derived_from<T> U>
  Ref(const Ref<U>& other) : Ref(static_cast<T*>(other.get())) {}
  ~Ref() { reset(); }

  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Takes over a reference that the caller owns.
  static Ref Adopt(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }

  void reset() {
    // Cleared first: what the release sets off may look at this reference again.
    if (T* object = std::exchange(object_, nullptr)) object->Release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }
  friend bool operator==(const Ref& a, std::nullptr_t) { return a.object_ == nullptr; }

 private:
  T* object_ = nullptr;
};

/// Creates a T, which starts without references, and returns the first one.
template <class T, class... Args>
Ref<T> MakeRef(Args&&... args) {
  return Ref<T>(new T(std::forward<Args>(args)...));
}

}  // namespace qva
