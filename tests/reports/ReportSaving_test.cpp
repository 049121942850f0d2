// CReports: SaveDoc.
#include "platform/date.h"
#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A workbook of the project "Balansas" with the cells A1 (year 2024), A2 (quarter 3) and, by the name
/// "Saved", B1; the archive is "C:\Ataskaitos".
class Saving : public ReportTest {
 protected:
  Saving() {
    platform.files.SetFolder(u"C:\\Ataskaitos");
    for (const std::int32_t code : {1, 4, 5, 8}) host.texts[800 + code] = u"klaida " + NumberText(code);
    Put(GetObject(Workbook(), u"VBProject"), u"Name", u"Balansas");
    AddName(u"Saved", u"=Sheet1!$B$1");
    Set(u"A1", 2024);
    Set(u"A2", 3);
    StartOver();
  }

  /// Calls SaveDoc with a variable that holds `saved`; gives what it holds then.
  Value Save(const Value& year, const Value& part, const Value& full_date = Missing(),
             const Value& saved = false) {
    return SaveBy(reports, year, part, full_date, saved);
  }
  static Value SaveBy(const ObjectPtr& object, const Value& year, const Value& part, const Value& full_date,
                      const Value& saved) {
    Arguments arguments{year, part, saved, full_date};
    object->Invoke(Access::Call, u"SaveDoc", arguments);
    return arguments.positional[2];
  }
  Value SaveAsUsual() { return Save(TracedCells(u"A1", u"Year"), TracedCells(u"A2", u"Part")); }

  bool IsStored(std::u16string_view name) const {
    return excel->HasFile(u"C:\\Ataskaitos\\" + std::u16string(name));
  }
  Value WorkbookSaved() const { return Get(Workbook(), u"Saved"); }

  static constexpr std::u16string_view kReport = u"2024\\Balansas_2024_03.xls";
};

TEST_F(Saving, StoresTheWorkbookUnderProjectYearAndQuarter) {
  EXPECT_EQ(SaveAsUsual(), Value(true));
  EXPECT_TRUE(IsStored(kReport));
  EXPECT_EQ(Get(Workbook(), u"Name"), Value(u"Balansas_2024_03.xls"));
}

TEST_F(Saving, MarksTheCellAndTheWorkbookAndTellsTheFile) {
  SaveAsUsual();
  EXPECT_EQ(At(u"B1"), Value(true));
  EXPECT_EQ(WorkbookSaved(), Value(true));
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Boxes()[0].text, u"išsaugota: C:\\Ataskaitos\\2024\\Balansas_2024_03.xls");
  EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"Gerai"));
}

TEST_F(Saving, TheMarkIsInTheStoredFile) {
  SaveAsUsual();
  Call(Workbook(), u"Close", {false});
  Call(GetObject(excel, u"Workbooks"), u"Open", {u"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls"});
  EXPECT_EQ(At(u"B1"), Value(true));
}

const char* const kSaveDocCalls[] = {
    "Year.Value -> 2024",
    "Part.Value -> 3",
    "CreateObject(\"NVXCommonObjects.DataAccess\")",
    "DataAccess.Lookup(\"PathKey\", Nothing)",
    "DataAccess.Lookup(\"PathKey\", Nothing).Run(Array(\"BookRepSave\")) -> True",
    "DataAccess.Lookup(\"PathKey\", Nothing).Value -> \"C:\\Ataskaitos\"",
    "Application.ActiveWorkbook.VBProject",
    "Application.ActiveWorkbook.VBProject.Name -> \"Balansas\"",
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2024\\\"",
    "Application.FileSearch.FileName = \"Balansas_2024_03.xls\"",
    "Application.FileSearch.Execute() -> 0",
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2024\\\"",
    "Application.FileSearch.FileName = \"Balansas_2024_03.xls\"",
    "Application.FileSearch.Execute() -> 0",
    "Application.DisplayAlerts = False",
    "Application.ActiveWorkbook.SaveAs(\"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\")",
    "Application.DisplayAlerts = True",
    "Application.ActiveWorkbook.Names",
    "Application.ActiveWorkbook.Names.Item(\"Saved\")",
    "Application.ActiveWorkbook.Names.Item(\"Saved\").RefersToRange",
    "Application.ActiveWorkbook.Names.Item(\"Saved\").RefersToRange.Value = True",
    "Application.ActiveWorkbook.Save()",
    "MessageResource.Text(814) -> \"išsaugota: %0\"",
    "Application.ActiveWorkbook.FullName -> \"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\"",
    "CreateObject(\"QVA_Common.Message\")",
    "Message.Show(\"išsaugota: C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\", \"\", Array(\"Gerai\")) -> 1",
    "Application.ActiveWorkbook.Saved = True"};

TEST_F(Saving, TakesTwentyNineCalls) {
  SaveAsUsual();
  std::vector<std::string> lines = trace.lines();
  std::vector<std::string> expected(std::begin(kSaveDocCalls), std::end(kSaveDocCalls));
  // In which order an argument's parts are asked for is the language's own affair.
  std::sort(lines.begin() + 24, lines.begin() + 26);
  std::sort(expected.begin() + 24, expected.begin() + 26);
  EXPECT_EQ(lines, expected);
}

// --- The period

TEST_F(Saving, AFullDateGivesYearAndMonth) {
  Set(u"C1", DateFromParts(2024, 5, 15));
  EXPECT_EQ(Save(TracedCells(u"C1"), Nothing(), true), Value(true));
  EXPECT_TRUE(IsStored(u"2024\\Balansas_2024_05.xls"));
}

TEST_F(Saving, AFullDateMayBeANumberOrAText) {
  Set(u"C1", DateFromParts(2023, 12, 31).serial);
  Save(TracedCells(u"C1"), TracedCells(u"A2"), true);
  EXPECT_TRUE(IsStored(u"2023\\Balansas_2023_12.xls"));
  Set(u"C1", u"'2022.02.01");
  Save(TracedCells(u"C1"), TracedCells(u"A2"), true);
  EXPECT_TRUE(IsStored(u"2022\\Balansas_2022_02.xls"));
}

TEST_F(Saving, WithoutAQuarterItIsTheWholeYear) {
  EXPECT_EQ(Save(TracedCells(u"A1"), Nothing()), Value(true));
  EXPECT_TRUE(IsStored(u"2024\\Balansas_2024.xls"));
}

TEST_F(Saving, AnEmptyQuarterIsTheWholeYear) {
  EXPECT_EQ(Save(TracedCells(u"A1"), TracedCells(u"D9")), Value(true));
  EXPECT_TRUE(IsStored(u"2024\\Balansas_2024.xls"));
}

TEST_F(Saving, YearAndQuarterAreRoundedToWholeNumbers) {
  Set(u"A1", 2023.5);
  Set(u"A2", u"'2");
  Save(TracedCells(u"A1"), TracedCells(u"A2"));
  EXPECT_TRUE(IsStored(u"2024\\Balansas_2024_02.xls"));
}

TEST_F(Saving, WithoutAYearTheSaveIsRefused) {
  EXPECT_EQ(Save(Nothing(), TracedCells(u"A2"), Missing(), true), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"klaida 4"));
}

TEST_F(Saving, WithoutTheCellOfTheFullDateTheUserIsToldAndTheSaveIsRefused) {
  EXPECT_EQ(Save(Nothing(), TracedCells(u"A2"), true, true), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"tekstas 813", u"klaida 4"));
  EXPECT_EQ(WorkbookSaved(), Value(true));
}

// --- A report that is there

TEST_F(Saving, AnExistingReportIsReplacedWhenTheUserAgrees) {
  excel->AddFile(u"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls");
  EXPECT_EQ(SaveAsUsual(), Value(true));
  ASSERT_EQ(Boxes().size(), 2u);
  EXPECT_EQ(Boxes()[0].text, u"tekstas 840");
  EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"Taip", u"Ne"));
  EXPECT_EQ(At(u"B1"), Value(true));
}

TEST_F(Saving, AnExistingReportStaysWhenTheUserRefusesAndSavedStaysTrue) {
  excel->AddFile(u"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls");
  platform.message_box.Answer(2);
  Put(Workbook(), u"Saved", false);
  EXPECT_EQ(SaveAsUsual(), Value(true));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"tekstas 840"));
  EXPECT_EQ(Get(Workbook(), u"Name"), Value(u"Book1"));
  EXPECT_EQ(At(u"B1"), Value());
  EXPECT_EQ(WorkbookSaved(), Value(false)) << "the last step is not reached";
}

TEST_F(Saving, ASecondSaveOfThePeriodAsksAndOneOfAnotherDoesNot) {
  SaveAsUsual();
  Set(u"A2", 4);
  SaveAsUsual();
  Set(u"A2", 3);
  platform.message_box.Answer(2);
  SaveAsUsual();
  ASSERT_EQ(Boxes().size(), 3u);
  EXPECT_EQ(Boxes()[2].text, u"tekstas 840");
}

// --- Failures

TEST_F(Saving, ARefusedSaveIsToldAndTheWorkbookCountsAsSaved) {
  Set(u"A1", 1969);
  Set(u"B1", false);
  EXPECT_EQ(Save(TracedCells(u"A1"), TracedCells(u"A2"), Missing(), true), Value(false));
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Boxes()[0].text, u"klaida 4");
  EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"Gerai"));
  EXPECT_EQ(At(u"B1"), Value(false));
  EXPECT_EQ(WorkbookSaved(), Value(true));
}

TEST_F(Saving, AnArchiveThatIsMissingIsToldWithItsFolder) {
  host.path_keys[u"BookRepSave"] = u"D:\\Nera";
  EXPECT_EQ(SaveAsUsual(), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"klaida 8\r\nD:\\Nera\\2024\\"));
}

TEST_F(Saving, AProjectWithoutANameIsRefused) {
  Put(GetObject(Workbook(), u"VBProject"), u"Name", u" ");
  EXPECT_EQ(SaveAsUsual(), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"klaida 1"));
}

TEST_F(Saving, AFileThatExcelCannotWriteIsToldWithoutATextAndLeavesAlertsOff) {
  excel->AddFile(u"D:\\Balansas_2024_03.xls");
  const ObjectPtr mine = Workbook();
  Call(GetObject(excel, u"Workbooks"), u"Open", {u"D:\\Balansas_2024_03.xls"});
  EXPECT_EQ(Save(TracedCells(u"IV1"), Nothing(), true, true), Value(false)) << "another workbook's cells";
  Call(mine, u"Activate");
  platform.message_box = {};
  EXPECT_EQ(SaveAsUsual(), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"")) << "code 8 is set without its description";
  EXPECT_EQ(Get(excel, u"DisplayAlerts"), Value(false));
  EXPECT_EQ(WorkbookSaved(), Value(true));
}

TEST_F(Saving, AYearThatIsNoNumberIsShownAndLeavesSavedAsItWas) {
  Set(u"A1", u"metai");
  for (const bool saved : {true, false}) {
    EXPECT_EQ(Save(TracedCells(u"A1"), TracedCells(u"A2"), Missing(), saved), Value(saved));
  }
  EXPECT_THAT(BoxTexts(),
              ElementsAre(StandardDescription(kTypeMismatch), StandardDescription(kTypeMismatch)));
}

TEST_F(Saving, AYearBeyond16BitsIsShown) {
  Set(u"A1", 40000);
  EXPECT_EQ(SaveAsUsual(), Value(false));
  EXPECT_THAT(BoxTexts(), ElementsAre(StandardDescription(kOverflow)));
}

TEST_F(Saving, AWorkbookWithoutTheCellSavedIsStoredAndTheErrorShown) {
  Call(Name(u"Saved"), u"Delete");
  EXPECT_EQ(SaveAsUsual(), Value(true));
  EXPECT_TRUE(IsStored(kReport));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"Application-defined or object-defined error"));
}

TEST_F(Saving, BeforeInitTheMissingWorkbookIsShown) {
  const ObjectPtr fresh = Create(u"CReports");
  EXPECT_EQ(SaveBy(fresh, TracedCells(u"A1"), TracedCells(u"A2"), Missing(), false), Value(true));
  EXPECT_THAT(BoxTexts(), ElementsAre(StandardDescription(kObjectNotSet)));
}

// Each failing call: an error is shown and ends it there; one of the save itself (calls 17 to 19) is told as
// a refused save. Saved is True from the third call on, and False for a refused save.
TEST_F(Saving, EndsAsAgreedWhicheverCallFails) {
  const long live = Object::LiveCount();
  constexpr long kCalls = static_cast<long>(std::size(kSaveDocCalls));
  const ObjectPtr kept = Workbook();
  for (long n = 1; n <= kCalls + 1; ++n) {
    SCOPED_TRACE(n <= kCalls ? kSaveDocCalls[n - 1] : "none");
    Put(excel, u"DisplayAlerts", false);
    Call(kept, u"SaveAs", {u"C:\\Darbinis.xls"});
    Set(u"B1", Value());
    Put(excel, u"DisplayAlerts", true);
    TheStartUpState().data_access = {};
    platform.message_box = {};
    const ObjectPtr fresh = Create(u"CReports");
    Call(fresh, u"Init", {u"Balansas"});
    const Value year = TracedCells(u"A1");
    const Value part = TracedCells(u"A2");
    Set(u"A1", static_cast<std::int32_t>(2000 + n));  // a report of its own each time
    Put(Workbook(), u"Saved", false);
    StartOver(n);
    Value saved;
    EXPECT_EQ(RaisedBy([&] { saved = SaveBy(fresh, year, part, Missing(), false); }), 0);
    EXPECT_EQ(failure.has_failed(), n <= kCalls);
    failure.Reset(0);

    const bool save_failed = n >= 17 && n <= 19;
    EXPECT_EQ(saved, Value(n > 2 && !save_failed));
    EXPECT_EQ(
        BoxTexts(),
        std::vector<std::u16string>(
            save_failed   ? std::vector<std::u16string>{u""}
            : n == kCalls ? std::vector<std::u16string>{u"išsaugota: " + Get(kept, u"FullName").ToText(),
                                                        u"The call failed"}
            : n > kCalls  ? std::vector<std::u16string>{u"išsaugota: " + Get(kept, u"FullName").ToText()}
                          : std::vector<std::u16string>{u"The call failed"}));
    EXPECT_EQ(IsStored(NumberText(2000 + n) + u"\\Balansas_" + NumberText(2000 + n) + u"_03.xls"), n >= 19);
    EXPECT_EQ(At(u"B1"), n >= 24 ? Value(true) : Value());
    EXPECT_EQ(Get(excel, u"DisplayAlerts"), Value(n != 18 && n != 19));
    EXPECT_EQ(WorkbookSaved(), Value(n >= 17 && n != 24)) << "saved by the last step or by Excel";
  }
  TheStartUpState().data_access = {};
  EXPECT_EQ(Object::LiveCount(), live);
}

const char* const kReplaceCalls[] = {
    "Year.Value -> 2024",
    "Part.Value -> 3",
    "CreateObject(\"NVXCommonObjects.DataAccess\")",
    "DataAccess.Lookup(\"PathKey\", Nothing)",
    "DataAccess.Lookup(\"PathKey\", Nothing).Run(Array(\"BookRepSave\")) -> True",
    "DataAccess.Lookup(\"PathKey\", Nothing).Value -> \"C:\\Ataskaitos\"",
    "Application.ActiveWorkbook.VBProject",
    "Application.ActiveWorkbook.VBProject.Name -> \"Balansas\"",
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2024\\\"",
    "Application.FileSearch.FileName = \"Balansas_2024_03.xls\"",
    "Application.FileSearch.Execute() -> 1",
    "MessageResource.Text(840) -> \"tekstas 840\"",
    "CreateObject(\"QVA_Common.Message\")",
    "Message.Show(\"tekstas 840\", \"\", Array(\"Taip\", \"Ne\")) -> 1",
    "Application.FileSearch",
    "Application.FileSearch.LookIn = \"C:\\Ataskaitos\\2024\\\"",
    "Application.FileSearch.FileName = \"Balansas_2024_03.xls\"",
    "Application.FileSearch.Execute() -> 1",
    "Application.DisplayAlerts = False",
    "Application.ActiveWorkbook.SaveAs(\"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\")",
    "Application.DisplayAlerts = True",
    "Application.ActiveWorkbook.Names",
    "Application.ActiveWorkbook.Names.Item(\"Saved\")",
    "Application.ActiveWorkbook.Names.Item(\"Saved\").RefersToRange",
    "Application.ActiveWorkbook.Names.Item(\"Saved\").RefersToRange.Value = True",
    "Application.ActiveWorkbook.Save()",
    "MessageResource.Text(814) -> \"išsaugota: %0\"",
    "Application.ActiveWorkbook.FullName -> \"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\"",
    "Message.Show(\"išsaugota: C:\\Ataskaitos\\2024\\Balansas_2024_03.xls\", \"\", Array(\"Gerai\")) -> 1",
    "Application.ActiveWorkbook.Saved = True"};

/// SaveDoc with a failing call, by an instance and a library that have not saved yet.
class FailingSave : public Saving {
 protected:
  /// What a call left behind.
  struct Outcome {
    Value saved;
    std::vector<std::u16string> boxes;
    std::u16string workbook;
    Value cell;
    Value alerts;
    Value workbook_saved;
    bool operator==(const Outcome&) const = default;
  };
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "Saved " << testing::PrintToString(outcome.saved) << ", boxes";
    for (const std::u16string& box : outcome.boxes) *out << " [" << ToUtf8(box) << "]";
    *out << ", workbook " << ToUtf8(outcome.workbook) << ", cell " << testing::PrintToString(outcome.cell)
         << ", alerts " << testing::PrintToString(outcome.alerts) << ", workbook saved "
         << testing::PrintToString(outcome.workbook_saved);
  }

  /// Begins with the workbook "Darbinis.xls", an unsaved change and Saved = False; `answer` is the button of
  /// the first box. Call 0 lets all calls work.
  Outcome SaveFailingAt(long failing_call, std::int32_t answer, std::int32_t year) {
    const ObjectPtr kept = Workbook();
    Put(excel, u"DisplayAlerts", false);
    Call(kept, u"SaveAs", {u"C:\\Darbinis.xls"});
    Set(u"A1", year);
    Set(u"B1", Value());
    Put(excel, u"DisplayAlerts", true);
    TheStartUpState().data_access = {};
    platform.message_box = {};
    platform.message_box.Answer(answer);
    const ObjectPtr fresh = Create(u"CReports");
    Call(fresh, u"Init", {u"Balansas"});
    const Value year_cell = TracedCells(u"A1", u"Year");
    const Value part_cell = TracedCells(u"A2", u"Part");
    Put(kept, u"Saved", false);
    StartOver(failing_call);
    Outcome outcome;
    EXPECT_EQ(RaisedBy([&] { outcome.saved = SaveBy(fresh, year_cell, part_cell, Missing(), false); }), 0);
    EXPECT_EQ(failure.has_failed(), failing_call > 0);
    failure.Reset(0);
    outcome.boxes = BoxTexts();
    outcome.workbook = Get(kept, u"Name").ToText();
    outcome.cell = At(u"B1");
    outcome.alerts = Get(excel, u"DisplayAlerts");
    outcome.workbook_saved = WorkbookSaved();
    return outcome;
  }

  static constexpr std::int32_t kYes = 1;
  static constexpr std::int32_t kNo = 2;
  const std::u16string file = u"Balansas_2024_03.xls";
  const std::u16string question = u"tekstas 840";
  const std::u16string error = u"The call failed";
  const std::u16string told = u"išsaugota: C:\\Ataskaitos\\2024\\Balansas_2024_03.xls";
};

// Calls 1 to 12 find the report, 13 to 15 ask, 16 to 19 find it again, 20 to 22 save, 23 to 31 finish.
TEST_F(FailingSave, OverAnExistingReportEndsAsAgreedWhicheverCallFails) {
  excel->AddFile(u"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls");
  constexpr long kCalls = static_cast<long>(std::size(kReplaceCalls));
  EXPECT_EQ(SaveFailingAt(0, kYes, 2024), (Outcome{true, {question, told}, file, true, true, true}));
  std::vector<std::string> lines = trace.lines();
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(kCalls));
  std::sort(lines.begin() + 27, lines.begin() + 29);  // in either order, as above
  std::vector<std::string> expected_lines(std::begin(kReplaceCalls), std::end(kReplaceCalls));
  std::sort(expected_lines.begin() + 27, expected_lines.begin() + 29);
  EXPECT_EQ(lines, expected_lines);

  for (long n = 1; n <= kCalls; ++n) {
    SCOPED_TRACE(kReplaceCalls[n - 1]);
    Outcome expected{.saved = n > 2,
                     .boxes = {error},
                     .workbook = u"Darbinis.xls",
                     .cell = Value(),
                     .alerts = true,
                     .workbook_saved = false};
    if (n > 15) expected.boxes = {question, error};
    if (n >= 20 && n <= 22) {  // a refused save: no error, and the workbook counts as saved
      expected.saved = false;
      expected.boxes = {question, u""};
      expected.alerts = n == 20;
      expected.workbook_saved = true;
    }
    if (n >= 22) expected.workbook = file;
    if (n >= 23) expected.workbook_saved = true;  // by Excel, as it was stored …
    if (n >= 27) expected.cell = true;
    if (n == 27) expected.workbook_saved = false;  // … and as the mark could not be
    if (n == 31) expected.boxes = {question, told, error};
    EXPECT_EQ(SaveFailingAt(n, kYes, 2024), expected);
  }
  TheStartUpState().data_access = {};
}

TEST_F(FailingSave, ThatTheUserRefusesEndsAsAgreedWhicheverCallFails) {
  excel->AddFile(u"C:\\Ataskaitos\\2024\\Balansas_2024_03.xls");
  for (long n = 0; n <= 15; ++n) {
    SCOPED_TRACE(n);
    EXPECT_EQ(SaveFailingAt(n, kNo, 2024),
              (Outcome{n == 0 || n > 2, {n == 0 ? question : error}, u"Darbinis.xls", Value(), true, false}));
    if (n == 0) {
      EXPECT_EQ(trace.lines().size(), 15u);
    }
  }
  TheStartUpState().data_access = {};
}

// A year that the archive does not take: calls 1 to 8 as ever, 9 and 10 the description, of the question for
// the report and of the save; 11 and 12 tell it; 13 marks the workbook.
TEST_F(FailingSave, ThatIsRefusedEndsAsAgreedWhicheverCallFails) {
  const std::u16string refusal = u"klaida 4";
  EXPECT_EQ(SaveFailingAt(0, kYes, 1969), (Outcome{false, {refusal}, u"Darbinis.xls", Value(), true, true}));
  EXPECT_THAT(std::vector<std::string>(trace.lines().begin() + 8, trace.lines().end()),
              ElementsAre("MessageResource.Text(804) -> \"klaida 4\"",
                          "MessageResource.Text(804) -> \"klaida 4\"", "CreateObject(\"QVA_Common.Message\")",
                          "Message.Show(\"klaida 4\", \"\", Array(\"Gerai\")) -> 1",
                          "Application.ActiveWorkbook.Saved = True"));
  for (long n = 1; n <= 13; ++n) {
    SCOPED_TRACE(n);
    const bool refused = n > 10;  // the refusal is known; telling or marking it fails
    std::vector<std::u16string> boxes = {error};
    if (n == 13) boxes = {refusal, error};
    EXPECT_EQ(SaveFailingAt(n, kYes, 1969),
              (Outcome{n > 2 && !refused, boxes, u"Darbinis.xls", Value(), true, false}));
  }
  TheStartUpState().data_access = {};
}

}  // namespace
}  // namespace qva
