#include "period/AccountSetGrid.h"

#include "tests/period/period_fixture.h"

namespace qva {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class AccountSets : public PeriodTest {
 protected:
  static constexpr std::u16string_view kGrid = u"SpecGrid";

  /// The cells of a row by their shown columns.
  static std::vector<std::u16string> Row(MemoryForm& form, std::size_t row) {
    std::vector<std::u16string> cells;
    for (const ui::GridColumn& column : form.Columns(kGrid))
      cells.push_back(form.CellText(kGrid, row, column.name));
    return cells;
  }
  /// A row of the book MEDVILNE and an account set.
  static void TypeRow(MemoryForm& form, std::size_t row, std::u16string_view account_set = u"B1") {
    EXPECT_TRUE(form.TypeCell(kGrid, row, u"BookCode", u"MEDVILNE"));
    EXPECT_TRUE(form.TypeCell(kGrid, row, u"PlanCode", account_set));
  }
  /// Gives a grid that was not shown a row with a flag and a document.
  static void AddRowOf(AccountSetGrid& grid, std::u16string_view book, std::u16string_view account_set) {
    grid.m_BaselList_OnAddFields();
    grid.list().AddRow();
    grid.list().Set(u"BookCode", book);
    grid.list().Set(u"PlanCode", account_set);
    grid.list().Set(u"PlanIsBudget", 1);
    grid.list().Set(u"BudgetCurrDocCode", u"BIU-2024");
  }
  /// Lets the user pick the code from the next list.
  void Pick(std::u16string code) {
    platform.list_chooser.user = [code](const ChoiceList& list,
                                        std::u16string_view) -> std::optional<std::size_t> {
      for (std::size_t i = 0; i < list.rows.size(); ++i) {
        if (list.rows[i][0] == code) return i;
      }
      return std::nullopt;
    };
  }
  std::vector<std::u16string> OfferedCodes() const {
    std::vector<std::u16string> codes;
    for (const auto& row : platform.list_chooser.shown.back().rows) codes.push_back(row[0]);
    return codes;
  }
  /// The fields of the budgets' records.
  std::vector<std::vector<Value>> Records() const {
    std::vector<std::vector<Value>> records;
    if (budgets.RecordCount() == 0) return records;
    budgets.MoveFirst();
    const Value rows = budgets.GetRows();
    const Array& block = rows.ToArray();
    const auto count = static_cast<std::size_t>(block.dimensions[1].count);
    for (std::size_t i = 0; i < count; ++i) {
      std::vector<Value>& record = records.emplace_back();
      for (std::size_t field = 0; field < 8; ++field) record.push_back(block.elements[field * count + i]);
    }
    return records;
  }
};

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

// --- Lookups

TEST_F(AccountSets, ChangeNothingWhenALookupConfirmsTheCode) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    Pick(u"MEDVILNE");
    form.PressCellButton(kGrid, 0, u"BookCode");
    Pick(u"B1");
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_THAT(platform.list_chooser.shown, SizeIs(2));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
    Pick(u"F1");
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"F1", u"False", u"", u""));
  }));
  EXPECT_EQ(Records()[0][3], Value(Currency{0}));
}

TEST_F(AccountSets, LookBooksUpInTheCurrentBook) {
  Pick(u"BALTIJA");
  Show([&](MemoryForm& form) {
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"BookCode", u"MEDVILNE"));
    form.PressCellButton(kGrid, 0, u"BookCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"BALTIJA", u"MEDVILNE"));
    EXPECT_EQ(form.CellText(kGrid, 0, u"BookCode"), u"BALTIJA");
  });
}

TEST_F(AccountSets, LookBooksUpInTheCurrentBookAlsoWhereTheRowHasAnother) {
  AddBudget({u"BALTIJA", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    trace.Clear();
    form.PressCellButton(kGrid, 0, u"BookCode");
    EXPECT_THAT(trace.lines(), Contains(testing::EndsWith("CreateBook(\"MEDVILNE\").Table(\"Book\")")));
    EXPECT_THAT(trace.lines(), Not(Contains(testing::HasSubstr("BALTIJA\")"))));
  });
}

TEST_F(AccountSets, TakeTheirStructureFromTheHostsCarrierTable) {
  Show([&](MemoryForm&) {
    EXPECT_THAT(trace.lines(), Contains(testing::EndsWith(".Table(\"REFBankAccountRole\")")));
  });
}

TEST_F(AccountSets, LookAccountSetsUpInTheBookOfTheRow) {
  Pick(u"F2");
  AddBudget({u"MEDVILNE", u"", 0, 0, u"", 0, u"", u""});
  AddBudget({u"BALTIJA", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"B1", u"F1"));
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanCode"), u"");
    form.PressCellButton(kGrid, 1, u"PlanCode");  // the lookup changes its book
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"F2"));
    EXPECT_EQ(form.CellText(kGrid, 1, u"PlanCode"), u"F2");
  });
}

TEST_F(AccountSets, OfferABooksEmptyListAllTheSame) {
  host.account_sets[u"BALTIJA"].clear();
  AddBudget({u"BALTIJA", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    ASSERT_THAT(platform.list_chooser.shown, SizeIs(1));
    EXPECT_THAT(OfferedCodes(), IsEmpty());
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanCode"), u"");
  });
}

TEST_F(AccountSets, OfferNothingWhenTheHostCannotReadTheList) {
  AddBudget({u"NĖRA", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
  });
}

TEST_F(AccountSets, OfferNothingToARowWithoutABook) {
  AddBudget({u"", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
  });
}

TEST_F(AccountSets, OfferNothingToARowWithoutABookAfterThoseOfAnotherRow) {
  AddBudget({u"MEDVILNE", u"", 0, 0, u"", 0, u"", u""});
  AddBudget({u"", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"PlanCode");
    form.PressCellButton(kGrid, 1, u"PlanCode");
    EXPECT_THAT(platform.list_chooser.shown, SizeIs(1));
  });
}

TEST_F(AccountSets, OfferNoDocumentsWithoutAnAccountSet) {
  AddBudget({u"MEDVILNE", u"", 0, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"BudgetLastDocCode");
    EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
  });
}

// --- Documents

TEST_F(AccountSets, OfferTheDocumentsOfTheCurrentPeriod) {
  Pick(u"BIU-2024");
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    TypeRow(form, 0);
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"BIU-2024"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"True", u"BIU-2024", u""));
  }));
  EXPECT_EQ(Records()[0][3], Value(Currency{120000}));
  EXPECT_EQ(Records()[0][5], Value(Currency{0}));
}

TEST_F(AccountSets, OfferTheDocumentsOfThePreviousPeriod) {
  Pick(u"BIU-2023");
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    TypeRow(form, 0);
    form.PressCellButton(kGrid, 0, u"BudgetLastDocCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"BIU-2023"));
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"True", u"", u"BIU-2023"));
  }));
  EXPECT_EQ(Records()[0][5], Value(Currency{110000}));
}

TEST_F(AccountSets, OfferTheDocumentsOfWholeMonths) {
  host.documents = {{21, u"MEDVILNE", u"BOBN", u"PRADZIA", DateFromParts(2024, 2, 1)},
                    {22, u"MEDVILNE", u"BOBN", u"PABAIGA", DateFromParts(2024, 4, 30)},
                    {23, u"MEDVILNE", u"BOBN", u"PRIES", DateFromParts(2024, 1, 31)},
                    {24, u"MEDVILNE", u"BOBN", u"PO", DateFromParts(2024, 5, 1)}};
  AddBudget({u"MEDVILNE", u"B1", 1, 0, u"", 0, u"", u""});
  Show([&](MemoryForm& form) {
    form.Click(u"optUser");
    // The pickers show months; the days that they keep are not the user's.
    form.PickDate(u"edCurrBegDate", DateFromParts(2024, 2, 29));
    form.PickDate(u"edCurrEndDate", DateFromParts(2024, 4, 3));
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"PRADZIA", u"PABAIGA"));
    form.PickDate(u"edPrevBegDate", DateFromParts(2024, 5, 15));
    form.PickDate(u"edPrevEndDate", DateFromParts(2024, 5, 2));
    form.PressCellButton(kGrid, 0, u"BudgetLastDocCode");
    EXPECT_THAT(OfferedCodes(), ElementsAre(u"PO"));
  });
}

TEST_F(AccountSets, RefuseADocumentWhoseCodeIsLongerThanItsField) {
  host.documents = {{21, u"MEDVILNE", u"BOBN", std::u16string(251, u'x'), DateFromParts(2024, 2, 1)}};
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  Pick(std::u16string(251, u'x'));
  EXPECT_TRUE(ShowAndConfirm([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(Row(form, 0), ElementsAre(u"MEDVILNE", u"B1", u"1", u"BIU-2024", u"BIU-2023"));
  }));
  EXPECT_EQ(Records()[0][3], Value(Currency{120000}));
}

TEST_F(AccountSets, KeepTheCellsWhenNoDocumentIsChosen) {
  AddBudget({u"MEDVILNE", u"B1", 1, 99, u"SENAS", 11, u"BIU-2023", u""});
  Show([&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(platform.list_chooser.shown, SizeIs(1));
    EXPECT_EQ(form.CellText(kGrid, 0, u"BudgetCurrDocCode"), u"SENAS");
  });
}

TEST_F(AccountSets, TakeAnIdentifierOfZeroOrBelowForNoDocument) {
  /// Always gives the same identifier, and a code whether there is a document or not.
  class Selection : public Described<Selection> {
   public:
    static ClassBuilder Describe() {
      return ClassBuilder(u"DocumentSelection", "")
          .Method<&Selection::Init>(u"Init", {{u"Book"}})
          .Method<&Selection::Open>(u"Open", {{u"DocumentType"}, {u"From"}, {u"To"}, {u"Condition"}})
          .Get<&Selection::Field>(u"Field", {{u"Name"}});
    }
    explicit Selection(std::int32_t identifier) : identifier_(identifier) {}
    void Init(ObjectPtr) {}
    std::int32_t Open(std::u16string, Date, Date, std::u16string) { return identifier_; }
    std::u16string Field(std::u16string) const { return u"KODAS"; }

   private:
    std::int32_t identifier_;
  };
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  for (const std::int32_t identifier : {-1, 0, 1}) {
    platform.object_factory.Register(host::kDocumentSelection,
                                     [identifier] { return MakeRef<Selection>(identifier); });
    Show([&](MemoryForm& form) {
      form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
      EXPECT_EQ(form.CellText(kGrid, 0, u"BudgetCurrDocCode"), identifier > 0 ? u"KODAS" : u"BIU-2024")
          << identifier;
    });
  }
}

TEST_F(AccountSets, RestrictTheDocumentsToThoseWithPostingsOnTheAccountSet) {
  Show([&](MemoryForm& form) {
    TypeRow(form, 0);
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
  });
  EXPECT_THAT(host.selection_conditions,
              ElementsAre(u"IDC IN (SELECT DISTINCT AccPost.DocId FROM GLContAccountPostBBN AccPost "
                          u"JOIN THDocument Doc ON AccPost.DocId = Doc.IDC "
                          u"WHERE AccPost.AccSetCode = 'B1' AND Doc.DocTypeCode = 'BOBN')"));
}

TEST_F(AccountSets, QuoteTheAccountSetInTheSubQuery) {
  EXPECT_EQ(BudgetDocumentSubQuery(TheGlobals().oBook, u"X' OR '1'='1"),
            u"(SELECT DISTINCT AccPost.DocId FROM GLContAccountPostBBN AccPost "
            u"JOIN THDocument Doc ON AccPost.DocId = Doc.IDC "
            u"WHERE AccPost.AccSetCode = 'X'' OR ''1''=''1' AND Doc.DocTypeCode = 'BOBN')");
}

TEST_F(AccountSets, EndSilentlyWhenTheHostFails) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  Pick(u"BIU-2024");
  Show([&](MemoryForm& form) {
    platform.faults.object_factory.Refuse(host::kQuery);
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
    EXPECT_EQ(form.CellText(kGrid, 0, u"BudgetCurrDocCode"), u"BIU-2024");
  });
}

// --- Book cache

TEST_F(AccountSets, OpenEachBookOnce) {
  BookCache books;
  const host::Book first = books.Get(u"MEDVILNE");
  EXPECT_EQ(books.Get(u"MEDVILNE").object(), first.object());
  EXPECT_NE(books.Get(u"BALTIJA").object(), first.object());
  EXPECT_EQ(books.Get(u"MEDVILNE").object(), first.object());
  EXPECT_FALSE(books.Get(u""));
  EXPECT_NE(RaisedBy([&] { books.Get(u"NĖRA"); }), 0);
}

TEST_F(AccountSets, KeepNoBookThatTheHostDoesNotGive) {
  /// Gives the books that it has, and nothing for the others.
  class Giving : public Described<Giving> {
   public:
    static ClassBuilder Describe() {
      return ClassBuilder(u"CommonObjects", "").Method<&Giving::CreateBook>(u"CreateBook", {{u"BookCode"}});
    }
    ObjectPtr CreateBook(std::u16string code) {
      return code == u"MEDVILNE" ? TheGlobals().oBook.object() : ObjectPtr();
    }
  };
  platform.object_factory.Register(host::kCommonObjects, [] { return MakeRef<Giving>(); });
  BookCache books;
  EXPECT_FALSE(books.Get(u"NĖRA"));
  EXPECT_TRUE(books.Get(u"MEDVILNE"));
  EXPECT_FALSE(books.Get(u"NĖRA"));
  EXPECT_TRUE(books.Get(u"MEDVILNE"));
}

TEST_F(AccountSets, AreNotWrittenBackBeforeTheyWereShown) {
  AddBudget({u"MEDVILNE", u"B1", 1, 12, u"BIU-2024", 11, u"BIU-2023", u""});
  BookCache books;
  AccountSetGrid grid(books, {});
  EXPECT_EQ(RaisedBy([&] { grid.WriteBack(budgets); }), kObjectNotSet);
  EXPECT_EQ(budgets.RecordCount(), 1);
}

}  // namespace
}  // namespace qva
