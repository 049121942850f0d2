#include "platform/memory/excel/Formula.h"

#include <cmath>
#include <vector>

#include "platform/memory/excel/CellInput.h"
#include "platform/memory/excel/Refusals.h"
#include "platform/memory/excel/TypedText.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr int kDeepestNesting = 64;
constexpr int kLongestNameChain = 16;

ErrorValue Error(XlCVError code) {
  return {code};
}

/// What names, addresses and numbers are made of.
bool IsWordCharacter(char16_t c) {
  return IsDigit(c) || IsBasicLetter(c) || c == u'_' || c == u'.' || c == u'$' || c == u':' || c == u'\\' ||
         c >= 0x80;
}

bool IsError(const Value& value) {
  return value.Is(Value::Type::Error);
}

bool IsNumber(const Value& value) {
  return value.Is(Value::Type::Double);
}

/// A number, or the error value that stands for the attempt.
Value ToNumber(const Value& value) {
  if (IsError(value)) return value;
  if (value.Is(Value::Type::Empty)) return 0.0;
  if (value.Is(Value::Type::Boolean)) return value.As<bool>() ? 1.0 : 0.0;
  if (IsNumber(value)) return value;
  const auto number =
      value.Is(Value::Type::Text) ? ParseExcelNumber(value.As<std::u16string>()) : std::nullopt;
  return number ? Value(*number) : Value(Error(xlErrValue));
}

Value Finite(double number) {
  return std::isfinite(number) ? Value(number) : Value(Error(xlErrNum));
}

Value Arithmetic(char16_t op, const Value& left_value, const Value& right_value) {
  const Value left = ToNumber(left_value);
  if (IsError(left)) return left;
  const Value right = ToNumber(right_value);
  if (IsError(right)) return right;
  const double a = left.As<double>();
  const double b = right.As<double>();
  switch (op) {
    case u'+':
      return Finite(a + b);
    case u'-':
      return Finite(a - b);
    case u'*':
      return Finite(a * b);
    default:
      return b == 0 ? Value(Error(xlErrDiv0)) : Finite(a / b);
  }
}

Value Concatenate(const Value& left, const Value& right) {
  if (IsError(left)) return left;
  if (IsError(right)) return right;
  return DisplayText(left) + DisplayText(right);
}

/// Numbers come before texts, texts before Booleans.
int Rank(const Value& value) {
  return value.Is(Value::Type::Boolean) ? 2 : value.Is(Value::Type::Text) ? 1 : 0;
}

/// Negative, 0 or positive. An empty cell counts as the other side's zero.
int Order(Value left, Value right) {
  const auto fill = [](Value& empty, const Value& other) {
    if (!empty.Is(Value::Type::Empty)) return;
    empty = Rank(other) == 2 ? Value(false) : Rank(other) == 1 ? Value(u"") : Value(0.0);
  };
  fill(left, right);
  fill(right, left);
  if (Rank(left) != Rank(right)) return Rank(left) - Rank(right);
  if (Rank(left) == 1) return ToLower(left.As<std::u16string>()).compare(ToLower(right.As<std::u16string>()));
  const double a = ToNumber(left).As<double>();
  const double b = ToNumber(right).As<double>();
  return a < b ? -1 : a > b ? 1 : 0;
}

Value Compare(std::u16string_view op, const Value& left, const Value& right) {
  if (IsError(left)) return left;
  if (IsError(right)) return right;
  const int order = Order(left, right);
  if (op == u"=") return order == 0;
  if (op == u"<>") return order != 0;
  if (op == u"<") return order < 0;
  if (op == u"<=") return order <= 0;
  if (op == u">") return order > 0;
  return order >= 0;
}

/// Texts and Booleans count where they are written into the formula, not where they stand in cells.
Value Sum(const std::vector<Operand>& operands, const FormulaContext& context) {
  double sum = 0;
  for (const Operand& operand : operands) {
    if (const Value* value = std::get_if<Value>(&operand)) {
      const Value number = ToNumber(*value);
      if (IsError(number)) return number;
      sum += number.As<double>();
      continue;
    }
    const Reference& reference = std::get<Reference>(operand);
    Value error;
    for (const Area& area : reference.areas) {
      reference.sheet->ForEachCell(area, [&](std::int32_t row, std::int32_t column, const Cell&) {
        const Value value = context.cell_value(*reference.sheet, row, column);
        if (IsNumber(value)) sum += value.As<double>();
        if (IsError(value)) error = value;
      });
    }
    if (IsError(error)) return error;
  }
  return Finite(sum);
}

using Condition = std::function<bool(const Value& value)>;

/// What a criterion such as "29*", ">=5" or a number asks of a cell. Patterns fit texts alone, as in Excel.
Condition ConditionOf(const Value& criterion) {
  if (!criterion.Is(Value::Type::Text)) {
    return [criterion](const Value& value) { return Compare(u"=", value, criterion) == Value(true); };
  }
  std::u16string_view text = criterion.As<std::u16string>();
  std::u16string_view op = u"=";
  for (const std::u16string_view candidate : {u"<>", u"<=", u">=", u"=", u"<", u">"}) {
    if (!text.starts_with(candidate)) continue;
    op = candidate;
    text.remove_prefix(candidate.size());
    break;
  }
  const auto number = ParseExcelNumber(text);
  const bool is_equality = op == u"=" || op == u"<>";
  if (number || !is_equality) {
    return [op, other = number ? Value(*number) : Value(text)](const Value& value) {
      // Numbers and texts are never equal nor in an order here.
      if (IsNumber(value) != IsNumber(other)) return op == u"<>";
      return Compare(op, value, other) == Value(true);
    };
  }
  return [pattern = std::u16string(text), is_fit = op == u"="](const Value& value) {
    const bool fits = value.Is(Value::Type::Text) && FitsPattern(value.As<std::u16string>(), pattern);
    return fits == is_fit;
  };
}

/// SUMIF(cells, criterion, cells to add): of areas as large as the first one.
Value SumIf(const std::vector<Operand>& operands, const FormulaContext& context) {
  const auto* asked = operands.size() == 3 ? std::get_if<Reference>(&operands[0]) : nullptr;
  const auto* added = operands.size() == 3 ? std::get_if<Reference>(&operands[2]) : nullptr;
  if (!asked || !added || asked->areas.size() > 1 || added->areas.size() > 1) return Error(xlErrValue);
  const Condition meets = ConditionOf(Scalar(operands[1], context));
  double sum = 0;
  Value error;
  asked->sheet->ForEachCell(asked->first(), [&](std::int32_t row, std::int32_t column, const Cell&) {
    if (!meets(context.cell_value(*asked->sheet, row, column))) return;
    const Value value = context.cell_value(*added->sheet, added->first().row + row - asked->first().row,
                                           added->first().column + column - asked->first().column);
    if (IsNumber(value)) sum += value.As<double>();
    if (IsError(value)) error = value;
  });
  return IsError(error) ? error : Finite(sum);
}

/// A function of numbers alone.
template <auto compute, std::size_t count>
Value OfNumbers(const std::vector<Operand>& operands, const FormulaContext& context) {
  if (operands.size() != count) return Error(xlErrValue);
  double numbers[count];
  for (std::size_t i = 0; i < count; ++i) {
    const Value number = ToNumber(Scalar(operands[i], context));
    if (IsError(number)) return number;
    numbers[i] = number.As<double>();
  }
  return Finite(compute(numbers));
}
double Absolute(const double* numbers) {
  return std::abs(numbers[0]);
}
/// Halves go away from zero; those that binary digits miss by a hair do, too.
double Rounded(const double* numbers) {
  const double scale = std::pow(10.0, std::trunc(numbers[1]));
  const double scaled = numbers[0] * scale;
  return std::round(scaled + std::copysign(std::abs(scaled) * 1e-15, scaled)) / scale;
}

/// IF(condition, value where it holds, value where it does not).
Value If(const std::vector<Operand>& operands, const FormulaContext& context) {
  if (operands.size() != 3) return Error(xlErrValue);
  const Value condition = ToNumber(Scalar(operands[0], context));
  if (IsError(condition)) return condition;
  return Scalar(operands[condition.As<double>() != 0 ? 1 : 2], context);
}

/// The functions. A new one is a line here and a function of this shape above.
struct Function {
  std::u16string_view name;
  Value (*compute)(const std::vector<Operand>& operands, const FormulaContext& context);
};
constexpr Function kFunctions[] = {{u"SUM", Sum},
                                   {u"SUMIF", SumIf},
                                   {u"IF", If},
                                   {u"ABS", OfNumbers<Absolute, 1>},
                                   {u"ROUND", OfNumbers<Rounded, 2>}};

/// Reads and computes at once, by recursive descent.
class Evaluator {
 public:
  /// Without a workbook only the grammar counts, and the results mean nothing.
  Evaluator(std::u16string_view text, const FormulaContext& context) : text_(text), context_(context) {}

  Operand Run() {
    if (Peek() == u'=') ++position_;
    Operand result = Union();
    SkipBlanks();
    if (position_ != text_.size()) throw SyntaxError();
    return result;
  }

 private:
  static AutomationError SyntaxError() { return Refusal(u"The formula you typed contains an error."); }

  void SkipBlanks() {
    while (position_ < text_.size() && text_[position_] == u' ') ++position_;
  }
  /// The next character that is no blank, 0 at the end.
  char16_t Peek() {
    SkipBlanks();
    return position_ < text_.size() ? text_[position_] : u'\0';
  }
  bool Take(char16_t c) {
    if (Peek() != c) return false;
    ++position_;
    return true;
  }

  /// One operand, or areas of one sheet with commas between.
  Operand Union() {
    Operand left = Comparison();
    while (Take(u',')) {
      const Operand right = Comparison();
      Reference* areas = std::get_if<Reference>(&left);
      const Reference* more = std::get_if<Reference>(&right);
      if (areas && more && areas->sheet == more->sheet) {
        areas->areas.insert(areas->areas.end(), more->areas.begin(), more->areas.end());
      } else {
        left = Value(Error(xlErrValue));
      }
    }
    return left;
  }

  Operand Comparison() {
    Operand left = Concatenation();
    for (;;) {
      std::u16string_view op;
      SkipBlanks();
      for (const std::u16string_view candidate : {u"<>", u"<=", u">=", u"=", u"<", u">"}) {
        if (text_.substr(position_).starts_with(candidate)) {
          op = candidate;
          break;
        }
      }
      if (op.empty()) return left;
      position_ += op.size();
      const Operand right = Concatenation();
      left = Compare(op, Scalar(left, context_), Scalar(right, context_));
    }
  }

  Operand Concatenation() {
    Operand left = Addition();
    while (Take(u'&')) {
      const Operand right = Addition();
      left = Concatenate(Scalar(left, context_), Scalar(right, context_));
    }
    return left;
  }

  Operand Addition() {
    Operand left = Multiplication();
    for (char16_t op = Peek(); op == u'+' || op == u'-'; op = Peek()) {
      ++position_;
      const Operand right = Multiplication();
      left = Arithmetic(op, Scalar(left, context_), Scalar(right, context_));
    }
    return left;
  }

  Operand Multiplication() {
    Operand left = Signed();
    for (char16_t op = Peek(); op == u'*' || op == u'/'; op = Peek()) {
      ++position_;
      const Operand right = Signed();
      left = Arithmetic(op, Scalar(left, context_), Scalar(right, context_));
    }
    return left;
  }

  Operand Signed() {
    bool has_sign = false;
    double sign = 1;
    for (char16_t op = Peek(); op == u'+' || op == u'-'; op = Peek()) {
      ++position_;
      if (op == u'-') {
        has_sign = true;
        sign = -sign;
      }
    }
    Operand operand = Primary();
    while (Take(u'%')) operand = Arithmetic(u'/', Scalar(operand, context_), 100.0);
    if (has_sign) operand = Arithmetic(u'*', Scalar(operand, context_), sign);
    return operand;
  }

  Operand Primary() {
    const char16_t c = Peek();
    if (c == u'(') return Parenthesis();
    if (c == u'"') return TextLiteral();
    if (c == u'#') return ErrorLiteral();
    if (c == u'\'') return OnSheet(QuotedSheet());
    const std::u16string_view word = Word();
    if (word.empty()) throw SyntaxError();
    if (position_ < text_.size() && text_[position_] == u'!') return OnSheet(std::u16string(word));
    if (Peek() == u'(') return FunctionCall(word);
    if (const auto area = ParseArea(word)) return Cells(context_.sheet, *area);
    if (IsDigit(c) || c == u'.') return NumberLiteral(word);
    if (EqualIgnoringCase(word, u"TRUE")) return Value(true);
    if (EqualIgnoringCase(word, u"FALSE")) return Value(false);
    if (word.find(u':') != word.npos || word.find(u'$') != word.npos) throw SyntaxError();
    return Named(word, context_.sheet);
  }

  Operand Parenthesis() {
    if (++nesting_ > kDeepestNesting) throw SyntaxError();
    ++position_;
    Operand inner = Union();
    if (!Take(u')')) throw SyntaxError();
    --nesting_;
    return inner;
  }

  Operand TextLiteral() {
    std::u16string text;
    for (++position_; position_ < text_.size(); ++position_) {
      if (text_[position_] == u'"') {
        ++position_;
        if (position_ == text_.size() || text_[position_] != u'"') return Value(text);
      }
      text += text_[position_];
    }
    throw SyntaxError();
  }

  Operand ErrorLiteral() {
    const auto error = ParseErrorPrefix(text_.substr(position_));
    if (!error) throw SyntaxError();
    position_ += ErrorText(*error).size();
    // "#REF!$A$1" is what is left of a reference to a sheet that was deleted.
    const std::u16string_view address = error->code == xlErrRef ? Word() : std::u16string_view();
    if (!address.empty() && !ParseArea(address)) throw SyntaxError();
    return Value(*error);
  }

  Operand NumberLiteral(std::u16string_view word) {
    std::u16string digits(word);
    const bool has_exponent = digits.back() == u'e' || digits.back() == u'E';
    const bool has_sign = position_ < text_.size() && (text_[position_] == u'-' || text_[position_] == u'+');
    if (has_exponent && has_sign) {
      digits += text_[position_++];
      digits += Word();
    }
    const auto number = ParseExcelNumber(digits);
    if (!number) throw SyntaxError();
    return Value(*number);
  }

  /// As many word characters as there are; may be empty.
  std::u16string_view Word() {
    const std::size_t start = position_;
    while (position_ < text_.size()) {
      if (!IsWordCharacter(text_[position_])) break;
      ++position_;
    }
    return text_.substr(start, position_ - start);
  }

  std::u16string QuotedSheet() {
    std::u16string name;
    for (++position_; position_ < text_.size(); ++position_) {
      if (text_[position_] == u'\'') {
        ++position_;
        if (position_ == text_.size() || text_[position_] != u'\'') break;
      }
      name += text_[position_];
    }
    if (position_ == text_.size() || text_[position_] != u'!') throw SyntaxError();
    return name;
  }

  /// What stands behind "Sheet!".
  Operand OnSheet(const std::u16string& sheet_name) {
    ++position_;
    const std::u16string_view word = Word();
    if (word.empty()) {
      if (Peek() == u'#') return ErrorLiteral();  // "Sheet1!#REF!"
      throw SyntaxError();
    }
    const auto area = ParseArea(word);
    if (!context_.workbook) return Value();
    const auto sheet = context_.workbook->FindSheet(sheet_name);
    if (!sheet) return Value(Error(xlErrRef));
    return area ? Cells(sheet, *area) : Named(word, sheet);
  }

  Operand Cells(const std::shared_ptr<SheetData>& sheet, const Area& area) const {
    if (!context_.workbook) return Value();
    return Reference{sheet, {area}};
  }

  Operand Named(std::u16string_view word, const std::shared_ptr<SheetData>& sheet) const {
    if (!context_.workbook) return Value();
    const auto name = context_.workbook->FindName(word, sheet.get());
    if (!name || context_.depth >= kLongestNameChain) return Value(Error(xlErrName));
    FormulaContext inner = context_;
    ++inner.depth;
    return EvaluateFormula(name->refers_to, inner);
  }

  Operand FunctionCall(std::u16string_view word) {
    if (++nesting_ > kDeepestNesting) throw SyntaxError();
    Take(u'(');
    std::vector<Operand> operands;
    if (!Take(u')')) {
      do operands.push_back(Comparison());
      while (Take(u','));
      if (!Take(u')')) throw SyntaxError();
    }
    --nesting_;
    for (const Function& function : kFunctions) {
      if (EqualIgnoringCase(function.name, word)) return function.compute(operands, context_);
    }
    return Value(Error(xlErrName));
  }

  std::u16string_view text_;
  const FormulaContext& context_;
  std::size_t position_ = 0;
  int nesting_ = 0;
};

}  // namespace

Value Scalar(const Operand& operand, const FormulaContext& context) {
  if (const Value* value = std::get_if<Value>(&operand)) return *value;
  const Reference& reference = std::get<Reference>(operand);
  if (reference.areas.size() > 1) return Error(xlErrValue);
  const Area& area = reference.first();
  if (area.count() == 1) return context.cell_value(*reference.sheet, area.row, area.column);
  if (!context.array_place) return Error(xlErrValue);
  const std::int32_t row = area.rows == 1 ? 0 : context.array_place->row;
  const std::int32_t column = area.columns == 1 ? 0 : context.array_place->column;
  if (row >= area.rows || column >= area.columns) return Error(xlErrNA);
  return context.cell_value(*reference.sheet, area.row + row, area.column + column);
}

Operand EvaluateFormula(std::u16string_view formula, const FormulaContext& context) {
  return Evaluator(formula, context).Run();
}

void CheckFormula(std::u16string_view formula) {
  EvaluateFormula(formula, {});
}

std::optional<Reference> FindReference(std::u16string_view text, const WorkbookData& workbook,
                                       const std::shared_ptr<SheetData>& sheet) {
  FormulaContext context{.workbook = &workbook, .sheet = sheet, .cell_value = {}};
  // The cells' values do not matter here: what computes with them is no reference.
  context.cell_value = [](SheetData&, std::int32_t, std::int32_t) { return Value(); };
  std::optional<Reference> found;
  IgnoreErrors([&] {
    const Operand operand = EvaluateFormula(text, context);
    if (const Reference* reference = std::get_if<Reference>(&operand)) found = *reference;
  });
  return found;
}

std::u16string ReferenceFormula(const Reference& reference) {
  std::u16string formula;
  for (const Area& area : reference.areas) {
    formula += (formula.empty() ? u"=" : u",") + SheetPrefix(reference.sheet->name) + u"!" + AreaText(area);
  }
  return formula;
}

std::u16string RenameSheetIn(std::u16string_view formula, std::u16string_view old_name,
                             std::u16string_view new_name) {
  // A sheet may be written with quotes also where it needs none.
  const std::u16string quoted = u"'" + ReplaceAll(old_name, u"'", u"''") + u"'!";
  const std::u16string plain = std::u16string(old_name) + u"!";
  std::u16string result;
  bool in_text = false;
  bool after_word = false;  // "MySheet1!" does not mention "Sheet1"
  for (std::size_t i = 0; i < formula.size();) {
    const std::u16string_view rest = formula.substr(i);
    const auto mentions = [&](const std::u16string& old) {
      return EqualIgnoringCase(rest.substr(0, old.size()), old);
    };
    const std::size_t length = in_text                          ? 0
                               : mentions(quoted)               ? quoted.size()
                               : !after_word && mentions(plain) ? plain.size()
                                                                : 0;
    if (length > 0) {
      result += SheetPrefix(new_name) + u"!";
      i += length;
      continue;
    }
    if (formula[i] == u'"') in_text = !in_text;
    after_word = IsWordCharacter(formula[i]) || formula[i] == u'\'';
    result += formula[i++];
  }
  return result;
}

}  // namespace qva::memory
