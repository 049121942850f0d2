// AccountSetGrid: the lists that it offers, of books, account sets and documents.
#include "tests/period/account_sets_fixture.h"

namespace qva {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

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

}  // namespace
}  // namespace qva
