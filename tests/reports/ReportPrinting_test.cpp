// CReports: Spauzd.
#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

using memory::PrintJob;
using testing::ElementsAre;
using testing::IsEmpty;

/// The first sheet is to be printed by the hidden name "Print", A3:C20.
class Printing : public ReportTest {
 protected:
  Printing() {
    AddName(u"Print", u"=Sheet1!$A$3:$C$20");
    Put(Name(u"Print"), u"Visible", false);
  }

  void Print(const ObjectPtr& sheet, const Value& out, const Value& ask = Missing(),
             const Value& pages = Missing()) {
    Call(reports, u"Spauzd", {Traced(sheet, u"Sheet"), out, ask, pages});
  }
  const std::vector<PrintJob>& Jobs() const { return excel->PrintJobs(); }
  static PrintJob Whole() { return {.sheet = u"Sheet1", .print_area = u"$A$3:$C$20"}; }
  static PrintJob Preview() { return {.sheet = u"Sheet1", .print_area = u"$A$3:$C$20", .is_preview = true}; }
  static PrintJob Page(std::int32_t page) {
    return {.sheet = u"Sheet1", .print_area = u"$A$3:$C$20", .from = page, .to = page};
  }
  std::int32_t Visibility(std::int32_t sheet = 1) const { return Get(Sheet(sheet), u"Visible").ToInt32(); }
  bool IsVisible(std::u16string_view name) const { return Get(Name(name), u"Visible").ToBoolean(); }

  static constexpr std::int32_t kPageByPage = 2;
};

TEST_F(Printing, PrintsTheWholeSheetWithinTheRangePrint) {
  Print(Sheet(), true);
  EXPECT_THAT(Jobs(), ElementsAre(Whole()));
  EXPECT_THAT(BoxTexts(), IsEmpty());
}

TEST_F(Printing, PrintsAllAreasOfTheRangePrint) {
  AddName(u"Print", u"=Sheet1!$A$3:$B$4,Sheet1!$D$6");
  Print(Sheet(), true);
  EXPECT_THAT(Jobs(), ElementsAre(PrintJob{.sheet = u"Sheet1", .print_area = u"$A$3:$B$4,$D$6"}));
  EXPECT_THAT(BoxTexts(), IsEmpty());
}

TEST_F(Printing, TakesEighteenCalls) {
  Print(Sheet(), true);
  EXPECT_THAT(
      trace.lines(),
      ElementsAre("Sheet.Visible -> -1", "Sheet.Parent", "Application.ActiveWorkbook.Names",
                  "Application.ActiveWorkbook.Names.Item(\"Print\")",
                  "Application.ActiveWorkbook.Names.Item(\"Print\").Visible = True", "Sheet.PageSetup",
                  "Sheet.Range(\"Print\")", "Sheet.Range(\"Print\").Address -> \"$A$3:$C$20\"",
                  "Sheet.PageSetup.PrintArea = \"$A$3:$C$20\"",
                  "Application.ActiveWorkbook.Names.Item(\"Print\").Visible = False", "Sheet.Names",
                  "Sheet.Names.Item(\"Print_Area\")", "Sheet.Names.Item(\"Print_Area\").Visible = True",
                  "Sheet.Names.Item(\"Print_Area\").Visible = True", "Sheet.PrintOut()",
                  "Sheet.Names.Item(\"Print_Area\").Visible = False", "Sheet.DisplayPageBreaks = False",
                  "Sheet.Visible = -1"));
}

TEST_F(Printing, PreviewsAndNeverAsks) {
  Print(Sheet(), false, true, 5);
  EXPECT_THAT(Jobs(), ElementsAre(Preview()));
  EXPECT_THAT(BoxTexts(), IsEmpty());
}

TEST_F(Printing, HidesTheNamesAndPageBreaksAfterwards) {
  Put(Sheet(), u"DisplayPageBreaks", true);
  for (const bool out : {true, false}) {
    Put(Name(u"Print"), u"Visible", true);
    Print(Sheet(), out);
    EXPECT_FALSE(IsVisible(u"Print"));
    EXPECT_FALSE(IsVisible(u"Sheet1!Print_Area"));
    EXPECT_EQ(Get(Sheet(), u"DisplayPageBreaks"), Value(false));
  }
}

TEST_F(Printing, TakesTheRangePrintAnewEachTime) {
  Print(Sheet(), true);
  AddName(u"Print", u"=Sheet1!$B$1:$B$2");
  Print(Sheet(), true);
  EXPECT_EQ(Jobs()[1].print_area, u"$B$1:$B$2");
}

TEST_F(Printing, GivesAHiddenSheetItsVisibilityBack) {
  for (const std::int32_t visibility : {xlSheetHidden, xlSheetVeryHidden}) {
    Put(Sheet(), u"Visible", visibility);
    Print(Sheet(), true);
    EXPECT_EQ(Visibility(), visibility);
  }
  EXPECT_THAT(Jobs(), ElementsAre(Whole(), Whole()));
}

// --- Without a print area

TEST_F(Printing, ASheetWithoutAPrintAreaIsNotPrintedAndTheUserIsTold) {
  Put(Sheet(), u"DisplayPageBreaks", true);
  Call(Name(u"Print"), u"Delete");
  Print(Sheet(), true, true, 3);
  EXPECT_THAT(Jobs(), IsEmpty());
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Boxes()[0].text, u"tekstas 815");
  EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"Gerai"));
  EXPECT_EQ(Get(Sheet(), u"DisplayPageBreaks"), Value(true)) << "the last step is skipped";
}

TEST_F(Printing, AHiddenSheetWithoutAPrintAreaStaysVisible) {
  Put(Sheet(2), u"Visible", xlSheetHidden);
  Print(Sheet(2), true);
  EXPECT_THAT(BoxTexts(), ElementsAre(u"tekstas 815"));
  EXPECT_EQ(Visibility(2), xlSheetVisible);
}

TEST_F(Printing, AnOlderPrintAreaServesWhereTheRangePrintIsMissing) {
  Put(GetObject(Sheet(), u"PageSetup"), u"PrintArea", u"$A$1:$B$2");
  Call(Name(u"Print"), u"Delete");
  Print(Sheet(), true);
  EXPECT_THAT(Jobs(), ElementsAre(PrintJob{.sheet = u"Sheet1", .print_area = u"$A$1:$B$2"}));
}

TEST_F(Printing, ARangePrintOfAnotherSheetIsHiddenAgain) {
  Put(Name(u"Print"), u"Visible", true);
  Print(Sheet(2), true);
  EXPECT_FALSE(IsVisible(u"Print"));
  EXPECT_THAT(Jobs(), IsEmpty());
}

// --- Page by page

TEST_F(Printing, AsksHowToPrintWithTheTwoChoicesAsButtons) {
  Print(Sheet(), true, true, 3);
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Boxes()[0].text, u"tekstas 816");
  EXPECT_EQ(Boxes()[0].title, u"");
  EXPECT_THAT(Boxes()[0].captions, ElementsAre(u"tekstas 817", u"tekstas 818"));
  EXPECT_THAT(Jobs(), ElementsAre(Whole())) << "the first choice";
}

TEST_F(Printing, PageByPageEachFurtherPageIsAnnounced) {
  platform.message_box.Answer(kPageByPage);
  Print(Sheet(), true, true, 3);
  EXPECT_THAT(Jobs(), ElementsAre(Page(1), Page(2), Page(3)));
  EXPECT_THAT(BoxTexts(), ElementsAre(u"tekstas 816", u"2 puslapis", u"3 puslapis"));
  EXPECT_EQ(Boxes()[1].title, u"tekstas 820");
  EXPECT_THAT(Boxes()[1].captions, ElementsAre(u"Gerai"));
}

TEST_F(Printing, OneOrNoPageStillPrintsPage1WithoutAPrompt) {
  for (const Value& pages : {Value(1), Value(0), Value(Missing())}) {
    platform.message_box = {};
    platform.message_box.Answer(kPageByPage);
    Print(Sheet(), true, true, pages);
    EXPECT_EQ(Jobs().back(), Page(1));
    EXPECT_THAT(BoxTexts(), ElementsAre(u"tekstas 816"));
  }
  EXPECT_EQ(Jobs().size(), 3u);
}

TEST_F(Printing, TheMostPagesAre255) {
  platform.message_box.Answer(kPageByPage);
  Print(Sheet(), true, true, 255);
  EXPECT_EQ(Jobs().size(), 255u);
  EXPECT_EQ(Jobs().back(), Page(255));
  EXPECT_EQ(RaisedBy([&] { Print(Sheet(), true, true, 256); }), kOverflow);
}

TEST_F(Printing, OutDecidesByItsTruthAndAskingIsLeftOutAsFalse) {
  Print(Sheet(), 1);
  Print(Sheet(), true, false, 7);
  EXPECT_THAT(Jobs(), ElementsAre(Whole(), Whole()));
  EXPECT_THAT(BoxTexts(), IsEmpty());
}

// --- Errors

TEST_F(Printing, NothingInPlaceOfASheetIsShownAsAnError) {
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"Spauzd", {Nothing(), true}); }), 0);
  EXPECT_THAT(BoxTexts(), ElementsAre(StandardDescription(kObjectNotSet)));
}

TEST_F(Printing, AnErrorWithoutANumberIsNotShown) {
  failure = CallFailure(15, AutomationError(0, u"Excel", u"nothing"));
  Print(Sheet(), true);
  EXPECT_TRUE(failure.has_failed());
  EXPECT_THAT(BoxTexts(), IsEmpty());
}

/// The ways to print: their own calls, which stand between the two steps that all have in common, and after
/// how many of these calls each job is there.
struct Way {
  const char* name;
  bool out;
  bool page_by_page;
  long calls;
  std::vector<long> job_calls;
};

// Calls with a hidden sheet: 1 and 2 its visibility; 3 to 11 the copy of the range, errors ignored (5 finds
// the name "Print", 6 shows and 11 hides it, 10 sets the print area); 12 to 14 the check; 15 shows the name
// "Print_Area" again; then the way's own calls; and at last the name is hidden, the page breaks are turned
// off and the sheet is hidden.
TEST_F(Printing, EndsAsAgreedWhicheverCallFails) {
  const Way ways[] = {
      {"all at once", true, false, 1, {1}},
      {"preview", false, false, 1, {1}},
      // Texts 816 to 818, the message object, the question, page 1, 819, 820, the prompt, page 2.
      {"page by page", true, true, 10, {6, 10}}};
  constexpr long kBefore = 15;
  for (const Way& way : ways) {
    SCOPED_TRACE(way.name);
    const long area_hidden = kBefore + way.calls + 1;
    const long breaks_off = area_hidden + 1;
    const long calls = area_hidden + 2;
    const long live = Object::LiveCount();
    for (long n = 1; n <= calls + 1; ++n) {
      SCOPED_TRACE(n);
      platform.message_box = {};
      platform.message_box.Answer(kPageByPage);
      const std::size_t printed = Jobs().size();
      Put(GetObject(Sheet(), u"PageSetup"), u"PrintArea", u"$A$1");
      Put(Name(u"Print"), u"Visible", true);
      Put(Name(u"Sheet1!Print_Area"), u"Visible", false);
      Put(Sheet(), u"DisplayPageBreaks", true);
      Put(Sheet(), u"Visible", xlSheetHidden);
      const ObjectPtr fresh = Create(u"CReports");
      const ObjectPtr sheet = Traced(Sheet(), u"Sheet");
      StartOver(n);
      EXPECT_EQ(RaisedBy([&] { Call(fresh, u"Spauzd", {sheet, way.out, way.page_by_page, 2}); }), 0);
      EXPECT_EQ(failure.has_failed(), n <= calls);
      failure.Reset(0);

      const bool copy_failed = n >= 3 && n <= 11;
      const bool check_failed = n >= 12 && n <= 14;
      const bool ended_by_error = n <= 2 || (n >= kBefore && n <= calls);
      const std::u16string shown = Boxes().empty() ? u"" : Boxes().back().text;
      if (ended_by_error || check_failed) {
        EXPECT_EQ(shown, ended_by_error ? u"The call failed" : u"tekstas 815");
        EXPECT_THAT(Boxes().back().captions, ElementsAre(u"Gerai"));
      } else {
        EXPECT_EQ(shown, way.page_by_page ? u"2 puslapis" : u"");
      }

      std::vector<PrintJob> expected;
      for (const long job_call : way.job_calls) {
        if (n <= 2 || check_failed || (n >= kBefore && n <= kBefore + job_call)) continue;
        PrintJob job = way.page_by_page ? Page(static_cast<std::int32_t>(expected.size()) + 1) : Whole();
        job.is_preview = !way.out;
        if (n >= 7 && n <= 10) job.print_area = u"$A$1";
        expected.push_back(job);
      }
      EXPECT_THAT(std::vector<PrintJob>(Jobs().begin() + static_cast<std::ptrdiff_t>(printed), Jobs().end()),
                  testing::ElementsAreArray(expected));

      EXPECT_EQ(IsVisible(u"Print"), n <= 5 || n == 11) << "as it was where it was not found or not hidden";
      EXPECT_EQ(IsVisible(u"Sheet1!Print_Area"), n >= kBefore && n <= area_hidden);
      EXPECT_EQ(Get(Sheet(), u"DisplayPageBreaks"), Value(n <= 2 || (!copy_failed && n <= breaks_off)));
      EXPECT_EQ(Visibility(), n <= 2 || copy_failed || n > calls ? xlSheetHidden : xlSheetVisible);
    }
    EXPECT_EQ(Object::LiveCount(), live);
  }
}

}  // namespace
}  // namespace qva
