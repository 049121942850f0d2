// The host's plant object.
#pragma once

#include "platform/member_table.h"

namespace qva::embedded {

class Plant : public Described<Plant> {
 public:
  static ClassBuilder Describe();

  /// Gives the plant its book. Raises Failure::WrongParameters without one.
  void Init(ObjectPtr book);
  /// The book that Init gave. Raises Failure::NotInitialised before.
  ObjectPtr Book() const;

 private:
  ObjectPtr book_;
};

}  // namespace qva::embedded
