#include "server/call_log.h"

#include <chrono>
#include <memory>
#include <utility>

#include "platform/date.h"
#include "platform/error.h"
#include "platform/filesystem/rotated_file.h"
#include "platform/services.h"
#include "platform/text.h"
#include "platform/value.h"

namespace qva {
namespace {

/// Never destroyed: macros may call while the process ends.
CallLogSettings& Settings() {
  static auto& settings = *new CallLogSettings;
  return settings;
}

std::u16string Shortened(std::u16string text) {
  constexpr std::size_t kLongest = 200;
  if (text.size() > kLongest) text = text.substr(0, kLongest) + u"\u2026";
  return text;
}

std::u16string TypeAndSize(const Value& value) {
  switch (value.type()) {
    case Value::Type::Boolean:
      return u"Boolean";
    case Value::Type::Byte:
    case Value::Type::Int16:
    case Value::Type::Int32:
    case Value::Type::Double:
    case Value::Type::Currency:
      return u"number";
    case Value::Type::Date:
      return u"date";
    case Value::Type::Text:
      return u"text of " + NumberText(static_cast<long long>(value.As<std::u16string>().size()));
    case Value::Type::Array: {
      std::u16string sizes;
      for (const Array::Dimension& dimension : value.AsArray().dimensions) {
        sizes += (sizes.empty() ? u"" : u" x ") + NumberText(dimension.count);
      }
      return u"array of " + sizes;
    }
    case Value::Type::Error:
      return u"error value";
    case Value::Type::Empty:
    case Value::Type::Null:
    case Value::Type::Missing:
    case Value::Type::Object:
      break;
  }
  return DescribeValue(value);
}

std::u16string OnOneLine(std::u16string text) {
  for (char16_t& c : text) {
    if (c < u' ') c = u' ';
  }
  return text;
}

}  // namespace

struct LoggedCall::Call {
  Date came;
  std::chrono::milliseconds started;
  bool is_own;
  std::u16string member;
  std::u16string arguments;
  std::u16string outcome;

  std::u16string Description(const Value& value) const {
    const bool is_shown = Settings().with_content || (is_own && !value.Is(Value::Type::Array));
    return OnOneLine(Shortened(is_shown ? DescribeValue(value) : TypeAndSize(value)));
  }

  void Add(std::u16string_view name, const Value& value) {
    if (!arguments.empty()) arguments += u", ";
    if (!name.empty()) arguments.append(OnOneLine(std::u16string(name))).append(u":=");
    arguments += Description(value);
  }

  void SetError(std::int32_t number, std::u16string_view source, std::u16string_view description) {
    outcome = u"! " + NumberText(number) + u" " +
              OnOneLine(std::u16string(source) + u": " + std::u16string(description));
  }
};

void SetCallLog(CallLogSettings settings) {
  Settings() = std::move(settings);
  LoggedCall::is_on_ = !Settings().file.empty();
}

void LoggedCall::End() noexcept {
  const std::unique_ptr<Call> call(std::exchange(call_, nullptr));
  IgnoreFailures([&] {
    const auto duration = GetServices().clock->Running() - call->started;
    const std::u16string line = FormatByWindowsPattern(call->came, u"yyyy-MM-dd HH:mm:ss") + u'\t' +
                                NumberText(ProcessId()) + u'\t' + NumberText(duration.count()) + u" ms\t" +
                                call->member + u"\t(" + call->arguments + u")\t" + call->outcome + u'\n';
    AppendRotated(Settings().file, ToUtf8(line), kLargestCallLog);
  });
}

void LoggedCall::Begin(const Object& object, Access access, std::u16string_view member) noexcept {
  IgnoreFailures([&] {
    auto call = std::make_unique<Call>();
    const Clock& clock = *GetServices().clock;
    call->came = clock.Now();
    call->started = clock.Running();
    call->is_own = Settings().is_own && Settings().is_own(object);
    call->member = OnOneLine(object.TypeName() + u'.' + std::u16string(member));
    if (access == Access::Put || access == Access::PutRef) call->member += u" =";
    call_ = call.release();
  });
}

void LoggedCall::Describe(std::span<const Value> positional, std::span<const NamedArgument> named) noexcept {
  IgnoreFailures([&] {
    for (const Value& value : positional) call_->Add({}, value);
    for (const NamedArgument& argument : named) call_->Add(argument.name, argument.value);
  });
}

void LoggedCall::EndWith(const Value& result) noexcept {
  IgnoreFailures([&] {
    if (!result.Is(Value::Type::Empty)) call_->outcome = u"-> " + call_->Description(result);
  });
}

void LoggedCall::EndWithError() noexcept {
  IgnoreFailures([&] {
    UseCaught(
        [&](const Caught& caught) { call_->SetError(caught.number, caught.source, caught.description); });
  });
}

}  // namespace qva
