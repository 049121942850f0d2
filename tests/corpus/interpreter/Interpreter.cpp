#include "tests/corpus/interpreter/Interpreter.h"

#include <stdexcept>
#include <utility>

#include "platform/text.h"
#include "tests/corpus/interpreter/MacroError.h"

namespace qva::corpus {
namespace {

using Kind = Expression::Kind;

/// Runs a step whose std::invalid_argument is the macro's mistake.
template <class Step>
auto Checked(int line, Step&& step) {
  try {
    return step();
  } catch (const std::invalid_argument& mistake) {
    throw MacroError(line, mistake.what());
  }
}

}  // namespace

Interpreter::Interpreter(Functions functions, Watcher watcher)
    : functions_(std::move(functions)), watcher_(std::move(watcher)) {
  functions_.insert(BasicFunctions().begin(), BasicFunctions().end());
}

void Interpreter::Run(const Block& macro) {
  variables_.clear();
  resumes_ = false;
  Execute(macro);
  variables_.clear();
}

void Interpreter::Execute(const Block& block) {
  for (const Statement& statement : block) Execute(statement);
}

void Interpreter::Execute(const Statement& statement) {
  switch (statement.kind) {
    case Statement::Kind::If:
      return ExecuteIf(statement);
    case Statement::Kind::For:
      return ExecuteFor(statement);
    case Statement::Kind::ForEach: {
      const Value elements = Decide(*statement.expressions[0]);
      if (!elements.Is(Value::Type::Array)) throw MacroError(statement.line, "For Each takes an array");
      for (const Value& element : elements.AsArray().elements) {
        VariableOf(statement.line, statement.names[0]) = element;
        Execute(statement.blocks[0]);
      }
      return;
    }
    case Statement::Kind::While:
      while (Decide(*statement.expressions[0]).ToBoolean()) Execute(statement.blocks[0]);
      return;
    default:
      break;
  }
  try {
    ExecuteSimple(statement);
  } catch (const AutomationError& error) {
    if (!resumes_) throw;
    error_->Set(error);
  }
}

void Interpreter::ExecuteSimple(const Statement& statement) {
  const auto& expressions = statement.expressions;
  switch (statement.kind) {
    case Statement::Kind::Dim:
      for (const std::u16string& name : statement.names) {
        if (!variables_.emplace(ToLower(name), Value()).second) {
          throw MacroError(statement.line, "\"" + ToUtf8(name) + "\" is there already");
        }
      }
      return;
    case Statement::Kind::Set:
    case Statement::Kind::Let: {
      const bool is_set = statement.kind == Statement::Kind::Set;
      Value value = Evaluate(*expressions[1]);
      if (value.Is(Value::Type::Object) != is_set) {
        throw MacroError(statement.line, is_set ? "Set takes an object" : "an object is assigned by Set");
      }
      return Assign(*expressions[0], std::move(value), is_set);
    }
    case Statement::Kind::Call:
      if (expressions[0]->kind == Kind::Name) {
        CallFunction(*expressions[0], {});
      } else if (expressions[0]->kind == Kind::Member) {
        Arguments none;
        Invoke(*expressions[0], Access::Call, none);
      } else {
        EvaluateCall(*expressions[0], Access::Call);
      }
      return;
    default:
      // Either statement forgets the error before it.
      resumes_ = statement.kind == Statement::Kind::OnErrorResume;
      error_->Clear();
  }
}

void Interpreter::ExecuteIf(const Statement& statement) {
  for (std::size_t i = 0; i < statement.blocks.size(); ++i) {
    const bool is_else = i == statement.expressions.size();
    if (is_else || Decide(*statement.expressions[i]).ToBoolean()) return Execute(statement.blocks[i]);
  }
}

void Interpreter::ExecuteFor(const Statement& statement) {
  const std::int16_t first = Decide(*statement.expressions[0]).ToInt16();
  const std::int16_t last = Decide(*statement.expressions[1]).ToInt16();
  for (int i = first; i <= last; ++i) {
    VariableOf(statement.line, statement.names[0]) = static_cast<std::int16_t>(i);
    Execute(statement.blocks[0]);
  }
}

void Interpreter::Assign(const Expression& target, Value value, bool is_set) {
  if (target.kind == Kind::Name) {
    VariableOf(target.line, target.name) = std::move(value);
    return;
  }
  const bool is_call = target.kind == Kind::Call;
  const Expression& member = is_call ? *target.operands[0] : target;
  if (member.kind != Kind::Member) throw MacroError(target.line, "nothing that can be assigned to");
  Arguments arguments;
  if (is_call) arguments.positional = EvaluateArguments(target);
  arguments.positional.push_back(std::move(value));
  Invoke(member, is_set ? Access::PutRef : Access::Put, arguments);
}

Value Interpreter::Decide(const Expression& expression) {
  try {
    return Evaluate(expression);
  } catch (const AutomationError& error) {
    throw MacroError(expression.line, std::string("an error where the way is decided: ") + error.what());
  }
}

Value Interpreter::Evaluate(const Expression& expression) {
  const auto operand = [&](std::size_t i) { return Evaluate(*expression.operands[i]); };
  switch (expression.kind) {
    case Kind::Literal:
      return expression.literal;
    case Kind::Name:
      return EvaluateName(expression);
    case Kind::Member: {
      Arguments none;
      return Invoke(expression, Access::Get, none);
    }
    case Kind::Call:
      return EvaluateCall(expression, Access::Get);
    case Kind::Group:
      return operand(0);
    case Kind::Unary:
      return Checked(expression.line, [&] { return OperateUnary(expression.name, operand(0)); });
    case Kind::Binary: {
      const Value left = operand(0), right = operand(1);
      return Checked(expression.line, [&] { return Operate(expression.name, left, right); });
    }
    case Kind::IsNothing: {
      const Value object = operand(0);
      if (!object.Is(Value::Type::Object)) throw MacroError(expression.line, "\"Is\" compares objects");
      return object.IsNothing();
    }
  }
  return {};
}

Value Interpreter::EvaluateName(const Expression& name) {
  if (const Value* variable = FindVariable(name.name)) return *variable;
  if (EqualIgnoringCase(name.name, u"Err")) return error_;
  return CallFunction(name, {});
}

Value Interpreter::EvaluateCall(const Expression& call, Access access) {
  const Expression& callee = *call.operands[0];
  Arguments arguments(EvaluateArguments(call));
  if (callee.kind == Kind::Name) {
    const Value* array = FindVariable(callee.name);
    if (!array) return CallFunction(callee, arguments.positional);
    if (!array->Is(Value::Type::Array) || arguments.positional.size() != 1) {
      throw MacroError(call.line, "only an array of one dimension has elements here");
    }
    const std::int32_t index = arguments.positional[0].ToInt32();
    const auto& elements = array->AsArray().elements;
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size())
      throw AutomationError(kSubscriptOutOfRange);
    return elements[static_cast<std::size_t>(index)];
  }
  try {
    Value result = Invoke(callee, access, arguments);
    StoreBack(call, arguments);
    return result;
  } catch (const AutomationError&) {
    StoreBack(call, arguments);
    throw;
  }
}

Value Interpreter::CallFunction(const Expression& name, const std::vector<Value>& arguments) {
  const auto found = functions_.find(ToLower(name.name));
  if (found == functions_.end()) {
    throw MacroError(name.line, "neither a variable nor a function: \"" + ToUtf8(name.name) + "\"");
  }
  return Checked(name.line, [&] { return found->second(arguments); });
}

Value Interpreter::Invoke(const Expression& member, Access access, Arguments& arguments) {
  const ObjectPtr object = ObjectOf(*member.operands[0]);
  Value result = object->Invoke(access, member.name, arguments);
  if (watcher_) watcher_(*object, access, member.name);
  return result;
}

ObjectPtr Interpreter::ObjectOf(const Expression& expression) {
  const Value value = Evaluate(expression);
  if (!value.Is(Value::Type::Object) || value.IsNothing()) {
    throw MacroError(expression.line, "a member of what is no object; the engines' errors differ");
  }
  return value.ToObject();
}

std::vector<Value> Interpreter::EvaluateArguments(const Expression& call) {
  std::vector<Value> arguments;
  for (std::size_t i = 1; i < call.operands.size(); ++i) {
    arguments.push_back(call.operands[i] ? Evaluate(*call.operands[i]) : Value(Missing()));
  }
  return arguments;
}

void Interpreter::StoreBack(const Expression& call, const Arguments& arguments) {
  for (std::size_t i = 1; i < call.operands.size(); ++i) {
    const Expression* argument = call.operands[i].get();
    if (!argument || argument->kind != Kind::Name) continue;
    if (Value* variable = FindVariable(argument->name)) *variable = arguments.positional[i - 1];
  }
}

Value* Interpreter::FindVariable(std::u16string_view name) {
  const auto found = variables_.find(ToLower(name));
  return found == variables_.end() ? nullptr : &found->second;
}

Value& Interpreter::VariableOf(int line, std::u16string_view name) {
  Value* variable = FindVariable(name);
  if (!variable) throw MacroError(line, "\"" + ToUtf8(name) + "\" is not declared");
  return *variable;
}

}  // namespace qva::corpus
