// Object creation by programmatic identifier.
#pragma once

#include <string_view>

#include "platform/automation.h"

namespace qva {

class ObjectFactory {
 public:
  virtual ~ObjectFactory() = default;

  /// A new object of the class that is registered under the programmatic identifier ("Library.Class", any
  /// letter case). Never null; it is counted, and may outlive the factory. Raises 429 when no such class is
  /// there or it cannot be created (platform/cannot_create.h names class and cause), and what its class
  /// raises; nothing is left behind.
  virtual ObjectPtr Create(std::u16string_view programmatic_identifier) = 0;
};

}  // namespace qva
