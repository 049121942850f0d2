// The owner of a COM interface pointer.
#pragma once

#include <utility>

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// Holds one reference to a COM object, or none. Made from a raw pointer it adds a reference; a reference
/// that is already owed to us is taken over with Adopt, so that the reader sees it.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  explicit ComPtr(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(other.Detach()) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_) object_->Release();
  }

  /// Takes over a reference that the caller owns.
  static ComPtr Adopt(T* object) {
    ComPtr pointer;
    pointer.object_ = object;
    return pointer;
  }
  /// Gives the reference to the caller.
  T* Detach() { return std::exchange(object_, nullptr); }

  /// Replaces what is held by what `call` puts into the T** that it gets; returns call's HRESULT. What a call
  /// leaves behind when it fails is no object, whatever it looks like.
  template <class Call>
  HRESULT Obtain(Call&& call) {
    T* received = nullptr;
    const HRESULT code = std::forward<Call>(call)(&received);
    *this = Adopt(SUCCEEDED(code) ? received : nullptr);
    return code;
  }

  /// Another interface of the object; none when the object refuses it, in whatever manner.
  template <class Other>
  ComPtr<Other> Query() const {
    ComPtr<Other> other;
    if (object_) {
      other.Obtain([this](Other** received) {
        return object_->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(received));
      });
    }
    return other;
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  T* object_ = nullptr;
};

}  // namespace qva::windows
