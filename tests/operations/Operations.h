// Every operation of the public classes, ready to be called: what is proven of all of them goes by this
// table.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/library_fixture.h"
#include "tests/out_of_memory.h"

namespace qva {

/// Lets failing memory be the library's alone: the host's calls are made by other processes.
class CallsOutside : public CallObserver {
 public:
  void Starting(const HostCall&) override { OutOfMemory::Pause(); }
  void Returned(const HostCall&, const Value&) override { OutOfMemory::Resume(); }
  void Failed(const HostCall&, const AutomationError&) override { OutOfMemory::Resume(); }
};

/// A call that can be made: of a member of the object, or of what creates or releases it.
struct ReadyCall {
  ObjectPtr object;
  Arguments arguments;
};

/// A report that is connected, and what its operations work on. What takes long to make is made once.
class OperationStage : public LibraryTest {
 public:
  OperationStage();
  ~OperationStage() override;

  using LibraryTest::Create;
  using LibraryTest::excel;
  using LibraryTest::Nothing;
  using LibraryTest::platform;

  /// Puts the services of this object before the library, in the place of any other.
  void InstallOwnServices();

  /// An object as the library gets it: its calls are the host's.
  ObjectPtr Observed(const ObjectPtr& object) { return observing_.Wrap(object, u""); }
  ObjectPtr ObservedCells(std::u16string_view address) { return Observed(Cells(address)); }
  ObjectPtr Cells(std::u16string_view address) const { return GetObject(sheet, u"Range", {address}); }

  /// The global object, connected to Excel and to the host's book, with a set of toolbars and an environment.
  ObjectPtr Global();
  ObjectPtr Tools();
  ObjectPtr SaveForm();
  /// A new object, on a workbook with the names and the date of a report.
  ObjectPtr Reports();
  /// The set of the report's one toolbar, whose id is 1; its buttons are two and the seven defaults.
  ObjectPtr Toolbars();
  /// That toolbar, shown.
  ObjectPtr Toolbar();
  /// The object of its commands, whose buttons are all up.
  ObjectPtr Commands();
  /// The default buttons on a bar of their own, with none in front of them.
  ObjectPtr DefaultButtons();
  /// A list of two buttons.
  static ObjectPtr Buttons();
  /// A period that is bound to cells of the year 2024; its user confirms.
  ObjectPtr Period();
  /// The sheet of a new workbook that has all names of a period but the two last.
  ObjectPtr SheetWithoutTwoNames();
  /// The sheet that describes the toolbar.
  ObjectPtr Settings();
  /// A bar of the name, without controls.
  ObjectPtr EmptyBar(std::u16string_view name) const;
  /// Deletes the bar of the name, if there is one.
  void DeleteBar(std::u16string_view name) const;

 private:
  CallsOutside outside_;
  /// Failures come first: who fails for want of memory is no more heard by the others.
  Interceptor observing_{&failure, &outside_, &count};
  InterceptedFactory observed_factory_{observing_, platform.faults.object_factory};
  /// While a form is shown the library works, and its memory is the library's.
  Interceptor showing_{&failure, &count};
  InterceptedForms observed_forms_{showing_, platform.faults.forms};
  bool has_report_ = false;
  ObjectPtr settings_, tools_, form_, toolbars_, toolbar_, default_buttons_, bar_, period_;

 public:
  ObjectPtr observed_excel = Observed(excel);
  ObjectPtr workbook = excel->AddWorkbook();
  ObjectPtr sheet = GetObject(workbook, u"Sheets", {1});
  ObjectPtr global;
  ObjectPtr period_workbook;
};

/// One operation, and what is agreed of it. What becomes of a call is one letter:
///   .      done, without a result
///   T F    True or False
///   0 … 9  that number
///   S s    a text, the empty text
///   O N    an object, Nothing
///   E      the error of the host's call that failed reaches the caller
///   X      the library's own error
///   M      the want of memory reaches the caller, which a front door reports as 7 (Out of memory)
struct Operation {
  enum class Kind { Create, Call, Get, Put, PutRef, Release };

  std::u16string_view class_name;
  std::u16string_view member;  ///< none for creation and release
  Kind kind;
  std::function<ReadyCall(OperationStage&)> prepare;
  char undisturbed;  ///< what becomes of it when nothing fails

  /// What becomes of it when its first host call fails, when its second one does, and so on: an extended
  /// regular expression.
  std::string_view when_a_call_fails = "";
  /// The same where every later call fails as well; empty where that makes no difference.
  std::string_view when_all_calls_fail_from_it_on = "";
  /// The same for its allocations, and for calls that fail for want of memory.
  std::string_view when_memory_is_short = "M*";

  std::int32_t own_error = 0;         ///< the number of X
  std::u16string_view outcome = u"";  ///< the property that tells what became of an operation without result
  /// A call that raised may be past what it does only once: the next one then begins anew.
  bool begins_anew = false;
  /// A call that failed takes back what it did by then, which fails itself where everything does; only then
  /// the next one begins anew.
  bool tidies_up = false;
  /// What the call leaves, readable; the same after a call that follows a failed one.
  std::function<std::string(OperationStage&, const ObjectPtr&)> leaves = {};

  /// "CReports.Init", "CToolbar.get_Caption"; "CTools" for the creation, "CTools.~" for the release.
  std::string Name() const;
  /// The same in letters and underscores.
  std::string TestName() const;
};

const std::vector<Operation>& Operations();

}  // namespace qva
