#include "platform/memory/Interceptor.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/text.h"

namespace qva {
namespace {

/// A path that grew longer says no more than where its last object's class stands; a macro that walks from
/// cell to cell would otherwise build paths without end.
constexpr std::size_t kLongestPath = 160;

/// A block of cells has thousands of elements, of which a trace shows the first.
constexpr std::size_t kDescribedElements = 20;

class Wrapper;

}  // namespace

class Interceptor::Core : public std::enable_shared_from_this<Interceptor::Core> {
 public:
  explicit Core(std::vector<CallObserver*> observers) : observers_(std::move(observers)) {}

  void Detach() { observers_.clear(); }
  void Forget(Object* object) { wrappers_.erase(object); }

  ObjectPtr Wrap(const ObjectPtr& object, std::u16string_view path);
  /// Wraps the objects in a value that a call gave: the value itself, or an array's elements. `path` gives
  /// their path and is asked only when there are any.
  template <class Path>
  Value WrapResult(const Value& value, Path path);

  /// Makes a call between the observers.
  template <class RealCall>
  Value Observe(const HostCall& call, RealCall real_call) {
    // A copy: an observer, or what the call sets off, may end the interceptor.
    const std::vector<CallObserver*> observers = observers_;
    try {
      Start(observers, call);
      const Value result = real_call();
      for (CallObserver* observer : observers) observer->Returned(call, result);
      return result;
    } catch (const AutomationError& error) {
      for (CallObserver* observer : observers) observer->Failed(call, error);
      throw;
    }
  }

 private:
  /// Every observer sees the start, also after one of them has refused the call.
  static void Start(const std::vector<CallObserver*>& observers, const HostCall& call) {
    std::optional<AutomationError> refusal;
    for (CallObserver* observer : observers) {
      try {
        observer->Starting(call);
      } catch (const AutomationError& error) {
        if (!refusal) refusal = error;
      }
    }
    if (refusal) throw *refusal;
  }

  std::vector<CallObserver*> observers_;
  std::unordered_map<Object*, Wrapper*> wrappers_;  // those that are alive
};

namespace {

class Wrapper final : public Object {
 public:
  Wrapper(std::shared_ptr<Interceptor::Core> core, ObjectPtr object, std::u16string path)
      : core_(std::move(core)), object_(std::move(object)), path_(std::move(path)) {}
  ~Wrapper() override { core_->Forget(object_.get()); }

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override;
  std::u16string TypeName() const override { return object_->TypeName(); }

  const ObjectPtr& object() const { return object_; }
  const std::u16string& path() const { return path_; }
  const Interceptor::Core* core() const { return core_.get(); }

 private:
  /// The path of what a call gives: "Application.Range("A1")".
  std::u16string ResultPath(std::u16string_view member, const Arguments& arguments) const;
  /// Stores the arguments that the call changed into the caller's.
  template <class Path>
  void GiveBack(Path path, const Arguments& sent, const Arguments& real, Arguments& arguments);

  std::shared_ptr<Interceptor::Core> core_;
  ObjectPtr object_;
  std::u16string path_;
};

const Wrapper* AsWrapper(const Value& value) {
  return value.Is(Value::Type::Object) ? dynamic_cast<const Wrapper*>(value.As<ObjectPtr>().get()) : nullptr;
}

bool HoldsObject(const Array& array) {
  return std::any_of(array.elements.begin(), array.elements.end(),
                     [](const Value& element) { return element.Is(Value::Type::Object); });
}

/// The value with every object in it replaced by what `replace` gives for it.
template <class Replace>
Value ReplaceObjects(const Value& value, Replace replace) {
  if (value.Is(Value::Type::Object)) return replace(value);
  if (!value.Is(Value::Type::Array) || !HoldsObject(value.AsArray())) return value;
  Array array = value.AsArray();
  for (Value& element : array.elements) {
    if (element.Is(Value::Type::Object)) element = replace(element);
  }
  return array;
}

/// Only this interceptor's own wrappers are taken off: one interceptor may stand around another.
Value UnwrapFor(const Interceptor::Core* core, const Value& value) {
  return ReplaceObjects(value, [core](const Value& object) -> Value {
    const Wrapper* wrapper = AsWrapper(object);
    return wrapper && wrapper->core() == core ? Value(wrapper->object()) : object;
  });
}

Arguments UnwrapFor(const Interceptor::Core* core, const Arguments& arguments) {
  Arguments real = arguments;
  for (Value& value : real.positional) value = UnwrapFor(core, value);
  for (NamedArgument& argument : real.named) argument.value = UnwrapFor(core, argument.value);
  return real;
}

}  // namespace

template <class Path>
Value Interceptor::Core::WrapResult(const Value& value, Path path) {
  return ReplaceObjects(value,
                        [&](const Value& object) -> Value { return Wrap(object.As<ObjectPtr>(), path()); });
}

namespace {

std::u16string Wrapper::ResultPath(std::u16string_view member, const Arguments& arguments) const {
  if (path_.size() > kLongestPath) return {};
  std::u16string path = path_;
  if (!member.empty()) path.append(u".").append(member);
  if (arguments.positional.empty() && arguments.named.empty()) return path;
  path += u'(';
  for (const Value& value : arguments.positional) {
    if (path.back() != u'(') path += u", ";
    path += DescribeArgument(value);
  }
  for (const NamedArgument& argument : arguments.named) {
    if (path.back() != u'(') path += u", ";
    path.append(argument.name).append(u":=").append(DescribeArgument(argument.value));
  }
  return path + u')';
}

template <class Path>
void Wrapper::GiveBack(Path path, const Arguments& sent, const Arguments& real, Arguments& arguments) {
  for (std::size_t i = 0; i < real.positional.size(); ++i) {
    if (real.positional[i] == sent.positional[i]) continue;
    arguments.positional[i] = core_->WrapResult(real.positional[i], path);
  }
  for (std::size_t i = 0; i < real.named.size(); ++i) {
    if (real.named[i].value == sent.named[i].value) continue;
    arguments.named[i].value = core_->WrapResult(real.named[i].value, path);
  }
}

Value Wrapper::Invoke(Access access, std::u16string_view member, Arguments& arguments) {
  // Kept alive: the call may make the caller let go of this wrapper.
  const ObjectPtr self(this);
  const HostCall call{.path = path_, .access = access, .member = member, .arguments = arguments};
  const Arguments sent = UnwrapFor(core_.get(), arguments);
  Arguments real = sent;
  const auto path = [&] { return ResultPath(member, arguments); };
  try {
    const Value result =
        core_->Observe(call, [&] { return core_->WrapResult(object_->Invoke(access, member, real), path); });
    GiveBack(path, sent, real, arguments);
    return result;
  } catch (const AutomationError&) {
    GiveBack(path, sent, real, arguments);
    throw;
  }
}

}  // namespace

ObjectPtr Interceptor::Core::Wrap(const ObjectPtr& object, std::u16string_view path) {
  if (!object) return object;
  const Wrapper* wrapped = AsWrapper(object);
  if (wrapped && wrapped->core() == this) return object;
  Wrapper*& wrapper = wrappers_[object.get()];
  if (!wrapper) {
    wrapper =
        new Wrapper(shared_from_this(), object, path.empty() ? object->TypeName() : std::u16string(path));
  }
  return ObjectPtr(wrapper);
}

Interceptor::Interceptor(std::initializer_list<CallObserver*> observers)
    : core_(std::make_shared<Core>(observers)) {
}

Interceptor::~Interceptor() {
  core_->Detach();
}

ObjectPtr Interceptor::Wrap(const ObjectPtr& object, std::u16string_view path) {
  return core_->Wrap(object, path);
}

ObjectPtr InterceptedFactory::Create(std::u16string_view programmatic_identifier) {
  const Arguments none;
  const HostCall call{.kind = HostCall::Kind::Create, .member = programmatic_identifier, .arguments = none};
  // The path of a created object is its class: "CommonObjects" of "NVXCommonObjects.CommonObjects".
  const std::u16string_view class_name =
      programmatic_identifier.substr(programmatic_identifier.rfind(u'.') + 1);
  return core_
      ->Observe(call,
                [&] { return Value(core_->Wrap(target().Create(programmatic_identifier), class_name)); })
      .ToObject();
}

namespace {

class ObservedForm : public ui::ForwardingForm {
 public:
  ObservedForm(std::shared_ptr<Interceptor::Core> core, std::unique_ptr<ui::Form> form, std::u16string name)
      : ForwardingForm(std::move(form)), core_(std::move(core)), name_(std::move(name)) {}

  void ShowModal() override {
    const Arguments none;
    core_->Observe({.path = name_, .member = u"ShowModal", .arguments = none}, [this] {
      ForwardingForm::ShowModal();
      return Value();
    });
  }

 private:
  std::shared_ptr<Interceptor::Core> core_;
  std::u16string name_;
};

}  // namespace

std::unique_ptr<ui::Form> InterceptedForms::Create(const ui::FormDescription& description) {
  const Arguments none;
  const HostCall call{.kind = HostCall::Kind::Create, .member = description.name, .arguments = none};
  std::unique_ptr<ui::Form> form;
  core_->Observe(call, [&] {
    form = ForwardingFormFactory::Create(description);
    return Value();
  });
  return std::make_unique<ObservedForm>(core_, std::move(form), description.name);
}

ObjectPtr Unwrap(const ObjectPtr& object) {
  const auto* wrapper = dynamic_cast<const Wrapper*>(object.get());
  return wrapper ? wrapper->object() : object;
}

std::u16string DescribeArgument(const Value& value) {
  if (const Wrapper* wrapper = AsWrapper(value)) return wrapper->path();
  if (!value.Is(Value::Type::Array)) return DescribeValue(value);
  const std::vector<Value>& elements = value.AsArray().elements;
  std::u16string text = u"Array(";
  for (std::size_t i = 0; i < elements.size() && i < kDescribedElements; ++i) {
    if (i > 0) text += u", ";
    text += DescribeArgument(elements[i]);
  }
  if (elements.size() > kDescribedElements)
    text += u", … of " + NumberText(static_cast<long long>(elements.size()));
  return text + u")";
}

}  // namespace qva
