// What watches or disturbs the calls that cross the automation protocol.
#pragma once

#include <string>

#include "platform/automation.h"

namespace qva {

/// One call into a host object, or the creation of one.
struct HostCall {
  enum class Kind { Invoke, Create };
  Kind kind = Kind::Invoke;
  /// Where the object came from, such as "Application.ActiveWindow"; empty for Create.
  std::u16string_view path;
  Access access = Access::Call;
  /// The member as the caller wrote it; empty for the default member. For Create the programmatic identifier.
  std::u16string_view member;
  /// As the caller passed them.
  const Arguments& arguments;
};

/// Sees every call of an interceptor: Starting, then either Returned or Failed.
class CallObserver {
 public:
  virtual ~CallObserver() = default;

  /// The call is about to be made. An AutomationError raised here stands for the call's own failure: the call
  /// is not made, and every observer sees it Failed.
  virtual void Starting(const HostCall&) {}
  /// The call went through. Raises nothing.
  virtual void Returned(const HostCall&, const Value& /*result*/) {}
  /// The call raised an automation error. Raises nothing.
  virtual void Failed(const HostCall&, const AutomationError&) {}
};

/// `value` as a reader would write it in a macro. An object that an interceptor gave out is written as the
/// path it came from, any other one as its class; of a long array the first elements and how many there are.
std::u16string DescribeArgument(const Value& value);

}  // namespace qva
