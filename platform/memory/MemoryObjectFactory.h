// Object creation from functions that were registered under programmatic identifiers.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/object_factory.h"

namespace qva {

/// Recordsets (ADODB.Recordset) are registered from the start.
class MemoryObjectFactory : public ObjectFactory {
 public:
  using Creator = std::function<ObjectPtr()>;

  MemoryObjectFactory();

  /// Raises 429 for an identifier that was not registered and where the creator gives nothing. What a
  /// creator raises passes on.
  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

  /// Registers a class in place of an earlier one of the same identifier (any letter case).
  void Register(std::u16string_view programmatic_identifier, Creator creator);
  /// Registers a class that is made without arguments.
  template <class T>
  void Register(std::u16string_view programmatic_identifier) {
    Register(programmatic_identifier, [] { return ObjectPtr(MakeRef<T>()); });
  }

 private:
  std::map<std::u16string, Creator> creators_;  // by lower-case identifier
};

}  // namespace qva
