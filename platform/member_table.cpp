#include "platform/member_table.h"

#include "platform/text.h"

namespace qva {

namespace {

/// The value of an omitted optional argument when the table names none.
Value ZeroOf(ParameterType type) {
  switch (type) {
    case ParameterType::Boolean:
      return false;
    case ParameterType::Byte:
      return std::uint8_t{0};
    case ParameterType::Int16:
      return std::int16_t{0};
    case ParameterType::Int32:
      return std::int32_t{0};
    case ParameterType::Double:
      return 0.0;
    case ParameterType::Currency:
      return Currency{};
    case ParameterType::Date:
      return Date{};
    case ParameterType::Text:
      return u"";
    case ParameterType::Object:
      return ObjectPtr();
    case ParameterType::Any:
    case ParameterType::None:
      break;
  }
  return Missing{};
}

Value ValueOf(const DefaultValue& value, ParameterType type) {
  switch (value.kind) {
    case DefaultValue::Kind::OfType:
      return ZeroOf(type);
    case DefaultValue::Kind::Empty:
      break;
    case DefaultValue::Kind::Boolean:
      return value.number != 0;
    case DefaultValue::Kind::Number:
      return value.number;
    case DefaultValue::Kind::Text:
      return value.text;
  }
  return {};
}

bool Answers(MemberKind kind, Access access) {
  switch (access) {
    case Access::Get:
    case Access::Call:
      return kind == MemberKind::Method || kind == MemberKind::Get;
    case Access::Put:
      return kind == MemberKind::Put;
    case Access::PutRef:
      return kind == MemberKind::PutRef;
  }
  return false;
}

/// Lines the caller's arguments up with the parameters. `positions[i]` tells where parameter i's argument
/// stands: its position, or −1 − its index among the named ones; kOmitted when it was left out.
constexpr int kOmitted = INT32_MAX;

struct Binding {
  std::vector<Value> values;
  std::vector<int> positions;
};

Binding Bind(const Member& member, const Arguments& arguments) {
  const auto& parameters = member.parameters;
  if (arguments.positional.size() + arguments.named.size() > parameters.size()) {
    throw AutomationError(kWrongArgumentCount).OfCall();
  }
  Binding binding{std::vector<Value>(parameters.size()), std::vector<int>(parameters.size(), kOmitted)};
  // The new value of a property comes last in the parameters, whatever optional ones stand before it.
  const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
  for (std::size_t i = 0; i < arguments.positional.size(); ++i) {
    const bool is_new_value = is_put && i + 1 == arguments.positional.size();
    binding.positions[is_new_value ? parameters.size() - 1 : i] = static_cast<int>(i);
  }
  for (std::size_t n = 0; n < arguments.named.size(); ++n) {
    std::size_t i = 0;
    while (i < parameters.size() && !EqualIgnoringCase(parameters[i].name, arguments.named[n].name)) ++i;
    if (i == parameters.size()) throw AutomationError(kNamedArgumentNotFound).OfCall();
    if (binding.positions[i] != kOmitted) throw AutomationError(kWrongArgumentCount).OfCall();
    binding.positions[i] = -1 - static_cast<int>(n);
  }
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const int position = binding.positions[i];
    if (position != kOmitted) {
      binding.values[i] = position >= 0 ? arguments.positional[static_cast<std::size_t>(position)]
                                        : arguments.named[static_cast<std::size_t>(-1 - position)].value;
    }
    const bool is_missing = position == kOmitted || binding.values[i].Is(Value::Type::Missing);
    if (!is_missing) continue;
    if (parameters[i].optional) {
      binding.values[i] = parameters[i].default_value;
    } else if (position == kOmitted) {
      throw AutomationError(kWrongArgumentCount).OfCall();
    } else if (parameters[i].type != ParameterType::Any) {
      throw AutomationError(kArgumentNotOptional).OfCall(static_cast<int>(i));
    }
  }
  return binding;
}

void StoreBack(const Member& member, Binding& binding, Arguments& arguments) {
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    const int position = binding.positions[i];
    if (!member.parameters[i].by_reference || position == kOmitted) continue;
    Value& target = position >= 0 ? arguments.positional[static_cast<std::size_t>(position)]
                                  : arguments.named[static_cast<std::size_t>(-1 - position)].value;
    // An omitted argument that was passed as such stays omitted, unless the member gave it a value.
    if (target.Is(Value::Type::Missing) && binding.values[i] == member.parameters[i].default_value) continue;
    target = std::move(binding.values[i]);
  }
}

}  // namespace

Value member_table_detail::RunMember(Value (*code)(void* context), void* context) {
  try {
    return code(context);
  } catch (AutomationError& error) {
    error.OfMember();
    throw;
  }
}

void ClassDescription::Add(Member member) {
  by_name_[ToLower(member.name)].push_back(members_.size());
  members_.push_back(std::move(member));
}

const Member* ClassDescription::Find(Access access, std::u16string_view name) const {
  const auto found = by_name_.find(ToLower(name.empty() ? default_member_ : name));
  if (found == by_name_.end()) return nullptr;
  for (const std::size_t i : found->second) {
    if (Answers(members_[i].kind, access)) return &members_[i];
  }
  return nullptr;
}

bool ClassDescription::HasName(std::u16string_view name) const {
  return by_name_.contains(ToLower(name));
}

Value ClassDescription::Invoke(Object& self, Access access, std::u16string_view name,
                               Arguments& arguments) const {
  const Member* member = Find(access, name);
  if (!member) throw AutomationError(kUnsupportedMember).OfCall();
  const bool has_arguments = !arguments.positional.empty() || !arguments.named.empty();
  if (member->kind == MemberKind::Get && member->parameters.empty() && has_arguments &&
      member->result == ParameterType::Object) {
    // `Sheets("a")`: the arguments belong to the default member of what the property gives.
    const ObjectPtr collection = member->invoke(self, {}).ToObject();
    if (!collection) throw AutomationError(kObjectNotSet);
    try {
      return collection->Invoke(access, u"", arguments);
    } catch (AutomationError& error) {
      // A foreign object counts its own parameters, whatever the caller gave.
      if (!collection->MemberTable()) error.OfMember();
      throw;
    }
  }
  Binding binding = Bind(*member, arguments);
  try {
    Value result = member->invoke(self, binding.values);
    StoreBack(*member, binding, arguments);
    return result;
  } catch (...) {
    StoreBack(*member, binding, arguments);
    throw;
  }
}

ClassBuilder&& ClassBuilder::Add(std::u16string_view name, MemberKind kind, Parameters parameters,
                                 std::string_view help, const member_table_detail::MemberCode& code) {
  Member member{.name = name, .kind = kind, .result = code.result, .help = help, .invoke = code.invoke};
  member.result_class = code.result_class();
  for (const ParameterEntry& entry : parameters) {
    member.parameters.push_back({.name = entry.name, .optional = entry.optional, .is_error = entry.is_error});
  }
  if (kind == MemberKind::Put || kind == MemberKind::PutRef) member.parameters.push_back({.name = u"value"});
  if (member.parameters.size() != code.parameters.size()) {
    throw AutomationError(kInternalError, u"Member table and signature differ in the number of parameters");
  }
  for (std::size_t i = 0; i < code.parameters.size(); ++i) {
    Parameter& parameter = member.parameters[i];
    parameter.type = code.parameters[i].type;
    parameter.by_reference = code.parameters[i].by_reference;
    parameter.object_class = code.parameters[i].object_class();
    if (parameter.optional) {
      parameter.default_value = ValueOf((parameters.begin() + i)->default_value, parameter.type);
    }
  }
  description_.Add(std::move(member));
  return std::move(*this);
}

ClassBuilder&& ClassBuilder::AddProperty(std::u16string_view name, std::string_view help, ParameterType type,
                                         Invoke get, Invoke put) {
  description_.Add({.name = name, .kind = MemberKind::Get, .result = type, .help = help, .invoke = get});
  description_.Add({.name = name,
                    .kind = MemberKind::Put,
                    .parameters = {{.name = u"value", .type = type}},
                    .help = help,
                    .invoke = put});
  return std::move(*this);
}

}  // namespace qva
