// Runs the macros of the corpus in memory: the interpreter, the library and the in-memory twin.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <utility>

#include "platform/forms/unattended_forms.h"
#include "tests/corpus/interpreter/Interpreter.h"
#include "tests/host/host_test.h"
#include "tests/library_fixture.h"

namespace qva::corpus {

/// One macro's world: a fresh library and an Excel with the workbook "C:\Corpus\Corpus.xls" of three sheets.
/// Being a fixture, it checks that nothing is left when it goes.
class MemoryEngine : public LibraryTest {
 public:
  /// Public members by class and place in its table; reading and writing a property are two.
  using Members = std::set<std::pair<std::string, std::size_t>>;

  explicit MemoryEngine(std::string name);

  /// Runs the macro. The result is its log, a line for each entry. Raises MacroError.
  std::string Run();
  /// Runs another text in its place.
  std::string Run(const std::string& source);
  /// What is wrong with the dialogs' answers: those that a form did not take, and showings that did not come.
  /// Empty when all is well.
  std::string FormProblems() const;
  /// The public members that went through without an error.
  const Members& members() const { return members_; }

 private:
  void TestBody() override {}

  Functions PreludeFunctions();
  void AddExcelFunctions(Functions& functions);
  void AddWorldFunctions(Functions& functions);

  void Log(std::u16string_view text);
  void LogError(const std::u16string& what);
  /// What became of a fact.
  void LogOutcome(const std::u16string& what, const std::u16string& outcome);
  void LogBoxes(const std::u16string& what);
  /// False when there is none.
  bool LogNewBoxes(const std::u16string& what);
  /// Logs an error that the macro did not ask for.
  void LogForgottenError();
  void DefineName(const std::u16string& name, std::int32_t sheet, const std::u16string& address);
  void DescribeToolbar(std::int32_t sheet, std::int32_t buttons);
  ObjectPtr Sheet(std::int32_t number);
  Value CreateByIdentifier(const std::u16string& identifier);
  void Watch(const Object& object, Access access, std::u16string_view member);

  std::string name_;
  TemporaryFolder folder_;
  std::filesystem::path form_log_ = folder_.path() / "forms.log";
  UnattendedForms forms_;
  Members members_;
  std::string log_;
  std::size_t boxes_logged_ = 0;
  Interpreter* interpreter_ = nullptr;  ///< while Run runs
};

/// A value as logs show it: numbers without their kind, 12 or 0.5; texts in quotes, with \n for a line's end;
/// #2024-05-15# for a date; True, Empty, Null, Nothing, Object.
std::u16string Show(const Value& value);

}  // namespace qva::corpus
