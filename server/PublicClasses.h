// The classes that report workbooks create, by name.
#pragma once

#include <span>
#include <string_view>

#include "platform/member_table.h"

namespace qva {

/// One public class. Its programmatic identifier is the library name, a point and the class name.
struct PublicClass {
  const ClassDescription& (*description)();
  ObjectPtr (*create)();
};

std::span<const PublicClass> PublicClasses();

/// The public class of a programmatic identifier in any letter case; null when it names none.
const PublicClass* FindPublicClass(std::u16string_view programmatic_identifier);

/// Whether an object is of a public class.
bool IsPublicObject(const Object& object);

/// Creates an object of the class for a macro, running the library's start-up before the first one.
/// Raises what start-up raises.
ObjectPtr CreatePublicObject(const PublicClass& public_class);

}  // namespace qva
