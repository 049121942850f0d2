#include "platform/memory/CallTrace.h"

#include "platform/text.h"

namespace qva {
namespace {

/// The first `count` positional arguments and all named ones, separated by commas.
std::u16string ArgumentList(const Arguments& arguments, std::size_t count) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) {
    if (!text.empty()) text += u", ";
    text += DescribeArgument(arguments.positional[i]);
  }
  for (const NamedArgument& argument : arguments.named) {
    if (!text.empty()) text += u", ";
    text.append(argument.name).append(u":=").append(DescribeArgument(argument.value));
  }
  return text;
}

std::u16string Line(const HostCall& call) {
  if (call.kind == HostCall::Kind::Create)
    return u"CreateObject(" + DescribeValue(std::u16string(call.member)) + u")";

  const bool is_put = call.access == Access::Put || call.access == Access::PutRef;
  const std::size_t given = call.arguments.positional.size();
  const bool has_new_value = is_put && given > 0;
  const std::u16string list = ArgumentList(call.arguments, has_new_value ? given - 1 : given);

  std::u16string line = call.access == Access::PutRef ? u"Set " : u"";
  line += call.path;
  if (!call.member.empty()) line.append(u".").append(call.member);
  if (!list.empty() || call.access == Access::Call) line.append(u"(").append(list).append(u")");
  if (has_new_value) line.append(u" = ").append(DescribeArgument(call.arguments.positional.back()));
  return line;
}

}  // namespace

void CallTrace::Starting(const HostCall& call) {
  open_.push_back(lines_.size());
  lines_.push_back(ToUtf8(Line(call)));
}

void CallTrace::Returned(const HostCall& call, const Value& result) {
  const bool is_object = result.Is(Value::Type::Object) && !result.IsNothing();
  // A method that gives nothing reads better without a result; a property that is empty says so.
  const bool gives_value = call.access == Access::Get || !result.Is(Value::Type::Empty);
  const bool is_put = call.access == Access::Put || call.access == Access::PutRef;
  Finish(is_object || is_put || !gives_value ? std::u16string() : u" -> " + DescribeArgument(result));
}

void CallTrace::Failed(const HostCall&, const AutomationError& error) {
  Finish(u" ! " + NumberText(error.number()) + u" " + error.description());
}

void CallTrace::Finish(std::u16string_view ending) {
  if (open_.empty()) return;  // cleared while the call ran
  lines_[open_.back()] += ToUtf8(ending);
  open_.pop_back();
}

std::string CallTrace::Text() const {
  std::string text;
  for (const std::string& line : lines_) text += line + "\n";
  return text;
}

void CallTrace::Clear() {
  lines_.clear();
  open_.clear();
}

}  // namespace qva
