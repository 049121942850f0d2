#include "excelui/CDefaultButtons.h"

#include "tests/excelui/toolbar_test.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

class DefaultButtons : public ToolbarTest {
 protected:
  static constexpr std::u16string_view kIndexes[] = {u"cmdIndexComment", u"cmdIndexFreeze", u"cmdIndexPrintP",
                                                     u"cmdIndexPrint",   u"cmdIndexExcel",  u"cmdIndexHelp"};

  DefaultButtons() {
    for (std::int32_t n = 843; n <= 849; ++n) host.texts[n] = u"Tekstas " + NumberText(n);
    buttons = LibraryTest::Create(u"CDefaultButtons");
    bar = Call(GetObject(excel, u"CommandBars"), u"Add", {kBar}).ToObject();
    Call(buttons, u"Init", {observed_sheet, interceptor.Wrap(bar, u"Bar"), list});
    trace.Clear();
  }
  Value Entry(std::int32_t i, std::u16string_view column) const { return Get(list, column, {i}); }

  ObjectPtr buttons;
  ObjectPtr bar;
  ObjectPtr list = LibraryTest::Create(u"CButtonProperties");
};

/// The calls for a row: FaceId and OnAction are a button's, Width is a box's.
std::vector<std::string> RowCalls(const std::string& add, int text, const std::string& tag, bool group,
                                  const std::string& face, const std::string& last) {
  const std::string c = "Bar.Controls.Add(" + add + ").";
  const std::string caption = "\"Tekstas " + std::to_string(text) + "\"";
  std::vector<std::string> calls = {"Bar.Controls.Add(" + add + ")"};
  if (!face.empty()) calls.push_back(c + "FaceId = " + face);
  calls.push_back(c + "Caption = " + caption);
  calls.push_back(c + "Tag = \"" + tag + "\"");
  calls.push_back(c + "ToolTipText = " + caption);
  calls.push_back(c + "Visible = True");
  calls.push_back(c + "BeginGroup = " + (group ? "True" : "False"));
  calls.push_back(c + last);
  return calls;
}

TEST_F(DefaultButtons, AreAddedInTheirOrderWithTheirProperties) {
  Call(buttons, u"AddButtons");
  const std::string name = R"~(, "Ataskaita(Book1)", )~";
  std::vector<std::string> expected = {"Bar.Controls", R"~(Bar.Name -> "Ataskaita(Book1)")~"};
  const auto append = [&](std::vector<std::string> calls) {
    expected.insert(expected.end(), calls.begin(), calls.end());
  };
  append(RowCalls("1, 1" + name + "1, True", 843, "TagComment", true, "1593",
                  R"(OnAction = "Book1!cmdComment")"));
  // The workbook is asked for when its first macro is set.
  expected.insert(expected.end() - 1, "Sheet.Parent");
  expected.insert(expected.end() - 1, R"(Book.Name -> "Book1")");
  append(
      RowCalls("1, 1" + name + "2, True", 844, "TagFreeze", false, "443", R"(OnAction = "Book1!cmdFreeze")"));
  append(RowCalls("1, 2521" + name + "3, True", 845, "TagPrint", true, "2521", R"(OnAction = "")"));
  append(RowCalls("1, 109" + name + "4, True", 846, "TagPrintP", false, "109", R"(OnAction = "")"));
  append(RowCalls("4, 1733" + name + "5, True", 847, "Tag01", true, "", "Width = 52"));
  append(RowCalls("1, 1" + name + "6, True", 848, "TagExcel", false, "263", R"(OnAction = "")"));
  append(RowCalls("1, 1" + name + "7, True", 849, "TagHelp", false, "984", R"(OnAction = "Book1!cmdHelp")"));
  expected.insert(expected.end(), {"Application.ThisWorkbook", R"(Book.Name -> "Book1")"});
  EXPECT_THAT(trace.lines(), ElementsAreArray(expected));
}

TEST_F(DefaultButtons, AreEnteredInTheListWithoutPicturesAndMacros) {
  Call(buttons, u"AddButtons");
  struct Row {
    int id, face;
    const char16_t* tag;
    const char16_t* key;
    bool group;
    const char16_t* macro;
  };
  const Row rows[] = {{1, 1593, u"TagComment", u"", true, u""},
                      {1, 443, u"TagFreeze", u"", false, u""},
                      {2521, 2521, u"TagPrint", u"", true, u""},
                      {109, 109, u"TagPrintP", u"", false, u""},
                      {1733, 1733, u"Tag01", u"", true, u""},
                      {1, 263, u"TagExcel", u"", false, u""},
                      {1, 984, u"TagHelp", u"{F1}", false, u"Book1!cmdHelp"}};
  EXPECT_EQ(Get(list, u"TotalButtons"), Value(std::uint8_t{7}));
  std::int32_t i = 0;
  for (const Row& row : rows) {
    ++i;
    EXPECT_EQ(Entry(i, u"nBID"), Value(row.id)) << i;
    EXPECT_EQ(Entry(i, u"nBFaceID"), Value(row.face)) << i;
    EXPECT_EQ(Entry(i, u"sBCaption"), Value(u"Tekstas " + NumberText(842 + i))) << i;
    EXPECT_EQ(Entry(i, u"sBTag"), Value(row.tag)) << i;
    EXPECT_EQ(Entry(i, u"sBOnKey"), Value(row.key)) << i;
    EXPECT_EQ(Entry(i, u"bBVisible"), Value(true)) << i;
    EXPECT_EQ(Entry(i, u"bBGroup"), Value(row.group)) << i;
    EXPECT_EQ(Entry(i, u"sBPicture"), Value(u"")) << i;
    EXPECT_EQ(Entry(i, u"sBOnAction"), Value(row.macro)) << i;
  }
}

TEST_F(DefaultButtons, HaveTheirCaptionsAsTooltipsAlsoTheOneWithAKey) {
  Call(buttons, u"AddButtons");
  for (std::int32_t i = 1; i <= 7; ++i) {
    EXPECT_EQ(Entry(i, u"sBTooltipText"), Entry(i, u"sBCaption")) << i;
    EXPECT_EQ(Of(i, u"ToolTipText"), Of(i, u"Caption")) << i;
  }
  EXPECT_EQ(Of(7, u"ToolTipText"), Value(u"Tekstas 849"));
}

TEST_F(DefaultButtons, StandBehindTheButtonsOfTheList) {
  Call(list, u"Add", {3});
  for (int i = 0; i < 3; ++i) Call(GetObject(bar, u"Controls"), u"Add");
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Of(3, u"Tag"), Value(u""));
  EXPECT_EQ(Of(4, u"Tag"), Value(u"TagComment"));
  EXPECT_EQ(Of(10, u"Tag"), Value(u"TagHelp"));
}

TEST_F(DefaultButtons, TheFifthOneIsABoxOfWidth52) {
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Of(5, u"Type"), Value(std::int32_t{msoControlComboBox}));
  EXPECT_EQ(Of(5, u"Width"), Value(52));
  EXPECT_EQ(Of(5, u"Caption"), Value(u"Tekstas 847"));
}

TEST_F(DefaultButtons, PrintAndPreviewAreExcelsOwn) {
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Of(3, u"BuiltIn"), Value(true));
  EXPECT_EQ(Of(4, u"BuiltIn"), Value(true));
  EXPECT_EQ(Of(6, u"BuiltIn"), Value(false));
}

TEST_F(DefaultButtons, TheListsHelpMacroIsOfTheWorkbookWhoseMacrosRunAndTheButtonsOfTheSheets) {
  const ObjectPtr other = excel->AddWorkbook();
  excel->SetThisWorkbook(other);
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Entry(7, u"sBOnAction"), Value(u"Book2!cmdHelp"));
  EXPECT_EQ(Of(7, u"OnAction"), Value(u"Book1!cmdHelp"));
}

TEST_F(DefaultButtons, StayWithTheExcelOfTheirInitWhoeverConnectsLater) {
  ConnectAnother();
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Entry(7, u"sBOnAction"), Value(u"Book1!cmdHelp"));
}

TEST_F(DefaultButtons, AreFoundOnTheBarAndAreZeroWhenTheyAreNotThere) {
  for (const std::u16string_view index : kIndexes) EXPECT_EQ(Get(buttons, index), Value(0)) << ToUtf8(index);
  Call(buttons, u"AddButtons");
  std::vector<std::int32_t> indexes;
  for (const std::u16string_view index : kIndexes) indexes.push_back(Get(buttons, index).ToInt32());
  EXPECT_THAT(indexes, ElementsAre(1, 2, 4, 3, 6, 7));
  Call(Control(7), u"Delete");
  EXPECT_EQ(Get(buttons, u"cmdIndexHelp"), Value(0));
}

TEST_F(DefaultButtons, AreLookedForByTagExceptPrintAndPreview) {
  for (const std::u16string_view index : kIndexes) Get(buttons, index);
  EXPECT_THAT(
      trace.lines(),
      ElementsAre(R"(Bar.FindControl(Tag:="TagComment") -> Nothing)",
                  R"(Bar.FindControl(Tag:="TagFreeze") -> Nothing)", "Bar.FindControl(Id:=109) -> Nothing",
                  "Bar.FindControl(Id:=2521) -> Nothing", R"(Bar.FindControl(Tag:="TagExcel") -> Nothing)",
                  R"(Bar.FindControl(Tag:="TagHelp") -> Nothing)"));
}

TEST_F(DefaultButtons, AButtonOfTheSheetThatIsExcelsPrintIsFoundInstead) {
  Call(list, u"Add", {2});
  for (const std::int32_t id : {2521, 109}) Call(GetObject(bar, u"Controls"), u"Add", {1, id});
  Call(buttons, u"AddButtons");
  EXPECT_EQ(Get(buttons, u"cmdIndexPrint"), Value(1));
  EXPECT_EQ(Get(buttons, u"cmdIndexPrintP"), Value(2));
  EXPECT_EQ(Get(buttons, u"cmdIndexComment"), Value(3));
}

TEST_F(DefaultButtons, BeforeInitThereIsNothingToAddToOrLookAt) {
  const ObjectPtr fresh = LibraryTest::Create(u"CDefaultButtons");
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"AddButtons"); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Get(fresh, u"cmdIndexHelp"); }), kObjectNotSet);
  Call(fresh, u"Init", {observed_sheet, ObjectPtr(), list});
  EXPECT_EQ(RaisedBy([&] { Call(fresh, u"AddButtons"); }), kObjectNotSet);
  EXPECT_EQ(Get(list, u"TotalButtons"), Value(std::uint8_t{1})) << "the list comes before the bar";
}

TEST_F(DefaultButtons, ARefusalStopsThemThere) {
  Call(list, u"Add", {250});
  for (int i = 0; i < 250; ++i) Call(GetObject(bar, u"Controls"), u"Add");
  EXPECT_EQ(RaisedBy([&] { Call(buttons, u"AddButtons"); }), kOverflow);
  EXPECT_EQ(ControlCount(), 255);
  EXPECT_EQ(Of(255, u"Tag"), Value(u"Tag01"));
}

TEST_F(DefaultButtons, APropertyThatExcelRefusesStopsThemInTheMiddleOfARow) {
  // The controls and the bar's name, ten calls of row 1, eight of row 2, four of row 3.
  failure.Reset(2 + 10 + 8 + 4);
  EXPECT_EQ(RaisedBy([&] { Call(buttons, u"AddButtons"); }), kAutomationFailed);
  failure.Reset(0);
  EXPECT_TRUE(trace.lines().back().ends_with(".Tag = \"TagPrint\" ! 440 The call failed"))
      << trace.lines().back();
  EXPECT_EQ(ControlCount(), 3);
  EXPECT_EQ(Of(3, u"Caption"), Value(u"Tekstas 845"));
  EXPECT_EQ(Of(3, u"Tag"), Value(u""));
  EXPECT_EQ(Get(list, u"TotalButtons"), Value(std::uint8_t{3}));
  EXPECT_EQ(Entry(3, u"sBTag"), Value(u"TagPrint")) << "the list comes first";
  EXPECT_EQ(Entry(3, u"sBOnAction"), Value(u"")) << "the help button's macro comes last";
}

TEST_F(DefaultButtons, TakeTheirCaptionsWhenTheyAreCreated) {
  trace.Clear();
  const ObjectPtr fresh = LibraryTest::Create(u"CDefaultButtons");
  std::vector<std::string> expected;
  for (int n = 843; n <= 849; ++n) {
    expected.push_back("MessageResource.Text(" + std::to_string(n) + ") -> \"Tekstas " + std::to_string(n) +
                       "\"");
  }
  EXPECT_THAT(trace.lines(), ElementsAreArray(expected));
  host.texts.erase(849);
  const long live = Object::LiveCount();
  EXPECT_EQ(RaisedBy([&] { LibraryTest::Create(u"CDefaultButtons"); }), kSubscriptOutOfRange);
  EXPECT_EQ(Object::LiveCount(), live);
}

}  // namespace
}  // namespace qva
