// One call to Excel fails, whichever it is, while toolbars come and go: nothing stays behind.
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
    const std::int32_t error = ErrorNumberOf([&] { id = Create(observed_sheet); });
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
  const std::vector<std::string> calls = trace.lines();
  toolbars = LibraryTest::Create(u"CToolbars");
  for (std::size_t n = 0; n < calls.size(); ++n) {
    if (calls[n].find(".Controls(") == std::string::npos || calls[n].find(" = ") == std::string::npos)
      continue;
    SCOPED_TRACE(calls[n]);
    trace.Clear();
    failure.Reset(static_cast<long>(n) + 1);
    Create(observed_sheet);
    EXPECT_TRUE(failure.has_failed());
    failure.Reset(0);
    ASSERT_EQ(trace.lines().size(), calls.size());
    for (std::size_t i = 0; i < calls.size(); ++i) {
      EXPECT_EQ(trace.lines()[i], i == n ? calls[i] + " ! 440 The call failed" : calls[i]);
    }
    toolbars = LibraryTest::Create(u"CToolbars");
  }
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
    const bool key_stays = failed.find("OnKey") != failed.npos;
    const bool command_stays = has_failed && n > 6;
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

TEST_F(ToolbarFailures, ButtonOperationsThatFailLeaveTheToolbarInOrder) {
  toolbar = NewToolbar();
  Put(toolbar, u"VisibleToolbar", true);
  const std::pair<std::u16string_view, Arguments> operations[] = {
      {u"VisibleButton", {1, false}}, {u"ButtonFaceID", {1, 3}},    {u"ButtonToolTipText", {1, u"x"}},
      {u"SetAction", {1, u"x"}},      {u"SetHotKey", {2, u"^{k}"}}, {u"Refresh", {}},
      {u"VisibleToolbar", {}}};
  for (const auto& [member, arguments] : operations) {
    for (long n = 1;; ++n) {
      failure.Reset(n);
      ErrorOf([&] { Call(toolbar, member, arguments); });
      const bool has_failed = failure.has_failed();
      failure.Reset(0);
      Call(toolbar, u"Refresh");
      EXPECT_EQ(Get(toolbar, u"TotalButtons"), Value(std::uint8_t{9})) << ToUtf8(member) << n;
      if (!has_failed) break;
    }
  }
}

}  // namespace
}  // namespace qva
