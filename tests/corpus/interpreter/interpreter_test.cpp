// How the interpreter runs a macro.
#include "tests/corpus/interpreter/Interpreter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "tests/corpus/interpreter/MacroError.h"
#include "tests/corpus/interpreter/Parser.h"

namespace qva::corpus {
namespace {

/// An object with a member of every kind.
class Sample : public Described<Sample> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Sample", "")
        .Property<&Sample::number>(u"Number")
        .Property<&Sample::Item, &Sample::SetItem>(u"Item", {{u"i"}})
        .Get<&Sample::Other>(u"Other")
        .PutRef<&Sample::SetOther>(u"Other")
        .Method<&Sample::Increment>(u"Increment", {{u"n"}})
        .Method<&Sample::Join>(u"Join", {{u"a"}, Optional(u"b", u"-")})
        .Method<&Sample::Fail>(u"Fail");
  }
  std::u16string Item(std::int16_t i) { return items[i]; }
  void SetItem(std::int16_t i, std::u16string text) { items[i] = std::move(text); }
  ObjectPtr Other() { return other; }
  void SetOther(ObjectPtr object) { other = std::move(object); }
  void Increment(std::int32_t& n) { ++n; }
  std::u16string Join(std::u16string a, std::u16string b) { return a + b; }
  void Fail() { throw AutomationError(7, u"Sample", u"Failed"); }

  std::int32_t number = 0;
  std::map<std::int16_t, std::u16string> items;
  ObjectPtr other;
};

class InterpreterTest : public testing::Test {
 protected:
  /// What the macro says by `Log`, joined by blanks.
  std::string Run(std::u16string_view source) {
    std::u16string log;
    Functions functions = {
        {u"log",
         [&](const auto& a) {
           log += (log.empty() ? u"" : u" ") + a.at(0).ToText();
           return Value();
         }},
        {u"newsample", [](const auto&) { return Value(MakeRef<Sample>()); }},
    };
    Interpreter interpreter(std::move(functions), [this](const Object&, Access, std::u16string_view member) {
      reached += ToUtf8(member) + " ";
    });
    interpreter.Run(ParseMacro(source));
    return ToUtf8(log);
  }
  std::string MistakeOf(std::u16string_view source) {
    try {
      Run(source);
      return "";
    } catch (const MacroError& mistake) {
      return mistake.what();
    }
  }

  std::string reached;
};

TEST_F(InterpreterTest, CalculatesAndCompares) {
  EXPECT_EQ(Run(u"Log (1 + 2 * 3) & \"|\" & 7 \\ 2 & \"|\" & 7 Mod 4 & \"|\" & -5\nLog CStr(1 / 2 > 0.4)"),
            "7|3|3|-5 True");
  EXPECT_EQ(Run(u"Log CStr(\"a\" < \"b\" And Not 1 = 2)\nLog CStr(Nothing Is Nothing)"), "True True");
  EXPECT_EQ(Run(u"Log Replace(Left(\"abcd\", 3), \"b\", \"x\") & Right(\"abc\", 1) & InStr(\"abc\", \"c\") & "
                u"Len(\"ab\")"),
            "axcc32");
}

TEST_F(InterpreterTest, LoopsAndBranches) {
  EXPECT_EQ(Run(u"Dim i, s\ns = \"\"\nFor i = 1 To 3\nIf i = 1 Then\ns = s & \"one\"\nElseIf i = 2 Then\n"
                u"s = s & \"two\"\nElse\ns = s & \"more\"\nEnd If\nNext\nLog s"),
            "onetwomore");
  EXPECT_EQ(Run(u"Dim x, n\nn = 0\nFor Each x In Array(1, 2, 3)\nn = n + x\nNext\n"
                u"Do While n > 4\nn = n - 1\nLoop\nLog n & \"\""),
            "4");
  EXPECT_EQ(Run(u"Dim n\nn = 1\nIf n = 1 Then n = 5\nIf n = 1 Then n = 7\nLog n & \"\""), "5");
}

TEST_F(InterpreterTest, ReachesMembersOfEveryKind) {
  EXPECT_EQ(Run(u"Dim s\nSet s = NewSample()\ns.Number = 4\ns.Item(2) = \"a\"\nSet s.Other = NewSample()\n"
                u"s.Other.Number = s.Number + 1\nLog s.Item(2) & s.Other.Number & s.Join(\"x\") & "
                u"s.Join(\"x\", \"y\")"
                u"\nSet s.Other = Nothing"),
            "a5x-xy");
  EXPECT_EQ(reached, "Number Item Other Number Other Number Item Other Number Join Join Other ");
}

TEST_F(InterpreterTest, GivesBackWhatAMemberLeavesInAVariable) {
  EXPECT_EQ(Run(u"Dim s, n\nSet s = NewSample()\nn = 1\ns.Increment n\ns.Increment (n)\nLog n & \"\""), "2");
}

TEST_F(InterpreterTest, ResumesWithTheNextStatementWhenToldTo) {
  EXPECT_EQ(Run(u"Dim s\nSet s = NewSample()\nOn Error Resume Next\ns.Fail\n"
                u"Log Err.Number & Err.Source & Err.Description\nErr.Clear\nLog Err.Number & \"\"\n"
                u"Err.Raise 5, \"here\", \"there\"\nLog Err.Number & Err.Source"),
            "7SampleFailed 0 5here");
  EXPECT_THROW(Run(u"Dim s\nSet s = NewSample()\nOn Error Resume Next\nOn Error GoTo 0\ns.Fail"),
               AutomationError);
}

TEST_F(InterpreterTest, RefusesWhatEnginesDoDifferently) {
  EXPECT_EQ(MistakeOf(u"x = 1"), "line 1: \"x\" is not declared");
  EXPECT_EQ(MistakeOf(u"Dim x\nx = Nope"), "line 2: neither a variable nor a function: \"Nope\"");
  EXPECT_EQ(MistakeOf(u"Dim x\nSet x = 1"), "line 2: Set takes an object");
  EXPECT_EQ(MistakeOf(u"Dim x\nx = NewSample()"), "line 2: an object is assigned by Set");
  EXPECT_EQ(MistakeOf(u"Dim x\nx = \"1\" + 1"), "line 2: arithmetic with what is no number");
  EXPECT_EQ(MistakeOf(u"Dim x\nx = (\"1\" = 1)"), "line 2: a comparison of values of two kinds");
  EXPECT_EQ(MistakeOf(u"Dim x\nx = \"\" & 1.5"),
            "line 2: only texts and whole numbers are joined alike; use Show");
  EXPECT_EQ(MistakeOf(u"Dim x\nx.Fail"), "line 2: a member of what is no object; the engines' errors differ");
  EXPECT_EQ(
      MistakeOf(u"Dim s\nSet s = NewSample()\nOn Error Resume Next\nIf s.Join() = \"\" Then\nEnd If"),
      "line 4: an error where the way is decided: error 450: Wrong number of arguments or invalid property "
      "assignment");
}

}  // namespace
}  // namespace qva::corpus
