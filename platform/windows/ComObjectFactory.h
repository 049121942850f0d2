// Objects of COM's registered classes.
#pragma once

#include <atomic>

#include "platform/object_factory.h"

namespace qva::windows {

/// The thread that creates objects must have entered an apartment. Recordsets are ADO's where ADO keeps what
/// the library puts into them, otherwise the ones in memory. Which of them is found out on a recordset of its
/// own when the first one is asked for, and holds for all later ones.
class ComObjectFactory : public ObjectFactory {
 public:
  ObjectPtr Create(std::u16string_view programmatic_identifier) override;

 private:
  ObjectPtr CreateRecordset();

  enum class Recordsets { NotTried, Ado, InMemory };
  std::atomic<Recordsets> recordsets_ = Recordsets::NotTried;
};

}  // namespace qva::windows
