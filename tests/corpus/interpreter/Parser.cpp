#include "tests/corpus/interpreter/Parser.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "platform/text.h"
#include "tests/corpus/interpreter/Lexer.h"
#include "tests/corpus/interpreter/MacroError.h"

namespace qva::corpus {
namespace {

using Words = std::initializer_list<std::u16string_view>;

/// Binary operators by rising strength.
constexpr std::u16string_view kOr[] = {u"or"};
constexpr std::u16string_view kAnd[] = {u"and"};
constexpr std::u16string_view kComparison[] = {u"=", u"<>", u"<", u">", u"<=", u">="};
constexpr std::u16string_view kJoin[] = {u"&"};
constexpr std::u16string_view kSum[] = {u"+", u"-"};
constexpr std::u16string_view kModulo[] = {u"mod"};
constexpr std::u16string_view kWhole[] = {u"\\"};
constexpr std::u16string_view kProduct[] = {u"*", u"/"};

class Parser {
 public:
  explicit Parser(std::u16string_view source) : tokens_(SplitIntoTokens(source)) {}

  Block Parse() {
    Block block = ParseBlock({u"Sub"});
    if (Accept(u"Sub")) ParseProcedure(block);
    if (Current().kind != Token::Kind::EndOfFile)
      Fail("\"" + ToUtf8(Current().text) + "\" without a beginning");
    return block;
  }

 private:
  // --- Words ---

  const Token& Current() const { return tokens_[at_]; }
  [[noreturn]] void Fail(const std::string& what) const { throw MacroError(Current().line, what); }

  static bool IsWord(const Token& token, std::u16string_view word) {
    return (token.kind == Token::Kind::Name || token.kind == Token::Kind::Symbol) &&
           EqualIgnoringCase(token.text, word);
  }
  bool At(std::u16string_view word) const { return IsWord(Current(), word); }
  bool AtEnd() const {
    return Current().kind == Token::Kind::EndOfLine || Current().kind == Token::Kind::EndOfFile;
  }
  bool Accept(std::u16string_view word) {
    if (!At(word)) return false;
    ++at_;
    return true;
  }
  void Expect(std::u16string_view word) {
    if (!Accept(word)) Fail("\"" + ToUtf8(word) + "\" is missing");
  }
  void ExpectEnd() {
    if (!AtEnd()) Fail("\"" + ToUtf8(Current().text) + "\" is too much");
    if (Current().kind == Token::Kind::EndOfLine) ++at_;
  }
  std::u16string ExpectName() {
    if (Current().kind != Token::Kind::Name) Fail("a name is missing");
    return tokens_[at_++].text;
  }

  // --- Statements ---

  /// Up to one of the words, which is not taken, or to the end of the macro.
  Block ParseBlock(Words ends) {
    Block block;
    while (Current().kind != Token::Kind::EndOfFile &&
           std::ranges::none_of(ends, [&](std::u16string_view end) { return At(end); })) {
      block.push_back(ParseStatement());
    }
    return block;
  }

  /// A procedure as a guide shows it: its statements stand as if they were the macro's own, so do those
  /// behind it.
  void ParseProcedure(Block& block) {
    ExpectName();
    Expect(u"(");
    Expect(u")");
    ExpectEnd();
    for (Statement& statement : ParseBlock({u"End"})) block.push_back(std::move(statement));
    Expect(u"End");
    Expect(u"Sub");
    ExpectEnd();
    for (Statement& statement : ParseBlock({})) block.push_back(std::move(statement));
  }

  Statement ParseStatement() {
    Statement statement;
    statement.line = Current().line;
    if (Accept(u"Dim")) {
      statement.kind = Statement::Kind::Dim;
      do statement.names.push_back(ExpectName());
      while (Accept(u","));
    } else if (Accept(u"Set")) {
      statement.kind = Statement::Kind::Set;
      ParseAssignment(statement);
    } else if (Accept(u"On")) {
      Expect(u"Error");
      const bool resumes = Accept(u"Resume");
      statement.kind = resumes ? Statement::Kind::OnErrorResume : Statement::Kind::OnErrorGoToZero;
      if (resumes) {
        Expect(u"Next");
      } else {
        Expect(u"GoTo");
        const Value& zero = Current().literal;
        if (Current().kind != Token::Kind::Literal || !zero.Is(Value::Type::Int16) || zero.ToInt16() != 0) {
          Fail("handlers with a label are outside the subset");
        }
        ++at_;
      }
    } else if (Accept(u"If")) {
      ParseIf(statement);
      return statement;
    } else if (Accept(u"For")) {
      ParseFor(statement);
    } else if (Accept(u"Do")) {
      Expect(u"While");
      statement.kind = Statement::Kind::While;
      statement.expressions.push_back(ParseExpression());
      ExpectEnd();
      statement.blocks.push_back(ParseBlock({u"Loop"}));
      Expect(u"Loop");
    } else {
      ParseCallOrLet(statement);
    }
    ExpectEnd();
    return statement;
  }

  void ParseAssignment(Statement& statement) {
    statement.expressions.push_back(ParsePostfix(/*is_statement=*/false));
    Expect(u"=");
    statement.expressions.push_back(ParseExpression());
  }

  void ParseIf(Statement& statement) {
    statement.kind = Statement::Kind::If;
    do {
      statement.expressions.push_back(ParseExpression());
      Expect(u"Then");
      if (!AtEnd()) return ParseIfOfOneLine(statement);
      ExpectEnd();
      statement.blocks.push_back(ParseBlock({u"ElseIf", u"Else", u"End"}));
    } while (Accept(u"ElseIf"));
    if (Accept(u"Else")) {
      ExpectEnd();
      statement.blocks.push_back(ParseBlock({u"End"}));
    }
    Expect(u"End");
    Expect(u"If");
    ExpectEnd();
  }

  /// `If a Then b`: one statement, and neither Else nor End If.
  void ParseIfOfOneLine(Statement& statement) {
    if (statement.expressions.size() != 1 || At(u"If") || At(u"For") || At(u"Do")) {
      Fail("only one simple statement stands in the line of its If");
    }
    statement.blocks.emplace_back().push_back(ParseStatement());
  }

  void ParseFor(Statement& statement) {
    const bool each = Accept(u"Each");
    statement.kind = each ? Statement::Kind::ForEach : Statement::Kind::For;
    statement.names.push_back(ExpectName());
    Expect(each ? u"In" : u"=");
    statement.expressions.push_back(ParseExpression());
    if (!each) {
      Expect(u"To");
      statement.expressions.push_back(ParseExpression());
    }
    ExpectEnd();
    statement.blocks.push_back(ParseBlock({u"Next"}));
    Expect(u"Next");
  }

  void ParseCallOrLet(Statement& statement) {
    ExpressionPtr target = ParsePostfix(/*is_statement=*/true);
    if (Accept(u"=")) {
      statement.kind = Statement::Kind::Let;
      statement.expressions.push_back(std::move(target));
      statement.expressions.push_back(ParseExpression());
      return;
    }
    statement.kind = Statement::Kind::Call;
    if (target->kind == Expression::Kind::Call) Fail("a statement's arguments stand without brackets");
    if (!AtEnd()) {
      ExpressionPtr call = New(Expression::Kind::Call);
      call->operands.push_back(std::move(target));
      ParseArguments(*call, {});
      target = std::move(call);
    }
    statement.expressions.push_back(std::move(target));
  }

  // --- Expressions ---

  ExpressionPtr New(Expression::Kind kind) const {
    auto expression = std::make_unique<Expression>();
    expression->kind = kind;
    expression->line = Current().line;
    return expression;
  }

  ExpressionPtr ParseExpression() { return ParseBinary(kOr, &Parser::ParseAnd); }
  ExpressionPtr ParseAnd() { return ParseBinary(kAnd, &Parser::ParseNot); }
  ExpressionPtr ParseNot() {
    if (!At(u"Not")) return ParseComparison();
    ExpressionPtr unary = New(Expression::Kind::Unary);
    unary->name = u"not";
    ++at_;
    unary->operands.push_back(ParseNot());
    return unary;
  }
  ExpressionPtr ParseComparison() {
    ExpressionPtr left = ParseBinary(kComparison, &Parser::ParseJoin);
    if (!At(u"Is")) return left;
    ExpressionPtr is_nothing = New(Expression::Kind::IsNothing);
    ++at_;
    if (!Accept(u"Nothing")) Fail("only \"Is Nothing\" means the same to all engines; compare by SameObject");
    is_nothing->operands.push_back(std::move(left));
    return is_nothing;
  }
  ExpressionPtr ParseJoin() { return ParseBinary(kJoin, &Parser::ParseSum); }
  ExpressionPtr ParseSum() { return ParseBinary(kSum, &Parser::ParseModulo); }
  ExpressionPtr ParseModulo() { return ParseBinary(kModulo, &Parser::ParseWhole); }
  ExpressionPtr ParseWhole() { return ParseBinary(kWhole, &Parser::ParseProduct); }
  ExpressionPtr ParseProduct() { return ParseBinary(kProduct, &Parser::ParseUnary); }

  template <std::size_t N>
  ExpressionPtr ParseBinary(const std::u16string_view (&operators)[N], ExpressionPtr (Parser::*stronger)()) {
    ExpressionPtr left = (this->*stronger)();
    while (std::ranges::any_of(operators, [&](std::u16string_view symbol) { return At(symbol); })) {
      ExpressionPtr binary = New(Expression::Kind::Binary);
      binary->name = ToLower(tokens_[at_++].text);
      binary->operands.push_back(std::move(left));
      binary->operands.push_back((this->*stronger)());
      left = std::move(binary);
    }
    return left;
  }

  ExpressionPtr ParseUnary() {
    if (!At(u"-")) return ParsePostfix(/*is_statement=*/false);
    ExpressionPtr unary = New(Expression::Kind::Unary);
    unary->name = u"-";
    ++at_;
    unary->operands.push_back(ParseUnary());
    return unary;
  }

  /// A name, literal or bracket with the members and arguments behind it. At the beginning of a statement a
  /// bracket after a blank belongs to the first argument.
  ExpressionPtr ParsePostfix(bool is_statement) {
    ExpressionPtr expression = ParsePrimary();
    while (true) {
      if (At(u".")) {
        ExpressionPtr member = New(Expression::Kind::Member);
        ++at_;
        member->name = ExpectName();
        member->operands.push_back(std::move(expression));
        expression = std::move(member);
      } else if (At(u"(") && !(is_statement && Current().after_blank)) {
        const bool is_callable =
            expression->kind == Expression::Kind::Name || expression->kind == Expression::Kind::Member;
        if (!is_callable) Fail("arguments of what takes none");
        ExpressionPtr call = New(Expression::Kind::Call);
        ++at_;
        call->operands.push_back(std::move(expression));
        if (!At(u")")) ParseArguments(*call, u")");
        Expect(u")");
        expression = std::move(call);
      } else {
        return expression;
      }
    }
  }

  /// Up to `end`, or without one to the end of the statement.
  void ParseArguments(Expression& call, std::u16string_view end) {
    const auto at_end = [&] { return end.empty() ? AtEnd() : At(end); };
    do {
      const bool is_omitted = At(u",") || at_end();
      call.operands.push_back(is_omitted ? nullptr : ParseExpression());
    } while (Accept(u","));
  }

  ExpressionPtr ParsePrimary() {
    const Token& token = Current();
    if (token.kind == Token::Kind::Literal) return Literal(token.literal);
    if (Accept(u"(")) {
      ExpressionPtr group = New(Expression::Kind::Group);
      group->operands.push_back(ParseExpression());
      Expect(u")");
      return group;
    }
    if (At(u"True")) return Literal(true);
    if (At(u"False")) return Literal(false);
    if (At(u"Empty")) return Literal(Value());
    if (At(u"Null")) return Literal(Null());
    if (At(u"Nothing")) return Literal(ObjectPtr());
    if (token.kind != Token::Kind::Name) {
      Fail(AtEnd() ? "something is missing" : "\"" + ToUtf8(token.text) + "\" begins nothing");
    }
    ExpressionPtr name = New(Expression::Kind::Name);
    name->name = ExpectName();
    return name;
  }

  ExpressionPtr Literal(Value value) {
    ExpressionPtr literal = New(Expression::Kind::Literal);
    literal->literal = std::move(value);
    ++at_;
    return literal;
  }

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
};

}  // namespace

Block ParseMacro(std::u16string_view source) {
  return Parser(source).Parse();
}

}  // namespace qva::corpus
