// AccountSetGrid: its rows, and what is typed into them.
#include "tests/period/account_sets_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(AccountSets, ShowFiveColumnsAndHideTheIdentifiers) {
  Show([](MemoryForm& form) {
    std::vector<std::u16string> names;
    for (const ui::GridColumn& column : form.Columns(kGrid)) names.push_back(column.name);
    EXPECT_THAT(names, ElementsAre(u"BookCode", u"PlanCode", u"PlanIsBudget", u"BudgetCurrDocCode",
                                   u"BudgetLastDocCode"));
  });
}

TEST_F(AccountSets, HaveCaptionsAndWidthsOfTheirOwn) {
  Show([](MemoryForm& form) {
    std::vector<std::pair<std::u16string, int>> shown;
    for (const ui::GridColumn& column : form.Columns(kGrid)) shown.emplace_back(column.caption, column.width);
    EXPECT_THAT(shown,
                ElementsAre(std::pair(u"Knyga", 74), std::pair(u"Sąskaitų planas", 100),
                            std::pair(u"Biudžeto", 60), std::pair(u"Einamojo laikotarpio biudžetas", 156),
                            std::pair(u"Praeito laikotarpio biudžetas", 156)));
  });
}

TEST_F(AccountSets, ShowAMarkForTheBudgetFlagAlone) {
  Show([](MemoryForm& form) {
    for (const ui::GridColumn& column : form.Columns(kGrid)) {
      EXPECT_EQ(column.check_box, column.name == u"PlanIsBudget") << ToUtf8(column.name);
    }
  });
}

TEST_F(AccountSets, HaveTheirColumnRules) {
  BookCache books;
  AccountSetGrid grid(books, {});
  const auto column = [&](std::u16string name, std::u16string caption = u"x") {
    BaselList::Column result;
    result.name = std::move(name);
    result.caption = std::move(caption);
    grid.m_BaselList_OnAddColumn(result);
    return result;
  };
  EXPECT_EQ(column(u"BookCode").lookup_table, u"Book");
  EXPECT_TRUE(column(u"BookCode").cell_button);
  EXPECT_EQ(column(u"PlanCode").lookup_table, u"GLAccountSet");
  EXPECT_TRUE(column(u"PlanCode").cell_button);
  EXPECT_TRUE(column(u"BudgetCurrDocCode").cell_button);
  EXPECT_FALSE(column(u"BudgetCurrDocCode").read_only);
  EXPECT_TRUE(column(u"PlanIsBudget").read_only);
  EXPECT_FALSE(column(u"PlanIsBudget").cell_button);
  EXPECT_TRUE(column(u"BudgetCurrDocId", u"").hidden);
  EXPECT_TRUE(column(u"BudgetCurrDocId", u"").read_only);
}

TEST_F(AccountSets, GiveAButtonToAnyColumnWithDocCodeButAnswerItAtTheNamesEndOnly) {
  BookCache books;
  AccountSetGrid grid(books, [](bool) {
    return DateRange{DateFromParts(2024, 1, 1), DateFromParts(2024, 12, 31)};
  });
  BaselList::Column column;
  column.name = u"MyDocCodeNote";
  column.caption = u"x";
  grid.m_BaselList_OnAddColumn(column);
  EXPECT_TRUE(column.cell_button);

  grid.m_BaselList_OnAddFields();
  grid.list().AddRow();
  grid.list().Set(u"BookCode", u"MEDVILNE");
  grid.list().Set(u"PlanCode", u"B1");
  grid.SpecGrid_ButtonClick(u"MyDocCodeNote");
  EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
  grid.SpecGrid_ButtonClick(u"MyDocCode");
  EXPECT_THAT(platform.list_chooser.shown, SizeIs(1));
}

TEST_F(AccountSets, OpenEmptyWithoutBudgets) {
  Show([](MemoryForm& form) {
    EXPECT_EQ(form.RowCount(kGrid), 0u);
    form.Click(u"btSpecDelete");  // does nothing
    EXPECT_EQ(form.RowCount(kGrid), 0u);
  });
}

TEST_F(AccountSets, ShowTheBudgets) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u"pastaba"});
  AddBudget({u"BALTIJA", u"F2", 0, Null{}, Null{}, Null{}, Null{}, Null{}});
  Show([](MemoryForm& form) {
    ASSERT_EQ(form.RowCount(kGrid), 2u);
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
    EXPECT_THAT(Row(form, 1), ElementsAre(u"BALTIJA", u"F2", u"0", u"", u""));
    EXPECT_EQ(ui::Get<ui::Grid>(form, kGrid).CurrentRow(), 0u);
  });
}

TEST_F(AccountSets, WriteTheRowsInPlaceOfTheBudgets) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u"pastaba"});
  AddBudget({u"BALTIJA", u"F2", 0, Null{}, Null{}, Null{}, Null{}, Null{}});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    form.SelectRow(kGrid, 1);
    EXPECT_TRUE(form.TypeCell(kGrid, 2, u"BookCode", u"MEDVILNE"));
  }));
  EXPECT_EQ(Setting(u"BudgetCount"), Value(3));
  const auto records = Records();
  ASSERT_THAT(records, SizeIs(3));
  // A field that the list lacks stays empty in the rewritten rows.
  EXPECT_THAT(records[0], ElementsAre(u"MEDVILNE", u"B1", 1, Currency{120000}, u"BIU-2024", Currency{110000},
                                      u"BIU-2023", Null{}));
  EXPECT_THAT(records[2], ElementsAre(u"MEDVILNE", u"", 0, Currency{0}, u"", Currency{0}, u"", Null{}));
}

TEST_F(AccountSets, AreWrittenBackWhereverTheRecordsStand) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  budgets.MoveNext();
  ASSERT_TRUE(budgets.EndOfFile());
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm&) {}));
  EXPECT_EQ(Setting(u"BudgetCount"), Value(1));
}

TEST_F(AccountSets, LeaveTheBudgetsEmptyWithoutRows) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u"pastaba"});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) { form.Click(u"btSpecDelete"); }));
  EXPECT_EQ(Setting(u"BudgetCount"), Value(0));
  EXPECT_TRUE(budgets.EndOfFile());
}

TEST_F(AccountSets, DeleteTheCurrentRow) {
  for (const char16_t* set : {u"F1", u"B1", u"F1"}) AddBudget({u"MEDVILNE", set, 0, 0, u"", 0, u"", Null{}});
  Show([](MemoryForm& form) {
    form.SelectRow(kGrid, 1);
    form.Click(u"btSpecDelete");
    ASSERT_EQ(form.RowCount(kGrid), 2u);
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanCode"), u"F1");
    EXPECT_EQ(form.CellText(kGrid, 1, u"PlanCode"), u"F1");
  });
}

TEST_F(AccountSets, GoToTheRowThatMovesUpAfterADeletionOrToTheLastOne) {
  for (const char16_t* set : {u"F1", u"B1", u"F1"}) AddBudget({u"MEDVILNE", set, 0, 0, u"", 0, u"", Null{}});
  Show([](MemoryForm& form) {
    const auto current = [&] { return ui::Get<ui::Grid>(form, kGrid).CurrentRow(); };
    form.SelectRow(kGrid, 1);
    form.Click(u"btSpecDelete");
    EXPECT_EQ(current(), 1u);
    form.Click(u"btSpecDelete");
    EXPECT_EQ(current(), 0u);
  });
}

TEST_F(AccountSets, AreNotWrittenBackBeforeTheyWereShown) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  BookCache books;
  AccountSetGrid grid(books, {});
  EXPECT_EQ(RaisedBy([&] { grid.WriteBack(budgets); }), kObjectNotSet);
  EXPECT_EQ(budgets.RecordCount(), 1);
}

// --- Typed values

TEST_F(AccountSets, TakeATextIntoTheRowThatItIsTypedInto) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  AddBudget({u"MEDVILNE", u"F1", 0, 0, u"", 0, u"", u""});
  Show([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 1, u"BudgetCurrDocCode", u"kitas"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
    EXPECT_THAT(Row(form, 1), ElementsAre(u"MEDVILNE", u"F1", u"0", u"kitas", u""));
  });
}

TEST_F(AccountSets, TakeKnownCodesAndTheBudgetFlagOfTheAccountSet) {
  Show([](MemoryForm& form) {
    TypeRow(form, 0, u"B1");
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"True", u"", u""));
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"PlanCode", u"F1"));
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanIsBudget"), u"False");
  });
}

TEST_F(AccountSets, RefuseUnknownBooks) {
  Show([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BookCode", u"MEDVILNE"));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BookCode", u"NĖRA"));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BookCode", u""));
    EXPECT_EQ(form.CellText(kGrid, 0, u"BookCode"), u"MEDVILNE");
  });
}

TEST_F(AccountSets, MakeNoRowOfARefusedCode) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    EXPECT_FALSE(form.TypeCell(kGrid, 1, u"BookCode", u"NĖRA"));
    EXPECT_EQ(form.RowCount(kGrid), 1u);
    EXPECT_EQ(ui::Get<ui::Grid>(form, kGrid).CurrentRow(), std::nullopt) << "still on the empty line";
  }));
  EXPECT_EQ(Setting(u"BudgetCount"), Value(1));
}

TEST_F(AccountSets, RefuseAccountSetsWithoutABookAndThoseThatTheBookLacks) {
  Show([](MemoryForm& form) {
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"PlanCode", u"F1"));  // the row has no book
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BookCode", u"BALTIJA"));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"PlanCode", u"F1"));
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanCode"), u"");
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"PlanCode", u"F2"));
  });
}

TEST_F(AccountSets, ClearTheRestOfARowWithItsBook) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BookCode", u"BALTIJA"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"BALTIJA", u"", u"0", u"", u""));
  }));
  EXPECT_EQ(Records()[0][3], Value(Currency{0}));
  EXPECT_EQ(Records()[0][5], Value(Currency{0}));
}

TEST_F(AccountSets, ClearTheDocumentsWithTheAccountSetAlsoWhenItIsTypedAgain) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  EXPECT_TRUE(ShowAndConfirm([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"PlanCode", u"B1"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"True", u"", u""));
  }));
  EXPECT_EQ(Records()[0][3], Value(Currency{0}));
  EXPECT_EQ(Records()[0][5], Value(Currency{0}));
}

TEST_F(AccountSets, ChangeNothingElseWithADocumentCode) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  Show([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BudgetCurrDocCode", u"kitas"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"kitas", u"BIU-2023"));
  });
}

TEST_F(AccountSets, RefuseACodeThatIsLongerThanItsField) {
  const std::u16string fitting(25, u'x');
  const std::u16string long_code(26, u'x');
  for (const std::u16string& code : {fitting, long_code}) {
    host.books[code] = host.books[u"MEDVILNE"];
    host.account_sets[u"MEDVILNE"].push_back({code, u"Ilgas", true});
  }
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BookCode", long_code));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"PlanCode", long_code));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BudgetCurrDocCode", std::u16string(251, u'x')));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BudgetLastDocCode", std::u16string(251, u'x')));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"PlanCode", fitting));
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BudgetCurrDocCode", std::u16string(250, u'x')));
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BudgetLastDocCode", std::u16string(250, u'y')));
  }));
  EXPECT_EQ(Records()[0][1], Value(fitting));
  EXPECT_EQ(Records()[0][6], Value(std::u16string(250, u'y')));
}

TEST_F(AccountSets, RefuseALongCodeThatIsLookedUp) {
  const std::u16string long_code(26, u'x');
  host.account_sets[u"MEDVILNE"].push_back({long_code, u"Ilgas", true});
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  Pick(long_code);
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
  }));
}

TEST_F(AccountSets, TakeATextOnTheEmptyLineAndLeaveTheRowsOtherCellsEmpty) {
  Show([](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BudgetCurrDocCode", u"BIU"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"", u"", u"0", u"BIU", u""));
  });
}

TEST_F(AccountSets, ClearFlagAndDocumentsWithAnAccountSetThatIsGone) {
  BookCache books;
  AccountSetGrid grid(books, {});
  AddRowOf(grid, u"MEDVILNE", u"NĖRA");
  grid.m_BaselList_AfterChangeColValue(u"PlanCode");
  EXPECT_EQ(grid.list().Get(u"PlanIsBudget"), Value(0));
  EXPECT_EQ(grid.list().Get(u"BudgetCurrDocCode"), Value(u""));
}

TEST_F(AccountSets, KeepFlagAndDocumentsOfARowWithoutABook) {
  BookCache books;
  AccountSetGrid grid(books, {});
  AddRowOf(grid, u"", u"B1");
  grid.m_BaselList_AfterChangeColValue(u"PlanCode");
  EXPECT_EQ(grid.list().Get(u"PlanIsBudget"), Value(1));
  EXPECT_EQ(grid.list().Get(u"BudgetCurrDocCode"), Value(u"BIU-2024"));
}

}  // namespace
}  // namespace qva
