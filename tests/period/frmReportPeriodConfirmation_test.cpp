// frmReportPeriod: what OK refuses and writes back, and what becomes of a dialog when calls fail.
#include "tests/period/report_period_dialog.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Confirmation

TEST_F(ReportPeriodDialog, RefusesAMissingAccountPlan) {
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"cbAccPlan", u""); }),
            (Refused{u"Tekstas 810", u"cbAccPlan"}));
}

TEST_F(ReportPeriodDialog, RefusesNoKindAtAll) {
  bool verdict = true;
  std::u16string message;
  Show([&](MemoryForm&) {
    // No user can clear an option; a form that failed to fill has none selected.
  });
  SetSettingItem(u"LastPerBeg", u"jokia data");  // the filling ends before the options
  Show([&](MemoryForm& form) {
    form.Type(u"cbAccPlan", u"F1");
    dialog.m_oForm_btOKClick(verdict, message);
  });
  EXPECT_FALSE(verdict);
  EXPECT_EQ(message, u"Tekstas 836");
}

TEST_F(ReportPeriodDialog, RefusesAnEmptyYear) {
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtYear", u""); }),
            (Refused{u"Tekstas 811", u"txtYear"}));
}

TEST_F(ReportPeriodDialog, AcceptsAYearOfTwoDigitsAndAnyFourCharacters) {
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtYear", u"12"); }), (Refused{}));
  EXPECT_EQ(Setting(u"Year"), Value(12.0));
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtYear", u"abcd"); }), (Refused{}));
  for (const std::u16string_view text : {u"abc", u" abc", u"abc ", u"    "}) {
    EXPECT_EQ(Confirm([&](MemoryForm& form) { form.Type(u"txtYear", text); }),
              (Refused{u"Tekstas 811", u"txtYear"}))
        << ToUtf8(text);
  }
}

TEST_F(ReportPeriodDialog, RefusesTheFourthQuarterAndAcceptsTheThird) {
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtQuater", u"4"); }),
            (Refused{u"Tekstas 811", u"txtQuater"}));
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtQuater", u"0"); }),
            (Refused{u"Tekstas 811", u"txtQuater"}));
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.Type(u"txtQuater", u"3"); }), (Refused{}));
}

TEST_F(ReportPeriodDialog, ChecksTheQuarterForQuartersOnly) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Type(u"txtQuater", u"4");
              form.Click(u"optYear");
            }),
            (Refused{}));
}

TEST_F(ReportPeriodDialog, RefusesMonthsThatAreNone) {
  for (const std::u16string_view month : {u"13", u"0", u"x"}) {
    EXPECT_EQ(Confirm([&](MemoryForm& form) { form.Type(u"txtMonth", month); }),
              (Refused{u"Tekstas 811", u"txtMonth"}))
        << ToUtf8(month);
  }
  for (const std::u16string_view month : {u"1", u"12"}) {
    EXPECT_EQ(Confirm([&](MemoryForm& form) { form.Type(u"txtMonth", month); }), (Refused{}));
  }
}

TEST_F(ReportPeriodDialog, TakesPeriodsThatBeginTogetherAndLastADay) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Click(u"optUser");
              for (const std::u16string_view picker :
                   {u"edCurrBegDate", u"edCurrEndDate", u"edPrevBegDate", u"edPrevEndDate"}) {
                form.PickDate(picker, DateFromParts(2024, 2, 1));
              }
            }),
            (Refused{}));
}

TEST_F(ReportPeriodDialog, StaysOpenWhenItCannotBeChecked) {
  SetSettingItem(u"LastPerBeg", u"jokia data");  // the filling ends before the boxes are given their lengths
  EXPECT_FALSE(Show([](MemoryForm& form) {
    form.Click(u"optMonth");
    form.Type(u"txtMonth", u"99999999999");
    form.Click(u"btOk");
    EXPECT_TRUE(form.Visible());
  }));
}

TEST_F(ReportPeriodDialog, HasNothingToSayOfWhatIsRight) {
  Show([&](MemoryForm&) {
    bool verdict = false;
    std::u16string message = u"sena";
    dialog.m_oForm_btOKClick(verdict, message);
    EXPECT_TRUE(verdict);
    EXPECT_EQ(message, u"");
  });
}

TEST_F(ReportPeriodDialog, RefusesACurrentPeriodThatEndsBeforeItBegins) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Click(u"optUser");
              form.PickDate(u"edCurrEndDate", DateFromParts(2023, 12, 1));
            }),
            (Refused{u"Tekstas 811", u"edCurrBegDate"}));
}

TEST_F(ReportPeriodDialog, RefusesAPreviousPeriodThatEndsBeforeItBegins) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Click(u"optUser");
              form.PickDate(u"edPrevEndDate", DateFromParts(2022, 12, 1));
            }),
            (Refused{u"Tekstas 811", u"edPrevBegDate"}));
}

TEST_F(ReportPeriodDialog, RefusesAPreviousPeriodThatBeginsAfterTheCurrentOne) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Click(u"optUser");
              form.PickDate(u"edPrevEndDate", DateFromParts(2024, 12, 1));
              form.PickDate(u"edPrevBegDate", DateFromParts(2024, 2, 1));
            }),
            (Refused{u"Tekstas 811", u"edPrevBegDate"}));
}

TEST_F(ReportPeriodDialog, ChecksTheDatesWithEveryKind) {
  EXPECT_EQ(Confirm([](MemoryForm& form) {
              form.Click(u"optMonth");
              form.PickDate(u"edPrevEndDate", DateFromParts(2024, 6, 30));
            }),
            (Refused{u"Tekstas 811", u"edPrevBegDate"}));
  // No months back yet, so that the previous period begins behind its end.
  EXPECT_EQ(Confirm([](MemoryForm& form) { form.PickDate(u"edPrevEndDate", DateFromParts(2023, 6, 30)); }),
            (Refused{u"Tekstas 811", u"edPrevBegDate"}));
}

TEST_F(ReportPeriodDialog, ShowsARefusalUnderItsCaptionWithOneButton) {
  Confirm([](MemoryForm& form) { form.Type(u"txtYear", u""); });
  ASSERT_EQ(platform.message_box.boxes().size(), 1u);
  EXPECT_EQ(platform.message_box.boxes()[0].title, u"Ataskaitinio periodo nustatymai");
  EXPECT_THAT(platform.message_box.boxes()[0].captions, ElementsAre(u"Gerai"));
}

TEST_F(ReportPeriodDialog, StaysOpenAfterARefusal) {
  EXPECT_TRUE(Show([](MemoryForm& form) {
    form.Type(u"txtQuater", u"4");
    form.Click(u"btOk");
    EXPECT_TRUE(form.Visible());
    form.Type(u"txtQuater", u"3");
    form.Click(u"btOk");
    EXPECT_FALSE(form.Visible());
  }));
  EXPECT_EQ(Setting(u"Quarter"), Value(3.0));
}

TEST_F(ReportPeriodDialog, LeavesTheSettingsAloneWhenCancelled) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", Null{}, Null{}, u"x"});
  EXPECT_FALSE(Show([](MemoryForm& form) {
    form.Type(u"cbAccPlan", u"B1");
    form.Type(u"txtQuater", u"1");
    form.Click(u"btSpecDelete");
    form.Click(u"btCancel");
  }));
  EXPECT_EQ(Setting(u"Plan"), Value(u"F1"));
  EXPECT_EQ(Setting(u"Quarter"), Value(2));
  EXPECT_EQ(Setting(u"RepPeriodType"), Value(1));
  EXPECT_EQ(Setting(u"BudgetCount"), Value());
  EXPECT_EQ(budgets.RecordCount(), 1);
}

TEST_F(ReportPeriodDialog, WritesBackWhatTheUserChose) {
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    form.Type(u"cbAccPlan", u"B1");
    form.Type(u"txtMonth", u"7");
  }));
  EXPECT_EQ(Setting(u"Plan"), Value(u"B1"));
  EXPECT_EQ(Setting(u"Year"), Value(2024.0));
  EXPECT_EQ(Setting(u"Quarter"), Value(2.0));
  EXPECT_EQ(Setting(u"Month"), Value(7.0));
  EXPECT_EQ(Setting(u"RepPeriodType"), Value(3));
  EXPECT_EQ(Setting(u"CurrPerBeg"), Value(DateFromParts(2024, 7, 1)));
  EXPECT_EQ(Setting(u"CurrPerEnd"), Value(DateFromParts(2024, 7, 31)));
  EXPECT_EQ(Setting(u"LastPerBeg"), Value(DateFromParts(2024, 6, 1)));
  EXPECT_EQ(Setting(u"LastPerEnd"), Value(DateFromParts(2024, 6, 30)));
  EXPECT_EQ(Setting(u"IsBudgetPlan"), Value(true));
  EXPECT_EQ(Setting(u"BudgetCount"), Value(0));
}

TEST_F(ReportPeriodDialog, WritesWholeMonthsOfTheUsersDates) {
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    form.Click(u"optUser");
    form.PickDate(u"edCurrBegDate", DateFromParts(2024, 2, 20));
    form.PickDate(u"edCurrEndDate", DateFromParts(2024, 4, 3));
    form.PickDate(u"edPrevBegDate", DateFromParts(2023, 5, 31));
    form.PickDate(u"edPrevEndDate", DateFromParts(2023, 6, 1));
  }));
  EXPECT_EQ(Setting(u"RepPeriodType"), Value(6));
  EXPECT_EQ(Setting(u"LastPerBeg"), Value(DateFromParts(2023, 5, 1)));
  EXPECT_EQ(Setting(u"LastPerEnd"), Value(DateFromParts(2023, 6, 30)));
  EXPECT_EQ(Setting(u"CurrPerBeg"), Value(DateFromParts(2024, 2, 1)));
  EXPECT_EQ(Setting(u"CurrPerEnd"), Value(DateFromParts(2024, 4, 30)));
}

TEST_F(ReportPeriodDialog, TakesAPlanThatTheBookLacksForNoBudgetPlan) {
  host.refuses_tables = true;
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) { form.Type(u"cbAccPlan", u"NĖRA"); }));
  EXPECT_EQ(Setting(u"Plan"), Value(u"NĖRA"));
  EXPECT_EQ(Setting(u"IsBudgetPlan"), Value(false));
}

TEST_F(ReportPeriodDialog, LooksForThePlanAlsoWherePlansCouldNotBeListed) {
  host.refuses_tables = true;
  EXPECT_TRUE(ShowAndConfirm([this](MemoryForm& form) {
    host.refuses_tables = false;
    form.Type(u"cbAccPlan", u"B1");
  }));
  EXPECT_EQ(Setting(u"IsBudgetPlan"), Value(true));
}

TEST_F(ReportPeriodDialog, RefusesATextThatIsNoCodeOfTheList) {
  for (const std::u16string_view text : {u"NĖRA", u"F", u"Finansinė"}) {
    EXPECT_EQ(Confirm([&](MemoryForm& form) { form.Type(u"cbAccPlan", text); }),
              (Refused{u"Tekstas 810", u"cbAccPlan"}))
        << ToUtf8(text);
  }
  EXPECT_EQ(Setting(u"Plan"), Value(u"F1"));
}

TEST_F(ReportPeriodDialog, RefusesAnyTextOfABookWithoutAccountPlans) {
  host.account_sets[u"MEDVILNE"].clear();
  EXPECT_EQ(Confirm([](MemoryForm&) {}), (Refused{u"Tekstas 810", u"cbAccPlan"}));
}

TEST_F(ReportPeriodDialog, TakesACodeInOtherLetterCaseForTheListsOwn) {
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) { form.Type(u"cbAccPlan", u"b1"); }));
  EXPECT_EQ(Setting(u"Plan"), Value(u"B1"));
  EXPECT_EQ(Setting(u"IsBudgetPlan"), Value(true));
  // The code itself comes first.
  host.account_sets[u"MEDVILNE"].push_back({u"b1", u"Kitas", false});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) { form.Type(u"cbAccPlan", u"b1"); }));
  EXPECT_EQ(Setting(u"Plan"), Value(u"b1"));
  EXPECT_EQ(Setting(u"IsBudgetPlan"), Value(false));
}

// --- Failures

TEST_F(ReportPeriodDialog, RaisesWithoutABook) {
  EXPECT_EQ(RaisedBy([&] { dialog.Run(settings, {}); }), kObjectNotSet);
}

TEST_F(ReportPeriodDialog, RaisesWhenItCannotBeShown) {
  platform.faults.forms.Refuse();
  EXPECT_EQ(RaisedBy([&] { dialog.Run(settings, TheGlobals().oBook); }), kOutOfMemory);
}

TEST_F(ReportPeriodDialog, OpensHalfFilledWhenFillingFails) {
  SetSettingItem(u"CurrPerBeg", u"jokia data");
  bool shown = false;
  EXPECT_FALSE(Show([&](MemoryForm& form) {
    shown = true;
    EXPECT_EQ(form.Text(u"txtYear"), u"2024");
    EXPECT_EQ(form.Text(u"edPrevEndDate"), u"2023-12");
    EXPECT_EQ(form.Text(u"optYear"), u"0");
  }));
  EXPECT_TRUE(shown);
}

TEST_F(ReportPeriodDialog, FillsTheControlsWhenTheAccountPlansCannotBeListed) {
  host.refuses_tables = true;
  Show([&](MemoryForm& form) { EXPECT_EQ(form.Text(u"cbAccPlan"), u"F1"); });
}

TEST_F(ReportPeriodDialog, StaysOpenWithoutAMessageWhereItsTextIsMissing) {
  host.texts.erase(811);
  EXPECT_FALSE(Show([](MemoryForm& form) {
    form.Type(u"txtYear", u"");
    form.Click(u"btOk");
    EXPECT_TRUE(form.Visible());
  }));
  EXPECT_THAT(platform.message_box.boxes(), IsEmpty());
}

TEST_F(ReportPeriodDialog, ReleasesEverythingWhateverCallFails) {
  platform.forms.user = [](MemoryForm& form) {
    form.Type(u"txtMonth", u"7");
    form.Click(u"btOk");
  };
  const auto run = [&](long at) {
    failure.Reset(at);
    const auto error = ErrorOf([&] { dialog.Run(settings, TheGlobals().oBook); });
    const bool failed = failure.has_failed();
    failure.Reset(0);
    return failed;
  };
  run(0);
  const long alive = Object::LiveCount();
  long calls = 1;
  while (run(calls)) {
    EXPECT_EQ(Object::LiveCount(), alive) << "after the failure of call " << calls;
    ++calls;
  }
  EXPECT_GT(calls, 50);
}

}  // namespace
}  // namespace qva
