// CReports: what the status bar tells of operations that take long.

#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class LongReports : public ReportTest {
 protected:
  LongReports() {
    AddName(u"Print", u"=Sheet1!$A$1:$B$9");
    platform.files.SetFolder(u"C:\\Ataskaitos");
    Put(GetObject(Workbook(), u"VBProject"), u"Name", u"Balansas");
    AddName(u"Saved", u"=Sheet1!$D$1");
    Set(u"E1", 2024);
    StartOver();
  }

  /// A1:A300 with formulas of texts that are frozen one by one.
  void FillFormulas() {
    for (int row = 1; row <= 300; ++row) Set(u"A" + NumberText(row), u"=\"007\"");
  }
  void Clear() { Call(reports, u"ClearFormulas", {TracedCells(u"A1:A300")}); }
  void Print(bool ask, std::int32_t pages) {
    Call(reports, u"Spauzd", {Traced(Sheet(), u"Sheet"), true, ask, pages});
  }
  void SaveDoc() {
    Arguments arguments{TracedCells(u"E1", u"Year"), Nothing(), false, Missing()};
    reports->Invoke(Access::Call, u"SaveDoc", arguments);
  }

  /// The calls that have to do with the status bar.
  std::vector<std::string> Bar() const { return Only("StatusBar"); }
  std::vector<std::string> Only(std::string_view part) const {
    std::vector<std::string> lines;
    for (const std::string& line : trace.lines()) {
      if (line.find(part) != line.npos) lines.push_back(line);
    }
    return lines;
  }
  /// The trace's lines but for the status bar's.
  std::vector<std::string> OtherCalls() const {
    std::vector<std::string> lines = trace.lines();
    std::erase_if(lines, [](const std::string& line) { return line.find("StatusBar") != line.npos; });
    return lines;
  }
};

TEST_F(LongReports, ClearFormulasTellsHowManyAreDoneOnceASecond) {
  FillFormulas();
  call_time.PerCall(milliseconds(3));
  Clear();
  const std::vector<std::string> bar = Bar();
  ASSERT_GE(bar.size(), 4u);
  EXPECT_EQ(bar.front(), "Application.StatusBar -> False");
  EXPECT_THAT(bar[1], HasSubstr("= \"Formulės keičiamos reikšmėmis: "));
  EXPECT_THAT(bar[1], HasSubstr(" iš 300\""));
  EXPECT_EQ(bar.back(), "Application.StatusBar = False");
  const auto seconds = platform.clock.Running() / milliseconds(1000);
  EXPECT_LE(static_cast<std::int64_t>(bar.size()), seconds + 2);
}

TEST_F(LongReports, ClearFormulasCountsTheCellsOfBlocksSingleOnesAndArrays) {
  Set(u"A1", u"=\"007\"");
  Put(Cells(u"B1:C3"), u"FormulaArray", u"=1+1");
  Put(Cells(u"D1:D2"), u"FormulaArray", u"=1+1");
  Set(u"E1:E2", u"=1+1");
  call_time.PerCall(milliseconds(1000));
  Call(reports, u"ClearFormulas", {TracedCells(u"A1:E3")});
  for (const char* done : {"0 iš 11", "2 iš 11", "3 iš 11", "9 iš 11"}) {
    EXPECT_THAT(Bar(), Contains(HasSubstr(std::string("Formulės keičiamos reikšmėmis: ") + done)));
  }
}

TEST_F(LongReports, TheOtherCallsOfClearFormulasStayTheSame) {
  FillFormulas();
  Clear();
  EXPECT_THAT(Bar(), IsEmpty()) << "no time has passed";
  const std::vector<std::string> calls = trace.lines();
  FillFormulas();
  StartOver();
  call_time.PerCall(milliseconds(3));
  Clear();
  EXPECT_EQ(OtherCalls(), calls);
}

TEST_F(LongReports, ClearFormulasTellsThatItLooksForFormulas) {
  call_time.PerCall(milliseconds(400));
  Clear();
  EXPECT_THAT(Bar(),
              ElementsAre("Application.StatusBar -> False", "Application.StatusBar = \"Ieškoma formulių\"",
                          "Application.StatusBar = False"));
}

TEST_F(LongReports, ClearFormulasThatFailsPutsTheMacrosTextBack) {
  FillFormulas();
  Put(excel, u"StatusBar", u"Ataskaita rengiama");
  StartOver(800);
  call_time.PerCall(milliseconds(3));
  EXPECT_EQ(RaisedBy([&] { Clear(); }), kAutomationFailed);
  EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"Ataskaita rengiama\""));
  EXPECT_EQ(Get(excel, u"StatusBar"), Value(u"Ataskaita rengiama"));
}

TEST_F(LongReports, PrintingIsTold) {
  call_time.PerCall(milliseconds(80));
  Print(false, 0);
  EXPECT_THAT(Bar(), ElementsAre("Application.StatusBar -> False", "Application.StatusBar = \"Spausdinama\"",
                                 "Application.StatusBar = False"));
}

TEST_F(LongReports, PagesAreToldAndTheBarIsExcelsWhileTheUserIsAsked) {
  platform.message_box.Answer(2);
  call_time.PerCall(milliseconds(80));
  std::vector<Value> bars;
  platform.message_box.on_show = [&] { bars.push_back(Get(excel, u"StatusBar")); };
  Print(true, 3);
  EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"Spausdinami puslapiai: 0 iš 3\""));
  EXPECT_THAT(Bar(), Contains("Application.StatusBar = \"Spausdinami puslapiai: 2 iš 3\""));
  EXPECT_THAT(Bar(), Not(Contains(HasSubstr("3 iš 3")))) << "the last one is not printed yet";
  EXPECT_THAT(bars, ElementsAre(Value(false), Value(false), Value(false)));
  EXPECT_EQ(Get(excel, u"StatusBar"), Value(false));
}

TEST_F(LongReports, AnAnswerThatTakesLongIsNoPrinting) {
  platform.message_box.on_show = [&] { platform.clock.Advance(milliseconds(60000)); };
  Print(true, 1);
  EXPECT_THAT(Bar(), IsEmpty());
}

TEST_F(LongReports, SavingIsToldWhenTheFirstSaveTookLong) {
  call_time.PerCall(milliseconds(500));
  bool is_own = false;
  platform.message_box.on_show = [&] { is_own = Get(excel, u"StatusBar") == Value(false); };
  SaveDoc();
  EXPECT_TRUE(is_own) << "while the message is shown";
  EXPECT_THAT(Bar(), ElementsAre("Application.StatusBar -> False",
                                 "Application.StatusBar = \"Ataskaita įrašoma archyve\"",
                                 "Application.StatusBar = False"));
}

TEST_F(LongReports, ASaveThatFailsPutsTheBarBack) {
  call_time.PerCall(milliseconds(500));
  SaveDoc();
  const auto calls = static_cast<long>(trace.lines().size());
  for (long call = 1; call <= calls; ++call) {
    StartOver(call);
    SaveDoc();
    const std::vector<std::string> bar = Bar();
    // Where the call that hands the bar back is itself the one that fails, nothing can.
    const bool refused = !bar.empty() && bar.back().find(" ! ") != std::string::npos;
    if (!refused) {
      EXPECT_EQ(Get(excel, u"StatusBar"), Value(false)) << "call " << call;
    }
    Put(excel, u"StatusBar", false);
  }
}

}  // namespace
}  // namespace qva
