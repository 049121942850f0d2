// Objects of COM's registered classes.
#pragma once

#include "platform/object_factory.h"

namespace qva::windows {

/// The thread that creates objects must have entered an apartment. Recordsets are ADO's; where ADO is not
/// installed or cannot be reached by automation, the ones in memory.
class ComObjectFactory : public ObjectFactory {
 public:
  ObjectPtr Create(std::u16string_view programmatic_identifier) override;
};

}  // namespace qva::windows
