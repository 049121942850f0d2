// A log of what macros call, one readable line each, for whoever runs a report and wants to see its steps.
#pragma once

#include <string>

#include "platform/automation.h"

namespace qva::calc {

/// Lines go to the file that the environment variable QVA_VARNHOLT_CALL_LOG names, in UTF-8; without it
/// nothing is written. A file that cannot be written is no failure of the report.
class CallLog {
 public:
  /// One call. Its line is written when it returned or failed.
  class Entry {
   public:
    Entry(const Object& object, Access access, std::u16string_view member);
    void Returned(const Value& result);
    void Failed(const AutomationError& error);

   private:
    std::u16string call_;
  };

  /// A line of one's own.
  static void Write(std::u16string_view line);
};

}  // namespace qva::calc
