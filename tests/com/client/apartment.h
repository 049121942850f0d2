// Calls from another apartment.
#pragma once

#include <functional>
#include <utility>

#include "tests/com/client/client.h"

namespace qva::com {

/// A dual interface on its way into another apartment.
class Parcel {
 public:
  /// The interface that the object describes.
  explicit Parcel(IDispatch& object) {
    ComPtr<ITypeInfo> type;
    EXPECT_EQ(type.Obtain([&](ITypeInfo** received) { return object.GetTypeInfo(0, 0, received); }), S_OK);
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(type->GetTypeAttr(&attributes), S_OK);
    interface_id_ = attributes->guid;
    type->ReleaseTypeAttr(attributes);
    EXPECT_EQ(stream_.Obtain([&](IStream** received) {
      return CoMarshalInterThreadInterfaceInStream(interface_id_, &object, received);
    }),
              S_OK);
  }

  /// Once, on arrival.
  ComPtr<IDispatch> Open() {
    ComPtr<IDispatch> object;
    EXPECT_EQ(object.Obtain([&](IDispatch** received) {
      return CoGetInterfaceAndReleaseStream(stream_.Detach(), interface_id_,
                                            reinterpret_cast<void**>(received));
    }),
              S_OK);
    return object;
  }

 private:
  IID interface_id_{};
  ComPtr<IStream> stream_;
};

/// A thread with an apartment of its own, which answers calls as long as it lives.
class OtherApartment {
 public:
  OtherApartment() = default;
  OtherApartment(const OtherApartment&) = delete;
  OtherApartment& operator=(const OtherApartment&) = delete;
  ~OtherApartment() {
    SetEvent(begin_);
    Wait(thread_);
    for (HANDLE handle : {thread_, begin_, done_}) CloseHandle(handle);
  }

  /// Runs `step` there, while the caller's apartment answers calls.
  void Run(std::function<void()> step) {
    step_ = std::move(step);
    SetEvent(begin_);
    Wait(done_);
  }

 private:
  static void Wait(HANDLE handle) {
    DWORD signalled = 0;
    EXPECT_EQ(CoWaitForMultipleHandles(0, INFINITE, 1, &handle, &signalled), S_OK);
  }

  static DWORD WINAPI Thread(void* context) {
    auto& apartment = *static_cast<OtherApartment*>(context);
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    for (Wait(apartment.begin_); apartment.step_; Wait(apartment.begin_)) {
      std::exchange(apartment.step_, nullptr)();
      SetEvent(apartment.done_);
    }
    CoUninitialize();
    return 0;
  }

  std::function<void()> step_;  ///< none: the end
  HANDLE begin_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE done_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE thread_ = CreateThread(nullptr, 0, &Thread, this, 0, nullptr);
};

}  // namespace qva::com
