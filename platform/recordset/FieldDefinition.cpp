#include "platform/recordset/FieldDefinition.h"

#include "platform/automation.h"
#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {
namespace {

// ADO's attributes. One says that a field takes Null, the other that it may give it; who appends a field
// means both by either.
constexpr std::int32_t kTakesNull = 0x20;
constexpr std::int32_t kGivesNull = 0x40;
constexpr std::int32_t kFixedLength = 0x10;

bool IsText(std::int32_t type) {
  return type == ado::adVarChar || type == ado::adVarWChar;
}

/// The bytes of a type of fixed length; 0 for any other one.
std::int32_t SizeOf(std::int32_t type) {
  switch (type) {
    case ado::adSmallInt:
    case ado::adBoolean:
      return 2;
    case ado::adInteger:
      return 4;
    case ado::adDouble:
    case ado::adCurrency:
    case ado::adDate:
      return 8;
    default:
      return 0;
  }
}

Value ToType(std::int32_t type, const Value& value) {
  switch (type) {
    case ado::adSmallInt:
      return value.ToInt16();
    case ado::adInteger:
      return value.ToInt32();
    case ado::adDouble:
      return value.ToDouble();
    case ado::adCurrency:
      return value.ToCurrency();
    case ado::adDate:
      return value.ToDate();
    case ado::adBoolean:
      return value.ToBoolean();
    default:
      return value.ToText();
  }
}

}  // namespace

bool FieldDefinition::IsNullable() const {
  return (attributes & (kTakesNull | kGivesNull)) != 0;
}

Value FieldDefinition::Converted(const Value& value) const {
  // Asked for here, since the default property of another recordset's field may be Null.
  const Value plain = value.Is(Value::Type::Object) ? Get(value.ToObject(), u"") : value;
  if (plain.Is(Value::Type::Null)) {
    if (!IsNullable()) throw Refusal(ado::adErrMultipleStep, kFieldSource);
    return plain;
  }
  Value converted;
  try {
    converted = ToType(type, plain);
  } catch (const AutomationError& error) {
    if (error.number() == kOverflow) throw Refusal(ado::adErrMultipleStep, kFieldSource);
    throw AutomationError(error.number(), std::u16string(kFieldSource), error.description());
  }
  const auto limit = static_cast<std::size_t>(size);
  if (IsText(type) && converted.As<std::u16string>().size() > limit) {
    throw Refusal(ado::adErrMultipleStep, kFieldSource);
  }
  return converted;
}

FieldDefinition DefineField(std::u16string name, std::int32_t type, std::int32_t size,
                            std::int32_t attributes) {
  const std::int32_t fixed_size = SizeOf(type);
  const bool is_known = IsText(type) ? size > 0 : fixed_size > 0;
  if (name.empty() || !is_known) throw Refusal(ado::adErrInvalidArgument, kFieldsSource);
  if (attributes == ado::adFldUnspecified) attributes = 0;
  if (fixed_size > 0) attributes |= kFixedLength;
  return {std::move(name), type, fixed_size > 0 ? fixed_size : size, attributes};
}

}  // namespace qva::recordset
