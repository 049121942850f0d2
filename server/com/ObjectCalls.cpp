#include "server/com/ObjectCalls.h"

#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/windows/Error.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"
#include "server/call_log.h"
#include "server/com/AutomationTypes.h"
#include "server/com/MemberIds.h"
#include "server/com/ServerErrors.h"

namespace qva::com {
namespace {

/// The arguments of a late-bound call.
struct LateArguments {
  Arguments values;
  Arguments before;                     ///< as the call brought them
  std::vector<UINT> positional_places;  ///< where each one stands in the caller's list
  std::vector<UINT> named_places;
  std::optional<UINT> unreadable_place;  ///< of the argument whose type has no value
};

bool IsSound(const DISPPARAMS& list) {
  return list.cNamedArgs <= list.cArgs && (list.cArgs == 0 || list.rgvarg) &&
         (list.cNamedArgs == 0 || list.rgdispidNamedArgs);
}

/// Takes the caller's list, which begins with the named arguments and holds the others from last to first.
void Read(const DISPPARAMS& list, const MemberIds& ids, DISPID member, LateArguments& late) {
  const auto value_at = [&](UINT place) {
    try {
      return windows::FromVariant(list.rgvarg[place]);
    } catch (const AutomationError& error) {
      if (error.number() == kTypeMismatch) late.unreadable_place = place;
      throw;
    }
  };
  std::vector<UINT> new_value;
  for (UINT place = 0; place < list.cNamedArgs; ++place) {
    const DISPID id = list.rgdispidNamedArgs[place];
    if (id == DISPID_PROPERTYPUT) {
      new_value.push_back(place);
      continue;
    }
    const std::u16string_view name = ids.ArgumentName(member, id);
    if (name.empty()) throw AutomationError(kNamedArgumentNotFound).OfCall();
    late.values.Named(name, value_at(place));
    late.named_places.push_back(place);
  }
  for (UINT place = list.cArgs; place > list.cNamedArgs; --place) late.positional_places.push_back(place - 1);
  late.positional_places.insert(late.positional_places.end(), new_value.begin(), new_value.end());
  for (const UINT place : late.positional_places) {
    late.values.positional.push_back(value_at(place));
  }
  late.before = late.values;
}

/// Writes what the member left in the arguments back into the caller's variables.
void WriteBack(const LateArguments& late, VARIANTARG* list) {
  auto write = [&](UINT place, const Value& before, const Value& after) {
    if ((list[place].vt & VT_BYREF) && !(after == before)) windows::StoreByReference(list[place], after);
  };
  for (std::size_t i = 0; i < late.positional_places.size(); ++i) {
    write(late.positional_places[i], late.before.positional[i], late.values.positional[i]);
  }
  for (std::size_t i = 0; i < late.named_places.size(); ++i) {
    write(late.named_places[i], late.before.named[i].value, late.values.named[i].value);
  }
}

/// Where the argument for a parameter stands in the caller's list, if it is known.
std::optional<UINT> PlaceOf(const LateArguments& late, const Member* member, int parameter) {
  const auto index = static_cast<std::size_t>(parameter);
  const bool is_put = member && (member->kind == MemberKind::Put || member->kind == MemberKind::PutRef);
  if (is_put && index + 1 == member->parameters.size() && !late.positional_places.empty()) {
    return late.positional_places.back();
  }
  if (index < late.positional_places.size()) return late.positional_places[index];
  const bool has_name = member && index < member->parameters.size();
  for (std::size_t i = 0; has_name && i < late.named_places.size(); ++i) {
    if (late.values.named[i].name == member->parameters[index].name) return late.named_places[i];
  }
  return std::nullopt;
}

constexpr WORD kEitherPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

bool IsPut(WORD flags) {
  return flags & kEitherPut;
}

Access AccessOf(WORD flags, const ClassDescription* table, std::u16string_view name,
                const Arguments& values) {
  if (!IsPut(flags)) return flags & DISPATCH_METHOD ? Access::Call : Access::Get;
  if ((flags & kEitherPut) != kEitherPut) {
    return flags & DISPATCH_PROPERTYPUT ? Access::Put : Access::PutRef;
  }
  // The caller leaves it to us: an object is set by reference where the property can be.
  const bool is_object = !values.positional.empty() && values.positional.back().Is(Value::Type::Object);
  return is_object && (!table || table->Find(Access::PutRef, name)) ? Access::PutRef : Access::Put;
}

/// An argument of a vtable call as a VARIANT that owns nothing.
VARIANT Borrow(const Parameter& parameter, const void* raw) {
  VARIANT variant = {};
  if (parameter.by_reference) {
    variant.vt = static_cast<VARTYPE>(VariantType(parameter.type) | VT_BYREF);
    std::memcpy(&variant.byref, raw, sizeof variant.byref);
  } else if (parameter.type == ParameterType::Any) {
    std::memcpy(&variant, raw, sizeof variant);
  } else {
    variant.vt = VariantType(parameter.type);
    std::memcpy(&variant.llVal, raw, SizeOf(parameter.type));
  }
  return variant;
}

}  // namespace

HRESULT ObjectCalls::IdsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  try {
    const MemberIds member_ids(table_);
    ids[0] = member_ids.OfMember(windows::TextOf(names[0]));
    bool all_known = ids[0] != DISPID_UNKNOWN;
    for (UINT i = 1; i < count && ids[0] != DISPID_UNKNOWN; ++i) {
      ids[i] = member_ids.OfArgument(ids[0], windows::TextOf(names[i]));
      all_known = all_known && ids[i] != DISPID_UNKNOWN;
    }
    return all_known ? S_OK : DISP_E_UNKNOWNNAME;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT ObjectCalls::Invoke(DISPID id, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* error,
                            UINT* argument) const noexcept {
  if (!arguments || !IsSound(*arguments)) return E_INVALIDARG;
  if (result) VariantInit(result);
  LateArguments late;
  const Member* member = nullptr;
  LoggedCall logged;
  try {
    const MemberIds ids(table_);
    if (!ids.IsMember(id)) return DISP_E_MEMBERNOTFOUND;
    const std::u16string_view name = ids.MemberName(id);
    logged.Begins(*object_, IsPut(flags) ? Access::Put : Access::Call, name);
    Read(*arguments, ids, id, late);
    const Access access = AccessOf(flags, table_, name, late.values);
    if (table_) member = table_->Find(access, name);
    logged.Takes(late.values.positional, late.values.named);
    Value value;
    try {
      value = object_->Invoke(access, name, late.values);
    } catch (...) {
      // A variable that cannot hold what it was given does not hide the error.
      IgnoreFailures([&] { WriteBack(late, arguments->rgvarg); });
      throw;
    }
    WriteBack(late, arguments->rgvarg);
    logged.Returned(value);
    if (result) *result = windows::ToVariant(value).Detach();
    return S_OK;
  } catch (...) {
    logged.Failed();
    if (late.unreadable_place) {
      if (argument) *argument = *late.unreadable_place;
      return DISP_E_TYPEMISMATCH;
    }
    int parameter = -1;
    const HRESULT code = ReportLate(error, parameter);
    const std::optional<UINT> place = parameter >= 0 ? PlaceOf(late, member, parameter) : std::nullopt;
    if (argument && place) *argument = *place;
    return code;
  }
}

HRESULT ObjectCalls::CallPlace(std::size_t place, REFIID interface_id, void* result,
                               const void* const* raw) const noexcept {
  LoggedCall logged;
  try {
    const Member& member = table_->members().at(place);
    const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
    logged.Begins(*object_, is_put ? Access::Put : Access::Call, member.name);
    if (result) std::memset(result, 0, SizeOf(member.result));
    bool lacks_pointer = member.result != ParameterType::None && !result;
    std::vector<Value> values;
    std::vector<VARIANT> variants;
    for (const Parameter& parameter : member.parameters) {
      VARIANT variant = Borrow(parameter, raw[variants.size()]);
      const bool is_left_out = parameter.by_reference && !variant.byref;
      lacks_pointer = lacks_pointer || (is_left_out && !parameter.optional);
      Value value = is_left_out ? Value(Missing{}) : windows::FromVariant(variant);
      if (parameter.optional && value.Is(Value::Type::Missing)) value = parameter.default_value;
      values.push_back(std::move(value));
      variants.push_back(variant);
    }
    logged.Takes(values);
    if (lacks_pointer) throw windows::ErrorOf(E_POINTER);
    const std::vector<Value> before = values;
    auto write_back = [&] {
      for (std::size_t i = 0; i < values.size(); ++i) {
        const bool is_variable = member.parameters[i].by_reference && variants[i].byref;
        if (is_variable && !(values[i] == before[i])) windows::StoreByReference(variants[i], values[i]);
      }
    };
    Value value;
    try {
      value = member.invoke(*object_, values);
    } catch (...) {
      IgnoreFailures(write_back);
      throw;
    }
    write_back();
    logged.Returned(value);
    if (member.result != ParameterType::None) {
      VARIANT target = {};
      target.vt = static_cast<VARTYPE>(VariantType(member.result) | VT_BYREF);
      target.byref = result;
      windows::StoreByReference(target, value);
    }
    return S_OK;
  } catch (...) {
    logged.Failed();
    return ReportEarly(interface_id);
  }
}

}  // namespace qva::com
