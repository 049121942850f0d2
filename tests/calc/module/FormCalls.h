// Forms whose handlers fail, shown through the services that the library shows its own forms by.
#pragma once

#include "platform/member_table.h"

namespace qva {

/// Shows a form with one button, which Enter presses and which raises what `failure` names: "memory"
/// (std::bad_alloc), "range" (std::out_of_range) or "error" (error 1004); with any other name the button ends
/// the form. Result: what came out of the showing, and whether the form was visible afterwards.
class FormCalls : public Described<FormCalls> {
 public:
  static ClassBuilder Describe();

 private:
  std::u16string Show(const std::u16string& failure);
  /// How many automation objects live, those of the library and of the host among them: the loader gives all
  /// modules of a process the one count.
  std::int32_t LiveObjects() { return static_cast<std::int32_t>(LiveCount()); }
};

}  // namespace qva
