// What each operation of a toolbar and of the set of toolbars costs: its calls to Excel and the host.
#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::ElementsAreArray;

class ToolbarCosts : public ToolbarTest {
 protected:
  /// Calls of an operation; its error, if it raises one, does not matter.
  long Cost(const ObjectPtr& object, Access access, std::u16string_view member, Arguments arguments) {
    count.Reset();
    IgnoreErrors([&] { object->Invoke(access, member, arguments); });
    return count.calls();
  }
  ObjectPtr Item(std::int32_t id) const { return Call(toolbars, u"Item", {id}).ToObject(); }
};

TEST_F(ToolbarCosts, OfEveryOperationOfAToolbar) {
  AddShape(u"Picture02");
  Build({{.key = u"^{b}"}, {.key = u"^{k}"}, {}});
  const ObjectPtr picture = GetObject(observed_sheet, u"Shapes", {u"Picture02"});
  constexpr Access kCall = Access::Call, kGet = Access::Get, kPut = Access::Put;
  constexpr long kFind = 2;  // the bar and its index
  constexpr long kBind = 5;  // the control, its visibility, whether it is enabled, its macro, the key
  constexpr long kKeys = 3;  // of two buttons, and of the help button
  constexpr long kRefreshShown = kFind + 1 + kKeys * kBind;
  constexpr long kRefreshHidden = kFind + 1 + kKeys;
  struct Operation {
    Access access;
    std::u16string_view member;
    Arguments arguments;
    long calls;
  };
  // In this order: the bar is shown, later hidden.
  const Operation operations[] = {
      {kPut, u"VisibleToolbar", {true}, kFind + 3 + kRefreshShown},
      {kPut, u"VisibleToolbar", {true}, kFind + 1 + kRefreshShown},
      {kGet, u"VisibleToolbar", {}, 1 + kRefreshShown},
      {kCall, u"Refresh", {}, kRefreshShown},
      {kCall, u"VisibleButton", {1, true}, kFind + 2 + kBind},
      {kCall, u"VisibleButton", {3, true}, kFind + 2},
      {kCall, u"EnabledButton", {1, true}, kFind + 2},
      {kCall, u"ButtonFaceID", {1, 100}, kFind + 2},
      {kCall, u"ButtonFace", {1, picture}, kFind + 3},
      {kCall, u"ButtonToolTipText", {1, u"Kita"}, kFind + 2},
      {kCall, u"SetAction", {1, u"Kitas"}, kFind + 3},
      {kCall, u"SetAction", {1, u""}, kFind},
      {kCall, u"SetHotKey", {3, u"^{m}"}, kFind + kBind},
      {kCall, u"SetHotKey", {3, u"^{s}"}, kFind + kBind + 1},
      {kCall, u"SetHotKey", {3, u""}, kFind},
      {kCall, u"PositinTop", {}, 1},
      {kGet, u"Caption", {}, 1},
      {kPut, u"Caption", {kBar}, 1},
      {kGet, u"ToolbarID", {}, 1},
      {kGet, u"TotalButtons", {}, 2},
      {kGet, u"IDCollection", {}, 0},
      {kPut, u"IDCollection", {1}, 0},
      {kGet, u"CmdEvent", {}, 0},
      {kCall, u"iComment", {}, 2},
      {kCall, u"iFreeze", {}, 2},
      {kCall, u"iPrintP", {}, 2},
      {kCall, u"iPrint", {}, 2},
      {kCall, u"iExcel", {}, 2},
      {kCall, u"iHelp", {}, 2},
      {kPut, u"VisibleToolbar", {false}, kFind + 3 + kRefreshHidden},
      {kGet, u"VisibleToolbar", {}, 1 + kRefreshHidden},
      {kCall, u"Refresh", {}, kRefreshHidden},
  };
  for (const Operation& operation : operations) {
    EXPECT_EQ(Cost(toolbar, operation.access, operation.member, operation.arguments), operation.calls)
        << ToUtf8(operation.member);
  }
  count.Reset();
  toolbar.reset();
  EXPECT_EQ(count.calls(), 2 + kKeys) << "the bar is enabled and deleted";
}

TEST_F(ToolbarCosts, OfEveryOperationOfTheSet) {
  DescribeCells(0);
  constexpr long kShown = 1 + 2 * (3 + 5);  // the bar's visibility, and its one key refreshed twice
  constexpr long kHidden = 1 + 3 + 1;       // … once
  EXPECT_EQ(Cost(toolbars, Access::Call, u"CreateToolbar", {observed_sheet}), 84);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"Item", {1}), 0);
  EXPECT_EQ(Cost(toolbars, Access::Get, u"Count", {}), 0);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"Refresh", {}), kHidden);
  Put(Item(1), u"VisibleToolbar", true);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"Refresh", {}), kShown);
  Create(observed_sheet);
  Item(1);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"Refresh", {}), 2 * kShown) << "one toolbar, twice";
  EXPECT_EQ(Cost(toolbars, Access::Call, u"Item", {9}), 0);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"DeleteToolbar", {9}), 0);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"DeleteToolbar", {1}), 2 + 1) << "the bar, and its key";
  EXPECT_EQ(Cost(toolbars, Access::Get, u"cmdGoToAppCaption", {}), 1);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"cmdGoToAppShow", {}), 14);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"cmdGoToAppShow", {}), 10);
  EXPECT_EQ(Cost(toolbars, Access::Call, u"cmdGoToAppDelete", {}), 5);
}

TEST_F(ToolbarCosts, OfAToolbarWithTheDefaultButtonsAloneAreTheseCalls) {
  for (std::int32_t n = 843; n <= 849; ++n) host.texts[n] = u"Tekstas " + NumberText(n);
  DescribeCells(0);
  trace.Clear();
  Create(observed_sheet);
  std::vector<std::string> expected = {
      "Sheet.Parent",
      R"~(Sheet.Range("nTotalButtons"))~",
      R"~(Sheet.Range("nTotalButtons").Value -> 0)~",
      R"~(Book.Name -> "Book1")~",
      R"~(Sheet.Range("sToolBarCaption"))~",
      R"~(Sheet.Range("sToolBarCaption").Value -> "Ataskaita")~",
      R"~(Sheet.Range("bMenuBar"))~",
      R"~(Sheet.Range("bMenuBar").Value -> False)~",
      R"~(Application.CommandBars("Ataskaita(Book1)") ! 5 Invalid procedure call or argument)~",
      "Application.CommandBars",
      R"~(Application.CommandBars.Add(Name:="Ataskaita(Book1)", MenuBar:=False, Temporary:=True))~",
      "BAR.Visible = False",
      R"~(Application.CommandBars("Ataskaita(Book1)"))~",
      "BAR.Position = 4",
  };
  struct Row {
    std::string type, id, tag, group, face, macro;
  };
  const Row rows[] = {{"1", "1", "TagComment", "True", "1593", "Book1!cmdComment"},
                      {"1", "1", "TagFreeze", "False", "443", "Book1!cmdFreeze"},
                      {"1", "2521", "TagPrint", "True", "2521", ""},
                      {"1", "109", "TagPrintP", "False", "109", ""},
                      {"4", "1733", "Tag01", "True", "", ""},
                      {"1", "1", "TagExcel", "False", "263", ""},
                      {"1", "1", "TagHelp", "False", "984", "Book1!cmdHelp"}};
  const auto text = [](std::size_t i) { return "\"Tekstas " + std::to_string(843 + i) + "\""; };
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    expected.push_back("MessageResource.Text(" + std::to_string(843 + i) + ") -> " + text(i));
  }
  expected.push_back("BAR.Controls");
  expected.push_back(R"~(BAR.Name -> "Ataskaita(Book1)")~");
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const Row& row = rows[i];
    const std::string control = "BAR.Controls.Add(" + row.type + ", " + row.id +
                                R"~(, "Ataskaita(Book1)", )~" + std::to_string(i + 1) + ", True)";
    expected.push_back(control);
    if (!row.face.empty()) expected.push_back(control + ".FaceId = " + row.face);
    expected.push_back(control + ".Caption = " + text(i));
    expected.push_back(control + ".Tag = \"" + row.tag + "\"");
    expected.push_back(control + ".ToolTipText = " + text(i));
    expected.push_back(control + ".Visible = True");
    expected.push_back(control + ".BeginGroup = " + row.group);
    if (i == 0) {
      expected.push_back("Sheet.Parent");
      expected.push_back(R"~(Book.Name -> "Book1")~");
    }
    expected.push_back(control + (row.face.empty() ? ".Width = 52" : ".OnAction = \"" + row.macro + "\""));
  }
  for (const char* call :
       {"Application.ThisWorkbook", R"~(Book.Name -> "Book1")~", "BAR.Controls", "BAR.Controls.Count -> 7"}) {
    expected.push_back(call);
  }
  EXPECT_THAT(Shortened(trace.lines()), ElementsAreArray(expected));
  EXPECT_EQ(expected.size(), 84u);
}

}  // namespace
}  // namespace qva
