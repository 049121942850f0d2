// How calls from COM reach an object of the library: the part of a COM object that does not depend on its
// interface.
#pragma once

#include <cstddef>

#include "platform/member_table.h"
#include "platform/windows/WindowsApi.h"

namespace qva::com {

/// Answers IDispatch and vtable calls for one object. Nothing throws; failures are reported as
/// server/com/ServerErrors.h says. Its owner keeps it alive through each call.
class ObjectCalls {
 public:
  explicit ObjectCalls(ObjectPtr object) : object_(std::move(object)), table_(object_->MemberTable()) {}

  Object& object() const { return *object_; }

  /// IDispatch::GetIDsOfNames: a member's name in any letter case, then names of its arguments.
  HRESULT IdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept;

  /// IDispatch::Invoke. Arguments may be values or references, also a reference to a VARIANT that is itself a
  /// reference. What the member leaves in an argument is written back into the caller's variable in the
  /// variable's own type, also when the member fails; a variable of any type (VARIANT) takes the result's
  /// type. Variables whose value stays the same are left alone.
  HRESULT Invoke(DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* error,
                 UINT* argument) const noexcept;

  /// Calls the member at a place of the member table. `raw` points to each argument of the vtable member in
  /// turn; `result`, when the member has one, receives it in the member's own type and is zero after a
  /// failure. A reference that is null counts as left out; where it may not be, or where the member has a
  /// result and `result` is null, the error is E_POINTER. Result: S_OK, or the code of the error, whose error
  /// object is set for `interface_id`.
  HRESULT CallPlace(std::size_t place, REFIID interface_id, void* result,
                    const void* const* raw) const noexcept;

 private:
  ObjectPtr object_;
  const ClassDescription* table_;
};

}  // namespace qva::com
