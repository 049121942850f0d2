// The automation protocol: get, put, put-reference and call of a named member. Excel's objects, the host's
// components, recordsets and the library's own public classes all speak it.
#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "platform/ref.h"

namespace qva {

class ClassDescription;
class Value;
struct Arguments;

/// What is asked of a member. Late-bound callers cannot always tell a property from a method without
/// arguments, so Get and Call reach either.
enum class Access { Get, Put, PutRef, Call };

/// Any object that automation reaches. Counted by references, starting at 0; freed when the last one goes.
class Object {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  /// Whoever keeps the object counts for one reference and gives it back once; Ref (platform/ref.h) does
  /// both.
  void AddRef() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
  void Release() noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }

  /// Invokes a member by its name, in any letter case; the empty name is the default member. The result is
  /// what the member gives, Empty where it gives nothing and for Put and PutRef. Arguments by reference hold
  /// their new values afterwards, also when it raises. Objects that go in or come out are counted by whoever
  /// keeps them. Raises AutomationError: 438 for an unknown member, 450 for a wrong number of arguments, 449
  /// for one left out that is not optional, 448 for an unknown argument name, 13 and 6 for arguments that do
  /// not convert, and whatever the member raises. An object lives to the end of its own call, whatever is let
  /// go of meanwhile; each door sees to it.
  virtual Value Invoke(Access access, std::u16string_view member, Arguments& arguments) = 0;

  /// The name of the object's class, such as "Range". For traces and error texts; never decides anything.
  /// Does not raise: it is empty where the server does not tell.
  virtual std::u16string TypeName() const = 0;

  /// The object's member table where it has one (platform/member_table.h), which is never destroyed; null for
  /// an object of another server. Does not raise.
  virtual const ClassDescription* MemberTable() const { return nullptr; }

  /// Objects of every kind that are alive in this process.
  static long LiveCount() noexcept { return live_.load(std::memory_order_relaxed); }
  long ReferenceCount() const noexcept { return references_.load(std::memory_order_relaxed); }

 protected:
  Object() noexcept { live_.fetch_add(1, std::memory_order_relaxed); }
  virtual ~Object() { live_.fetch_sub(1, std::memory_order_relaxed); }

 private:
  std::atomic<long> references_{0};
  static inline std::atomic<long> live_{0};
};

using ObjectPtr = Ref<Object>;

}  // namespace qva
