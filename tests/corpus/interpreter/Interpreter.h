// Runs the macros of the corpus on any automation objects.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/automation.h"
#include "tests/corpus/interpreter/ErrorObject.h"
#include "tests/corpus/interpreter/Functions.h"
#include "tests/corpus/interpreter/Syntax.h"

namespace qva::corpus {

/// One run of one macro. Objects are invoked as late-bound callers invoke them; a variable that stands alone
/// as an argument gets back what the member left in it.
class Interpreter {
 public:
  /// Told of every member that was reached and did not raise.
  using Watcher = std::function<void(const Object& object, Access access, std::u16string_view member)>;

  /// `functions` come in addition to those of Basic.
  explicit Interpreter(Functions functions, Watcher watcher = {});

  /// Raises MacroError for what is outside the subset, and the AutomationError that the macro did not ignore.
  void Run(const Block& macro);

  const Ref<ErrorObject>& error() const { return error_; }

 private:
  using Variables = std::map<std::u16string, Value>;  // by name in lower case

  void Execute(const Block& block);
  void Execute(const Statement& statement);
  void ExecuteSimple(const Statement& statement);
  void ExecuteIf(const Statement& statement);
  void ExecuteFor(const Statement& statement);
  void Assign(const Expression& target, Value value, bool is_set);
  /// A value that decides about the way: an error in it is no error that engines treat alike.
  Value Decide(const Expression& expression);

  Value Evaluate(const Expression& expression);
  Value EvaluateName(const Expression& name);
  Value EvaluateCall(const Expression& call, Access access);
  Value CallFunction(const Expression& name, const std::vector<Value>& arguments);
  Value Invoke(const Expression& member, Access access, Arguments& arguments);
  ObjectPtr ObjectOf(const Expression& expression);
  std::vector<Value> EvaluateArguments(const Expression& call);
  /// Puts what a member left in its arguments into the variables that stood there.
  void StoreBack(const Expression& call, const Arguments& arguments);
  Value* FindVariable(std::u16string_view name);
  Value& VariableOf(int line, std::u16string_view name);

  Functions functions_;
  Watcher watcher_;
  Variables variables_;
  Ref<ErrorObject> error_ = MakeRef<ErrorObject>();
  bool resumes_ = false;
};

}  // namespace qva::corpus
