// One call to Excel fails, whichever it is, while toolbars come and go: nothing stays behind.
#include <algorithm>

#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

class ToolbarFailures : public ToolbarTest {
 protected:
  ToolbarFailures() {
    AddShape(u"Picture02");
    Describe({{.key = u"^{s}"}, {.face_id = 0, .picture = u"Picture02", .key = u"^{b}"}});
  }
  /// Controls on Excel's menu bar.
  std::int32_t MenuControls() const {
    return Get(GetObject(Bar(u"Worksheet Menu Bar"), u"Controls"), u"Count").ToInt32();
  }
};

TEST_F(ToolbarFailures, CreateToolbarThatFailsLeavesNoBarBehind) {
  int made = 0, none = 0, raised = 0;
  for (long n = 1;; ++n) {
    SCOPED_TRACE(n);
    const long live = Object::LiveCount();
    failure.Reset(n);
    int id = 0;
    const std::int32_t error = RaisedBy([&] { id = Create(observed_sheet); });
    const bool has_failed = failure.has_failed();
    failure.Reset(0);
    EXPECT_TRUE(error == 0 || error == kAutomationFailed) << error;
    (error != 0 ? raised : id != 0 ? made : none)++;
    EXPECT_EQ(HasBar(), id != 0);
    if (id != 0) {
      EXPECT_GE(ControlCount(), 1);
      Put(Call(toolbars, u"Item", {id}).ToObject(), u"VisibleToolbar", true);
      Call(toolbars, u"DeleteToolbar", {id});
    }
    EXPECT_EQ(BarCount(), 3);
    EXPECT_EQ(Get(toolbars, u"Count"), Value(0));
    EXPECT_EQ(excel->KeyBindings().size(), 0u);
    EXPECT_EQ(Object::LiveCount(), live);
    if (!has_failed) break;
    if (id == 254) toolbars = LibraryTest::Create(u"CToolbars");
  }
  EXPECT_EQ(none, 47 + 3) << "while the settings are read, and where the first control cannot be added, in "
                             "front of which the others would stand";
  EXPECT_EQ(raised, 1 + 5 + 2) << "the workbook, the bar before its controls, and their number at the end";
  EXPECT_GT(made, 80);
}

TEST_F(ToolbarFailures, AFailingCallAmongTheControlsLosesThatOneAlone) {
  trace.Clear();
  Create(observed_sheet);
  const std::vector<std::string> calls = Shortened(trace.lines());
  int properties = 0, pictures = 0, controls = 0;
  for (std::size_t n = 0; n < calls.size(); ++n) {
    const std::string& call = calls[n];
    const bool is_property = call.starts_with("BAR.Controls(") && call.find(" = ") != call.npos;
    const bool is_picture = call.ends_with(".PasteFace()") || call.ends_with(".Copy()");
    const bool is_control = call.starts_with("BAR.Controls(") && call.ends_with(")") && !is_picture;
    if (!is_property && !is_picture && !is_control) continue;
    (is_property ? properties : is_picture ? pictures : controls)++;
    SCOPED_TRACE(call);
    std::vector<std::string> expected = calls;
    expected[n] += " ! 440 The call failed";
    if (is_control) {
      // The first property of the control is lost; the next thing that needs the control asks for it again.
      expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(n) + 1);
      auto next = expected.begin() + static_cast<std::ptrdiff_t>(n) + 1;
      while (!next->starts_with(call)) ++next;
      expected.insert(next, call);
    }
    toolbars = LibraryTest::Create(u"CToolbars");
    trace.Clear();
    failure.Reset(static_cast<long>(n) + 1);
    EXPECT_EQ(Create(observed_sheet), 1);
    EXPECT_TRUE(failure.has_failed());
    failure.Reset(0);
    EXPECT_EQ(Shortened(trace.lines()), expected);
  }
  EXPECT_EQ(properties, 8 + 7) << "the second button has no face of Excel's";
  EXPECT_EQ(pictures, 2) << "copied and pasted";
  EXPECT_EQ(controls, 2);
}

TEST_F(ToolbarFailures, ADefaultButtonThatFailsLosesWhatWouldStandBehindIt) {
  trace.Clear();
  Create(observed_sheet);
  const std::vector<std::string> calls = trace.lines();
  toolbars = LibraryTest::Create(u"CToolbars");
  const auto tag = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
    return call.ends_with(".Tag = \"TagPrint\"");
  });
  ASSERT_NE(tag, calls.end());
  failure.Reset(tag - calls.begin() + 1);
  EXPECT_EQ(Create(observed_sheet), 1) << "the bar is as good as one without it";
  EXPECT_TRUE(failure.has_failed());
  failure.Reset(0);
  EXPECT_EQ(ControlCount(), 2 + 3);
  EXPECT_EQ(Of(5, u"Tag"), Value(u""));
  toolbar = Call(toolbars, u"Item", {1}).ToObject();
  EXPECT_EQ(Call(toolbar, u"iFreeze"), Value(4));
  EXPECT_EQ(Call(toolbar, u"iHelp"), Value(0));
  EXPECT_EQ(RaisedBy([&] { Call(GetObject(toolbar, u"CmdEvent"), u"cmdComment"); }), 0)
      << "the commands of the others work";
}

TEST_F(ToolbarFailures, ReleaseThatFailsGivesBackAllButTheOneThing) {
  for (long n = 1;; ++n) {
    SCOPED_TRACE(n);
    const long live = Object::LiveCount();
    const ObjectPtr set = LibraryTest::Create(u"CToolbars");
    const std::int32_t id = Call(set, u"CreateToolbar", {observed_sheet}).ToInt32();
    Put(Call(set, u"Item", {id}).ToObject(), u"VisibleToolbar", true);
    Call(set, u"cmdGoToAppShow");
    ASSERT_EQ(excel->KeyBindings().size(), 4u);
    trace.Clear();
    failure.Reset(n);
    const_cast<ObjectPtr&>(set).reset();
    const bool has_failed = failure.has_failed();
    failure.Reset(0);
    EXPECT_EQ(Object::LiveCount(), live);
    const std::string failed = has_failed ? trace.lines()[static_cast<std::size_t>(n) - 1] : "";
    const bool bar_stays = failed.find(".Delete()") != failed.npos && failed.find("Ataskaita") != failed.npos;
    // The lower save key is given back twice.
    const bool key_stays = failed.find("OnKey") != failed.npos && failed.find("^{s}") == failed.npos;
    const bool command_stays = has_failed && n > 7;
    EXPECT_EQ(HasBar(), bar_stays) << failed;
    EXPECT_EQ(excel->KeyBindings().size(), key_stays ? 1u : 0u) << failed;
    EXPECT_EQ(MenuControls(), command_stays ? 2 : 1) << failed;
    // What stayed is what Excel would not take back; the next round starts without it.
    if (bar_stays) Call(Bar(), u"Delete");
    for (const auto* key : {u"^{s}", u"^{S}", u"^{b}", u"{F1}"}) Call(excel, u"OnKey", {key});
    if (command_stays) {
      Put(Bar(u"Worksheet Menu Bar"), u"Protection", 0);
      Call(GetObject(Bar(u"Worksheet Menu Bar"), u"Controls", {2}), u"Delete");
    }
    if (!has_failed) break;
    ASSERT_LT(n, 100);
  }
}

/// What becomes of an operation when its first call fails, when its second one does and so on, and, last,
/// when none does: '0' to '9' the byte result, '.' done without one, 'E' an error that the caller gets.
struct Outcomes {
  Access access;
  std::u16string_view member;
  Arguments arguments;
  std::string expected;
  bool is_hidden = false;  ///< the bar, before
};

TEST_F(ToolbarFailures, ButtonOperationsThatFailLeaveTheToolbarInOrder) {
  constexpr Access kCall = Access::Call, kGet = Access::Get, kPut = Access::Put;
  const ObjectPtr picture = GetObject(observed_sheet, u"Shapes", {u"Picture02"});
  // The keys of button 1 (the save key, twice), button 2 and the help button: bound, each after the control,
  // its visibility, whether it is enabled and its macro; or given back.
  const std::string bound = ".....", bound_save = "......", released = "EEEEE";
  // The look for the bar, and whether it is shown.
  const std::string refreshed = "..E" + bound_save + bound + bound, hidden = "..E" + released;
  const Outcomes operations[] = {
      {kCall, u"VisibleButton", {1, false}, "11EE00000"},
      {kCall, u"VisibleButton", {1, true}, "11EE0000000"},
      {kCall, u"EnabledButton", {1, true}, "11EEE"},
      {kCall, u"ButtonFaceID", {1, 3}, "11EE0"},
      {kCall, u"ButtonFace", {1, picture}, "11EEE0"},
      {kCall, u"ButtonToolTipText", {1, u"x"}, "11EE0"},
      {kCall, u"PositinTop", {}, "E0"},
      {kCall, u"SetAction", {1, u"x"}, "11EEE0"},
      {kCall, u"SetHotKey", {2, u"^{k}"}, "11111000"},
      {kCall, u"Refresh", {}, refreshed + "."},
      {kCall, u"Refresh", {}, hidden + ".", true},
      {kGet, u"VisibleToolbar", {}, "E" + refreshed + "."},
      {kGet, u"VisibleToolbar", {}, "E" + hidden + ".", true},
      {kPut, u"VisibleToolbar", {false}, "..EEE" + hidden + "."},
      {kPut, u"VisibleToolbar", {true}, "..EEE" + refreshed + ".", true},
      {kGet, u"Caption", {}, "E."},
      {kPut, u"Caption", {kBar}, ".."},
      {kGet, u"ToolbarID", {}, "E."},
      {kGet, u"TotalButtons", {}, "EE9"},
  };
  for (const Outcomes& operation : operations) {
    std::string outcomes;
    bool has_failed = true;
    for (long n = 1; has_failed && n < 100; ++n) {
      toolbar.reset();
      toolbar = NewToolbar();
      Put(toolbar, u"VisibleToolbar", !operation.is_hidden);
      failure.Reset(n);
      Arguments arguments = operation.arguments;
      try {
        const Value result = toolbar->Invoke(operation.access, operation.member, arguments);
        outcomes += result.Is(Value::Type::Byte) ? static_cast<char>('0' + result.As<std::uint8_t>()) : '.';
      } catch (const AutomationError& error) {
        outcomes += 'E';
        // One operation fails in any case.
        EXPECT_TRUE(error.number() == (failure.has_failed() ? kAutomationFailed : kUnsupportedMember));
      }
      has_failed = failure.has_failed();
      failure.Reset(0);
      Call(toolbar, u"Refresh");
      EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{9})) << ToUtf8(operation.member) << n;
    }
    EXPECT_EQ(outcomes, operation.expected) << ToUtf8(operation.member);
  }
}

}  // namespace
}  // namespace qva
