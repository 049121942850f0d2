// frmReportPeriod: what it shows and computes.
#include "tests/period/report_period_dialog.h"

namespace qva {
namespace {

using testing::ElementsAre;

TEST_F(ReportPeriodDialog, ShowsTheSettings) {
  Show([&](MemoryForm& form) {
    EXPECT_EQ(form.description().caption, u"Ataskaitinio periodo nustatymai");
    EXPECT_EQ(form.Text(u"cbAccPlan"), u"F1");
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"txtQuater"), u"2");
    EXPECT_EQ(form.Text(u"txtMonth"), u"5");
    EXPECT_EQ(form.Text(u"optYear"), u"1");
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
    EXPECT_EQ(form.Text(u"Text1"), u"Tekstas 828");
  });
}

TEST_F(ReportPeriodDialog, OffersTheBooksAccountPlans) {
  Show([](MemoryForm& form) {
    std::vector<std::u16string> offered;
    for (const auto& [code, text] : form.Items(u"cbAccPlan")) offered.push_back(code + u" " + text);
    EXPECT_THAT(offered, ElementsAre(u"B1 Biudžetas", u"F1 Finansinė apskaita"));
  });
}

TEST_F(ReportPeriodDialog, ShowsDatesWithTheUsersDateSeparator) {
  platform.locale.short_date_pattern = u"yyyy.MM.dd";
  Show([&](MemoryForm& form) { EXPECT_EQ(form.Text(u"edCurrBegDate"), u"2024.01"); });
  platform.locale.short_date_pattern = u"yyyy/MM-dd";  // the first of two
  Show([&](MemoryForm& form) { EXPECT_EQ(form.Text(u"edCurrBegDate"), u"2024/01"); });
}

TEST_F(ReportPeriodDialog, HasItsControlsInTheirOrderAndPlaces) {
  const ui::FormDescription layout = ReportPeriodLayout();
  EXPECT_EQ(layout.name, u"frmReportPeriod");
  EXPECT_EQ(layout.width, 640);
  EXPECT_EQ(layout.height, 400);
  EXPECT_TRUE(layout.resizable);
  EXPECT_THAT(layout.pages, ElementsAre(u"#1626 Pagrindiniai parametrai", u"#14058 Papilduomi parametrai"));
  EXPECT_EQ(layout.default_button, u"btOk");
  EXPECT_EQ(layout.cancel_button, u"btCancel");
  EXPECT_THAT(
      FormLines(layout),
      ElementsAre(
          "TabControl STab '' 8,8 624x348 :0", "Label Label1 'Sąskaitų planas : ' 16,39 130x17 STab:0",
          "ComboBox cbAccPlan '' 150,36 456x23 STab:0", "Label Label2 'Metai : ' 16,79 130x17 STab:0",
          "TextBox txtYear '' 150,76 70x23 STab:0", "Label Label4 'Ketvertis : ' 16,109 130x17 STab:0",
          "TextBox txtQuater '' 150,106 70x23 STab:0", "Label Label3 'Mėnuo : ' 16,139 130x17 STab:0",
          "TextBox txtMonth '' 150,136 70x23 STab:0",
          "Frame Frame2 ' Ataskaitos periodiškūmas ' 396,68 210x168 STab:0",
          "OptionButton optYear 'Metinės' 16,20 180x20 Frame2:0",
          "OptionButton optQuarter 'Ketvirčio' 16,44 180x20 Frame2:0",
          "OptionButton optMonth 'Mėnesio' 16,68 180x20 Frame2:0",
          "OptionButton optHalfYearOwn 'I  pusmečio' 16,92 180x20 Frame2:0",
          "OptionButton optHalfYearTwo 'II pusmečio' 16,116 180x20 Frame2:0",
          "OptionButton optUser 'Nustatytas' 16,140 180x20 Frame2:0",
          "Label Label8 'Praeitas ataskaitinis periodas : ' 16,180 360x17 STab:0",
          "Label Label6 'Nuo : ' 32,205 50x17 STab:0", "DatePicker edPrevBegDate '' 84,202 110x23 STab:0",
          "Label Label7 'iki : ' 212,205 40x17 STab:0", "DatePicker edPrevEndDate '' 254,202 110x23 STab:0",
          "Label Label9 'Einamasis ataskaitinis periodas : ' 16,240 360x17 STab:0",
          "Label Label11 'Nuo : ' 32,265 50x17 STab:0", "DatePicker edCurrBegDate '' 84,262 110x23 STab:0",
          "Label Label10 'iki : ' 212,265 40x17 STab:0", "DatePicker edCurrEndDate '' 254,262 110x23 STab:0",
          "TextBox Text1 'Ataskaitos už nurodytą laikotarpį' 16,304 590x23 STab:0 read-only",
          "Grid SpecGrid '' 16,36 590x260 STab:1", "Button btSpecDelete 'DelRec' 16,306 90x27 STab:1",
          "Button btOk 'OK' 448,364 88x28 :0", "Button btCancel 'Cancel' 544,364 88x28 :0"));
}

TEST_F(ReportPeriodDialog, IsTaggedWithItsFolderWord) {
  EXPECT_EQ(dialog.ImpTag(), u"\\Brisvane");
}

TEST_F(ReportPeriodDialog, SelectsTheOptionOfEachKind) {
  const std::u16string_view options[] = {u"optYear",        u"optQuarter",     u"optMonth",
                                         u"optHalfYearOwn", u"optHalfYearTwo", u"optUser"};
  for (std::int32_t kind = 1; kind <= 6; ++kind) {
    SetSettingItem(u"RepPeriodType", kind);
    Show([&](MemoryForm& form) { EXPECT_EQ(form.Text(options[kind - 1]), u"1") << kind; });
  }
}

TEST_F(ReportPeriodDialog, OpensOnYearForAnUnknownKindWithTheStoredDatesInWholeMonths) {
  SetSettingItem(u"CurrPerBeg", DateFromParts(2024, 2, 15));
  SetSettingItem(u"CurrPerEnd", DateFromParts(2024, 2, 15));
  SetSettingItem(u"LastPerBeg", DateFromParts(2023, 3, 31));
  SetSettingItem(u"LastPerEnd", DateFromParts(2023, 4, 1));
  for (const std::int32_t kind : {0, 7}) {
    SetSettingItem(u"RepPeriodType", kind);
    Show([&](MemoryForm& form) {
      EXPECT_EQ(form.Text(u"optYear"), u"1");
      EXPECT_EQ(PickerDate(form, u"edCurrBegDate"), DateFromParts(2024, 2, 1));
      EXPECT_EQ(PickerDate(form, u"edCurrEndDate"), DateFromParts(2024, 2, 29));
      EXPECT_EQ(PickerDate(form, u"edPrevBegDate"), DateFromParts(2023, 3, 1));
      EXPECT_EQ(PickerDate(form, u"edPrevEndDate"), DateFromParts(2023, 4, 30));
    });
  }
}

TEST_F(ReportPeriodDialog, LimitsWhatCanBeTyped) {
  Show([&](MemoryForm& form) {
    form.Type(u"txtYear", u"20245");
    form.Type(u"txtQuater", u"34");
    form.Type(u"txtMonth", u"123");
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"txtQuater"), u"3");
    EXPECT_EQ(form.Text(u"txtMonth"), u"12");
  });
}

TEST_F(ReportPeriodDialog, TellsTheResizerTheModesOfTwoControls) {
  Show([&](MemoryForm& form) {
    EXPECT_EQ(form.resizer_start(), std::pair(640, 400));
    EXPECT_EQ(form.resize_modes(), (std::map<std::u16string, ui::ResizeMode>{{u"Frame2", ui::ResizeMode{4}},
                                                                             {u"Text1", ui::ResizeMode{5}}}));
  });
}

// --- Enabling

TEST_F(ReportPeriodDialog, LeavesDatesToTheProgramUnlessTheUserSetsThem) {
  Show([&](MemoryForm& form) {
    const auto enabled = [&](std::u16string_view name) { return form.Find(name)->Enabled(); };
    for (const std::u16string_view name : {u"txtYear", u"txtQuater", u"txtMonth"}) EXPECT_TRUE(enabled(name));
    for (const std::u16string_view name : {u"edCurrBegDate", u"edCurrEndDate", u"edPrevBegDate"}) {
      EXPECT_FALSE(enabled(name)) << ToUtf8(name);
    }
    form.Click(u"optUser");
    for (const std::u16string_view name : {u"txtYear", u"txtQuater", u"txtMonth"})
      EXPECT_FALSE(enabled(name));
    for (const std::u16string_view name : {u"edCurrBegDate", u"edCurrEndDate", u"edPrevBegDate"}) {
      EXPECT_TRUE(enabled(name)) << ToUtf8(name);
    }
    form.Click(u"optMonth");
    EXPECT_TRUE(enabled(u"txtYear"));
    EXPECT_FALSE(enabled(u"edCurrBegDate"));
  });
}

TEST_F(ReportPeriodDialog, KeepsThePreviousEndEditableInEveryKind) {
  Show([&](MemoryForm& form) {
    for (const std::u16string_view option : {u"optUser", u"optQuarter", u"optHalfYearOwn", u"optYear"}) {
      form.Click(option);
      EXPECT_TRUE(form.Find(u"edPrevEndDate")->Enabled()) << ToUtf8(option);
    }
  });
}

// --- Recomputation

TEST_F(ReportPeriodDialog, ComputesThePeriodOfEachKind) {
  Show([&](MemoryForm& form) {
    form.Click(u"optQuarter");
    EXPECT_EQ(Periods(form), "2024-04..2024-06 after 2024-01..2024-03");
    form.Click(u"optMonth");
    EXPECT_EQ(Periods(form), "2024-05..2024-05 after 2024-04..2024-04");
    form.Click(u"optHalfYearOwn");
    EXPECT_EQ(Periods(form), "2024-01..2024-06 after 2023-07..2023-12");
    form.Click(u"optHalfYearTwo");
    EXPECT_EQ(Periods(form), "2024-07..2024-12 after 2024-01..2024-06");
    form.Click(u"optYear");
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
  });
}

TEST_F(ReportPeriodDialog, ComputesQuarter4AndMonth3AsTyped) {
  Show([&](MemoryForm& form) {
    form.Type(u"txtQuater", u"4");
    EXPECT_EQ(PickerDate(form, u"edCurrBegDate"), DateFromParts(2024, 10, 1));
    EXPECT_EQ(PickerDate(form, u"edCurrEndDate"), DateFromParts(2024, 12, 31));
    EXPECT_EQ(PickerDate(form, u"edPrevBegDate"), DateFromParts(2024, 7, 1));
    EXPECT_EQ(PickerDate(form, u"edPrevEndDate"), DateFromParts(2024, 9, 30));
    form.Type(u"txtMonth", u"3");
    EXPECT_EQ(PickerDate(form, u"edCurrBegDate"), DateFromParts(2024, 3, 1));
    EXPECT_EQ(PickerDate(form, u"edCurrEndDate"), DateFromParts(2024, 3, 31));
    EXPECT_EQ(PickerDate(form, u"edPrevBegDate"), DateFromParts(2024, 2, 1));
    EXPECT_EQ(PickerDate(form, u"edPrevEndDate"), DateFromParts(2024, 2, 29));
  });
}

TEST_F(ReportPeriodDialog, SelectsTheKindOfWhatIsTyped) {
  Show([&](MemoryForm& form) {
    form.Type(u"txtQuater", u"3");
    EXPECT_EQ(form.Text(u"optQuarter"), u"1");
    form.Type(u"txtMonth", u"12");
    EXPECT_EQ(form.Text(u"optMonth"), u"1");
    EXPECT_EQ(Periods(form), "2024-12..2024-12 after 2024-11..2024-11");
  });
}

TEST_F(ReportPeriodDialog, LetsTheUsersKindChangeNothing) {
  Show([&](MemoryForm& form) {
    form.Click(u"optUser");
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
  });
}

TEST_F(ReportPeriodDialog, WaitsForTheFourthDigitOfAYear) {
  Show([&](MemoryForm& form) {
    for (const std::u16string_view text : {u"2", u"20", u"202"}) {
      form.Type(u"txtYear", text);
      EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
    }
    form.Type(u"txtYear", u"2026");
    EXPECT_EQ(Periods(form), "2026-01..2026-12 after 2025-01..2025-12");
  });
}

TEST_F(ReportPeriodDialog, ComparesANewYearWithTwelveMonthsWhicheverKindIsSelected) {
  Show([&](MemoryForm& form) {
    form.Click(u"optMonth");
    form.Type(u"txtYear", u"2025");
    EXPECT_EQ(form.Text(u"optMonth"), u"1");
    EXPECT_EQ(Periods(form), "2025-05..2025-05 after 2024-05..2025-04");
  });
}

TEST_F(ReportPeriodDialog, TakesALeapDayIntoAnotherYear) {
  Show([&](MemoryForm& form) {
    form.Type(u"txtMonth", u"2");
    form.Type(u"txtYear", u"2023");
    EXPECT_EQ(PickerDate(form, u"edCurrBegDate"), DateFromParts(2023, 2, 1));
    EXPECT_EQ(PickerDate(form, u"edCurrEndDate"), DateFromParts(2023, 2, 28));
  });
}

TEST_F(ReportPeriodDialog, ReadsTheBeginOfTheUsersPeriodIntoTheBoxes) {
  Show([&](MemoryForm& form) {
    form.Click(u"optUser");
    form.PickDate(u"edCurrBegDate", DateFromParts(2022, 11, 1));
    EXPECT_EQ(form.Text(u"txtYear"), u"2022");
    EXPECT_EQ(form.Text(u"txtQuater"), u"4");
    EXPECT_EQ(form.Text(u"txtMonth"), u"11");
    // The boxes changed under the busy flag: the kind and the other dates stay.
    EXPECT_EQ(form.Text(u"optUser"), u"1");
    EXPECT_EQ(Periods(form), "2022-11..2024-12 after 2023-01..2023-12");
  });
}

TEST_F(ReportPeriodDialog, KnowsTheQuarterOfEachMonth) {
  Show([&](MemoryForm& form) {
    form.Click(u"optUser");
    for (int month = 1; month <= 12; ++month) {
      form.PickDate(u"edCurrBegDate", DateFromParts(2022, month, 1));
      EXPECT_EQ(form.Text(u"txtQuater"), NumberText((month + 2) / 3)) << month;
      EXPECT_EQ(form.Text(u"txtMonth"), NumberText(month));
    }
  });
}

TEST_F(ReportPeriodDialog, ReadsNoDateIntoTheBoxesUnlessTheUserSetsThePeriod) {
  SetSettingItem(u"LastPerBeg", u"jokia data");  // the filling ends before the options and what they disable
  Show([&](MemoryForm& form) {
    form.PickDate(u"edCurrBegDate", DateFromParts(2022, 11, 1));
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"txtMonth"), u"5");
  });
}

TEST_F(ReportPeriodDialog, ChangesNothingWithTheOtherDatesOfTheUser) {
  Show([&](MemoryForm& form) {
    form.Click(u"optUser");
    form.PickDate(u"edCurrEndDate", DateFromParts(2024, 10, 1));
    form.PickDate(u"edPrevBegDate", DateFromParts(2023, 2, 1));
    EXPECT_EQ(Periods(form), "2024-01..2024-10 after 2023-02..2023-12");
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
  });
}

TEST_F(ReportPeriodDialog, DragsThePreviousBeginAlongUnlessTheUserSetsThePeriod) {
  Show([&](MemoryForm& form) {
    form.Click(u"optQuarter");
    form.PickDate(u"edPrevEndDate", DateFromParts(2023, 6, 30));
    EXPECT_EQ(Periods(form), "2024-04..2024-06 after 2023-04..2023-06");
    form.Click(u"optUser");
    form.PickDate(u"edPrevEndDate", DateFromParts(2023, 9, 30));
    EXPECT_EQ(Periods(form), "2024-04..2024-06 after 2023-04..2023-09");
  });
}

TEST_F(ReportPeriodDialog, TakesNoMonthsBackBeforeTheFirstComputation) {
  // Zero months back: the begin lands in the month behind the end.
  Show([&](MemoryForm& form) {
    form.PickDate(u"edPrevEndDate", DateFromParts(2023, 6, 30));
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-07..2023-06");
  });
}

TEST_F(ReportPeriodDialog, TakesNoMonthsBackFromAnEarlierShowing) {
  Show([](MemoryForm& form) { form.Click(u"optQuarter"); });
  Show([&](MemoryForm& form) {
    form.PickDate(u"edPrevEndDate", DateFromParts(2023, 6, 30));
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-07..2023-06");
  });
}

TEST_F(ReportPeriodDialog, StaysBusyAfterAFailedRecomputation) {
  Show([&](MemoryForm& form) {
    form.Type(u"txtYear", u"abcd");
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
    form.Click(u"optMonth");
    EXPECT_EQ(Periods(form), "2024-01..2024-12 after 2023-01..2023-12");
    EXPECT_FALSE(form.Find(u"edCurrBegDate")->Enabled());  // the enabling still follows the options
  });
  // A new showing begins afresh.
  Show([&](MemoryForm& form) {
    form.Click(u"optMonth");
    EXPECT_EQ(Periods(form), "2024-05..2024-05 after 2024-04..2024-04");
  });
}

}  // namespace
}  // namespace qva
