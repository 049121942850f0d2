// Object creation that fails on demand, over any other.
#pragma once

#include <map>
#include <string>

#include "platform/cannot_create.h"
#include "platform/forwarding.h"
#include "platform/text.h"

namespace qva {

/// Lets every creation through until it is told to refuse a class, which then is not asked of the target.
class FaultyObjectFactory : public ForwardingObjectFactory {
 public:
  using ForwardingObjectFactory::ForwardingObjectFactory;

  /// From now on the class (any letter case) raises 429, as if it were not there, or another error.
  void Refuse(std::u16string_view programmatic_identifier) {
    Refuse(programmatic_identifier, CannotCreate(programmatic_identifier));
  }
  void Refuse(std::u16string_view programmatic_identifier, AutomationError error) {
    refusals_.insert_or_assign(ToLower(programmatic_identifier), std::move(error));
  }
  void Allow(std::u16string_view programmatic_identifier) {
    refusals_.erase(ToLower(programmatic_identifier));
  }

  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    const auto refusal = refusals_.find(ToLower(programmatic_identifier));
    if (refusal != refusals_.end()) throw AutomationError(refusal->second);
    return ForwardingObjectFactory::Create(programmatic_identifier);
  }

 private:
  std::map<std::u16string, AutomationError> refusals_;  // by lower-case identifier
};

}  // namespace qva
