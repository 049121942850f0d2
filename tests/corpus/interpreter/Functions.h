// Functions that macros call by name.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/value.h"

namespace qva::corpus {

/// A function's arguments are values; what it gives is Empty for a procedure. It may raise AutomationError,
/// which the macro meets, and std::invalid_argument for a use outside the subset.
using Function = std::function<Value(const std::vector<Value>& arguments)>;

/// By name in lower case.
using Functions = std::map<std::u16string, Function>;

/// The functions and constants of Basic that belong to the subset.
const Functions& BasicFunctions();

/// The result of an operator: "&", "+", "-", "*", "/", "\", "mod", a comparison, "and", "or".
/// Raises std::invalid_argument for operands that the engines treat differently.
Value Operate(std::u16string_view symbol, const Value& left, const Value& right);

/// "-" or "not" of a value, as Operate.
Value OperateUnary(std::u16string_view symbol, const Value& operand);

}  // namespace qva::corpus
