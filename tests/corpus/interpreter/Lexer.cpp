#include "tests/corpus/interpreter/Lexer.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "platform/text.h"
#include "tests/corpus/interpreter/MacroError.h"

namespace qva::corpus {
namespace {

constexpr std::u16string_view kSymbols[] = {u"<>", u"<=", u">=", u"(", u")", u",", u".", u"=",
                                            u"<",  u">",  u"&",  u"+", u"-", u"*", u"/", u"\\"};

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

bool IsLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

class Lexer {
 public:
  explicit Lexer(std::u16string_view source) : source_(source) {}

  std::vector<Token> Split() {
    while (at_ < source_.size()) Next();
    EndLine();
    Add(Token::Kind::EndOfFile);
    return std::move(tokens_);
  }

 private:
  void Next() {
    const char16_t c = source_[at_];
    if (c == u'\n') {
      EndLine();
      ++line_;
      ++at_;
    } else if (c == u':') {
      EndLine();
      ++at_;
    } else if (c == u' ' || c == u'\t' || c == u'\r') {
      after_blank_ = true;
      ++at_;
    } else if (c == u'\'') {
      at_ = std::min(source_.find(u'\n', at_), source_.size());
    } else if (c == u'"') {
      Text();
    } else if (IsDigit(c)) {
      Number();
    } else if (IsLetter(c)) {
      NameOrContinuation();
    } else {
      Symbol();
    }
  }

  Token& Add(Token::Kind kind) {
    tokens_.push_back({.kind = kind, .text = {}, .literal = {}, .line = line_, .after_blank = after_blank_});
    after_blank_ = false;
    return tokens_.back();
  }

  void EndLine() {
    if (!tokens_.empty() && tokens_.back().kind != Token::Kind::EndOfLine) Add(Token::Kind::EndOfLine);
  }

  void Text() {
    std::u16string text;
    while (true) {
      const std::size_t end = source_.find_first_of(u"\"\n", at_ + 1);
      if (end == source_.npos || source_[end] == u'\n') throw MacroError(line_, "a text without an end");
      text += source_.substr(at_ + 1, end - at_ - 1);
      at_ = end;
      if (end + 1 == source_.size() || source_[end + 1] != u'"') break;
      text += u'"';
      ++at_;
    }
    ++at_;
    Add(Token::Kind::Literal).literal = std::move(text);
  }

  void Number() {
    std::size_t end = at_;
    while (end < source_.size() && (IsDigit(source_[end]) || source_[end] == u'.')) ++end;
    const std::string digits = ToUtf8(source_.substr(at_, end - at_));
    const double number = std::strtod(digits.c_str(), nullptr);
    Value literal = number;
    if (digits.find('.') == digits.npos) {
      if (number > std::numeric_limits<std::int32_t>::max()) throw MacroError(line_, "too large a number");
      if (number > std::numeric_limits<std::int16_t>::max()) {
        literal = static_cast<std::int32_t>(number);
      } else {
        literal = static_cast<std::int16_t>(number);
      }
    }
    at_ = end;
    Add(Token::Kind::Literal).literal = std::move(literal);
  }

  void NameOrContinuation() {
    std::size_t end = at_;
    while (end < source_.size() && (IsLetter(source_[end]) || IsDigit(source_[end]))) ++end;
    const std::u16string_view name = source_.substr(at_, end - at_);
    at_ = end;
    if (name != u"_") {
      Add(Token::Kind::Name).text = name;
      return;
    }
    if (at_ == source_.size() || source_[at_] != u'\n') throw MacroError(line_, "\"_\" inside a line");
    ++line_;
    ++at_;
    after_blank_ = true;
  }

  void Symbol() {
    const auto symbol = std::ranges::find_if(
        kSymbols, [&](std::u16string_view known) { return source_.substr(at_).starts_with(known); });
    if (symbol == std::end(kSymbols)) {
      throw MacroError(line_, "\"" + ToUtf8(source_.substr(at_, 1)) + "\" is outside the subset");
    }
    at_ += symbol->size();
    Add(Token::Kind::Symbol).text = *symbol;
  }

  std::u16string_view source_;
  std::size_t at_ = 0;
  int line_ = 1;
  bool after_blank_ = false;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> SplitIntoTokens(std::u16string_view source) {
  return Lexer(source).Split();
}

}  // namespace qva::corpus
