#include "platform/windows/DispatchObject.h"

#include <vector>

#include "platform/windows/Busy.h"
#include "platform/windows/DispatchLocale.h"
#include "platform/windows/Error.h"
#include "platform/windows/VariantConversion.h"

namespace qva::windows {
namespace {

WORD FlagsOf(Access access) {
  switch (access) {
    case Access::Put:
      return DISPATCH_PROPERTYPUT;
    case Access::PutRef:
      return DISPATCH_PROPERTYPUTREF;
    case Access::Get:
    case Access::Call:
      break;
  }
  return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
}

/// One call's arguments as IDispatch takes them: the new value of a property and the named ones first, then
/// the positional ones from last to first.
class DispatchArguments {
 public:
  DispatchArguments(Access access, const Arguments& arguments, std::vector<DISPID> named_ids)
      : names_(std::move(named_ids)) {
    const bool is_put = access == Access::Put || access == Access::PutRef;
    std::size_t left = arguments.positional.size();
    if (is_put) {
      if (left == 0) throw AutomationError(kWrongArgumentCount);
      names_.insert(names_.begin(), DISPID_PROPERTYPUT);
      --left;
      Add(arguments.positional[left], left);
    }
    for (std::size_t i = 0; i < arguments.named.size(); ++i) {
      Add(arguments.named[i].value, arguments.positional.size() + i);
    }
    while (left > 0) {
      --left;
      Add(arguments.positional[left], left);
    }
  }

  DISPPARAMS Parameters() {
    return {.rgvarg = variants_.empty() ? nullptr : variants_.front().get(),
            .rgdispidNamedArgs = names_.empty() ? nullptr : names_.data(),
            .cArgs = static_cast<UINT>(variants_.size()),
            .cNamedArgs = static_cast<UINT>(names_.size())};
  }

  /// The caller's position of the argument that an error is about; −1 when the object told none.
  int CallersPosition(UINT place) const {
    return place < positions_.size() ? static_cast<int>(positions_[place]) : -1;
  }

 private:
  void Add(const Value& value, std::size_t position) {
    variants_.push_back(ToVariant(value));
    positions_.push_back(position);
  }

  std::vector<Variant> variants_;
  std::vector<std::size_t> positions_;
  std::vector<DISPID> names_;
};

[[noreturn]] void Raise(HRESULT code, EXCEPINFO& info, int argument) {
  if (code == DISP_E_EXCEPTION) throw ErrorOf(info);
  AutomationError error = ErrorOf(code);
  const bool is_about_argument =
      code == DISP_E_TYPEMISMATCH || code == DISP_E_PARAMNOTFOUND || code == DISP_E_OVERFLOW;
  if (is_about_argument) error.OfCall(argument);
  throw error;
}

}  // namespace

Value DispatchObject::Invoke(Access access, std::u16string_view member, Arguments& arguments) {
  // The call may let go of this object.
  const ObjectPtr self(this);
  DispatchNames::Ids ids = Names()->Resolve(*dispatch_, member, arguments.named);
  DispatchArguments passed(access, arguments, std::move(ids.arguments));
  DISPPARAMS parameters = passed.Parameters();
  const bool is_put = access == Access::Put || access == Access::PutRef;

  VARIANT result;
  EXCEPINFO info;
  UINT place = 0;
  const HRESULT code = RetryWhileBusy([&] {
    VariantInit(&result);
    info = {};
    place = UINT_MAX;
    return dispatch_->Invoke(ids.member, IID_NULL, kDispatchLocale, FlagsOf(access), &parameters,
                             is_put ? nullptr : &result, &info, &place);
  });
  // A failed call's result is not freed: objects leave all sorts of things there.
  if (FAILED(code)) Raise(code, info, passed.CallersPosition(place));
  return FromVariant(*Variant::Adopt(result));
}

std::u16string DispatchObject::TypeName() const {
  return Names()->type_name();
}

const std::shared_ptr<DispatchNames>& DispatchObject::Names() const {
  if (!names_) names_ = DispatchNames::Of(*dispatch_);
  return names_;
}

}  // namespace qva::windows
