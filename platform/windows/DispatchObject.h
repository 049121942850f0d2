// Objects of other servers, seen through the seam's protocol.
#pragma once

#include <memory>

#include "platform/automation.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/DispatchNames.h"

namespace qva::windows {

/// Passes every call on to an automation object. Names are resolved once per type and member. Arguments are
/// passed by value; what a member does to its by-reference arguments does not come back, since servers
/// disagree on how a reference of no type of its own is to be passed, and no member that the library uses
/// answers that way. A busy server is asked again for a while (see Busy.h). Errors are those of Error.h.
class DispatchObject final : public Object {
 public:
  /// `dispatch` must hold an object.
  explicit DispatchObject(ComPtr<IDispatch> dispatch) : dispatch_(std::move(dispatch)) {}

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override;
  /// The type's name in its server's type library, "Object" when it tells none.
  std::u16string TypeName() const override;

  const ComPtr<IDispatch>& dispatch() const { return dispatch_; }

 private:
  const std::shared_ptr<DispatchNames>& Names() const;

  ComPtr<IDispatch> dispatch_;
  mutable std::shared_ptr<DispatchNames> names_;  ///< nothing until the first call
};

/// A COM object without automation, which can only be kept and handed back.
class UnknownObject final : public Object {
 public:
  explicit UnknownObject(ComPtr<IUnknown> unknown) : unknown_(std::move(unknown)) {}

  Value Invoke(Access, std::u16string_view, Arguments&) override {
    throw AutomationError(kUnsupportedMember);
  }
  std::u16string TypeName() const override { return u"Unknown"; }

  const ComPtr<IUnknown>& unknown() const { return unknown_; }

 private:
  ComPtr<IUnknown> unknown_;
};

}  // namespace qva::windows
