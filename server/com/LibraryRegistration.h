// What the library registers.
#pragma once

#include "server/com/Registration.h"

namespace qva::com {

/// The registration of the library at `library_path`: programmatic identifiers, classes, interfaces and the
/// type library.
Registration DescribeRegistration(const std::wstring& library_path);

}  // namespace qva::com
