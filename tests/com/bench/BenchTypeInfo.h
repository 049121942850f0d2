// Type information that tells a type's name and identifier and nothing else.
#pragma once

#include <string>

#include "platform/windows/WindowsApi.h"

namespace qva::bench {

/// New type information with one reference. Types of the same name have the same identifier.
ITypeInfo* NewBenchTypeInfo(const std::wstring& name);

}  // namespace qva::bench
