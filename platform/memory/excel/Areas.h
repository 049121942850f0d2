#pragma once

#include <memory>

#include "platform/memory/excel/Range.h"

namespace qva::memory {

/// Range.Areas: the rectangles that a range is made of, each a Range. Made anew when it is asked for.
class Areas : public Described<Areas> {
 public:
  Areas(std::shared_ptr<ApplicationData> application, Reference reference)
      : application_(std::move(application)), reference_(std::move(reference)) {}
  static ClassBuilder Describe();

 private:
  std::int32_t Count();
  /// By position from 1. Raises 9.
  ObjectPtr Item(const Value& index);

  std::shared_ptr<ApplicationData> application_;
  Reference reference_;
};

}  // namespace qva::memory
