// What the exported entries of every COM server have in common.
#pragma once

#include <functional>
#include <optional>

#include "platform/object.h"
#include "server/com/Registration.h"
#include "server/com/ServerErrors.h"

namespace qva::com {

/// A class factory around a function, which may raise: the object is wrapped by the server's own WrapObject.
/// Result: as for DllGetClassObject.
HRESULT NewClassFactory(std::function<ObjectPtr()> create, REFIID interface_id, void** result);

/// Tells a thread whose claim of the module was not granted.
HRESULT ReportOtherThread();

/// Tells the user's tool (regsvr32 shows the code alone, debuggers and installers the text) what failed.
HRESULT ReportRegistration(const std::optional<RegistrationFailure>& failure);
/// The same for another reason: a code and a sentence for the user.
HRESULT ReportRefusal(HRESULT code, const std::wstring& reason);

/// Runs the body of an export; nothing it throws leaves the module.
template <class Body>
HRESULT Guard(Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return ReportEarly(GUID_NULL);
  }
}

}  // namespace qva::com
