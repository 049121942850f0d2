// An object of LibreOffice - its Excel object model above all - behind the automation protocol.
#pragma once

#include <com/sun/star/beans/XIntrospectionAccess.hpp>
#include <memory>
#include <utility>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// Late-bound access to a UNO object by member names in any letter case. Arguments that are left out are
/// passed as nothing at all, which LibreOffice's model takes as omitted. Arguments by reference do not come
/// back. What LibreOffice lacks of Excel's model is filled in by platform/calc/MemberOverrides.h. What
/// LibreOffice throws is raised as platform/calc/UnoError.h has it.
class UnoObject : public Object {
 public:
  /// Takes the value that the object came in.
  explicit UnoObject(const Any& target) : target_(target) {}

  const Any& target() const { return target_; }

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override;
  std::u16string TypeName() const override { return Type(); }
  /// The same as TypeName, kept.
  const std::u16string& Type() const;

  /// Keeps what is to go with the object, in place of what was kept before.
  void Keep(std::shared_ptr<void> companion) { companion_ = std::move(companion); }

  /// LibreOffice's own member, whatever stands in for it or is looked at before.
  Value InvokeOwn(Access access, std::u16string_view member, const Arguments& arguments);

 private:
  Value InvokeUnguarded(Access access, std::u16string_view member, const Arguments& arguments);
  Value Read(const OUString& name, const Arguments& arguments);
  void Write(const OUString& name, const Arguments& arguments);
  bool HasMethod(const OUString& name);
  bool HasProperty(const OUString& name);
  std::u16string DefaultMember() const;
  /// LibreOffice's description of the object, made on first use. The service that Basic itself goes by;
  /// "Invocation" would not serve for objects with an invocation of their own, such as worksheets.
  css::beans::XIntrospectionAccess& Introspection();

  Any target_;
  mutable std::u16string type_;  ///< empty until it is asked for
  Reference<css::beans::XIntrospectionAccess> introspection_;
  std::shared_ptr<void> companion_;
};

/// LibreOffice's own member of an object of its, past the member that the library has in its place.
inline Value Own(const ObjectPtr& object, Access access, std::u16string_view member,
                 const Arguments& arguments) {
  return static_cast<UnoObject&>(*object).InvokeOwn(access, member, arguments);
}

}  // namespace qva::calc
