// A macro as a tree.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/value.h"

namespace qva::corpus {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Expression {
  enum class Kind {
    Literal,
    Name,      ///< a variable, or a function without arguments
    Member,    ///< operands: the object
    Call,      ///< operands: a Name or Member, then the arguments, of which a null one was left out
    Group,     ///< in brackets; operands: what stands there
    Unary,     ///< "-" or "not"; operands: one
    Binary,    ///< an operator; operands: two
    IsNothing  ///< operands: the object
  };
  Kind kind = Kind::Literal;
  int line = 0;
  Value literal;
  std::u16string name;  ///< of a Name or Member as it was written; of an operator in lower case
  std::vector<ExpressionPtr> operands;
};

struct Statement;
using Block = std::vector<Statement>;

struct Statement {
  enum class Kind {
    Dim,             ///< names
    Set,             ///< expressions: target, object
    Let,             ///< expressions: target, value
    Call,            ///< expressions: a Call, Member or Name
    If,              ///< expressions: a condition for each block; a last block without one is Else
    For,             ///< names: the variable; expressions: first, last; one block
    ForEach,         ///< names: the variable; expressions: the array; one block
    While,           ///< expressions: the condition; one block
    OnErrorResume,   ///< On Error Resume Next
    OnErrorGoToZero  ///< On Error GoTo 0
  };
  Kind kind = Kind::Call;
  int line = 0;
  std::vector<std::u16string> names;
  std::vector<ExpressionPtr> expressions;
  std::vector<Block> blocks;
};

}  // namespace qva::corpus
