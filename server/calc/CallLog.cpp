#include "server/calc/CallLog.h"

#include <cstdlib>
#include <fstream>

#include "platform/text.h"

namespace qva::calc {

CallLog::Entry::Entry(const Object& object, Access access, std::u16string_view member)
    : call_(object.TypeName() + u"." + std::u16string(member)) {
  if (access == Access::Put || access == Access::PutRef) call_ += u" =";
}

void CallLog::Entry::Returned(const Value& result) {
  if (result.Is(Value::Type::Empty)) return Write(call_);
  // A block of a table's records would fill pages.
  constexpr std::size_t kLongest = 200;
  std::u16string text = DescribeValue(result);
  if (text.size() > kLongest) text = text.substr(0, kLongest) + u"\u2026";
  Write(call_ + u" -> " + text);
}

void CallLog::Entry::Failed(const AutomationError& error) {
  Write(call_ + u" ! " + NumberText(error.number()) + u" " + error.description());
}

void CallLog::Write(std::u16string_view line) {
  static const char* const path = std::getenv("QVA_VARNHOLT_CALL_LOG");
  if (!path || !*path) return;
  // Opened for each line: a run that is killed has lost none.
  std::ofstream(path, std::ios::app) << ToUtf8(line) << '\n';
}

}  // namespace qva::calc
