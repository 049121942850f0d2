// The period on the embedded host: the dialog's grid, and the budget documents that the database offers.
#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/excel.h"
#include "platform/memory/excel/Application.h"
#include "platform/settings.h"
#include "server/PublicClasses.h"
#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A workbook of 2024 with one row of budgets, connected to the book MEDVILNE.
class PeriodOnEmbeddedHost : public HostTest {
 protected:
  static constexpr std::u16string_view kGrid = u"SpecGrid";

  PeriodOnEmbeddedHost() {
    for (const std::u16string_view identifier : host::kCreatableClasses) {
      platform_.object_factory.Register(identifier,
                                        [this, identifier] { return factory_.Create(identifier); });
    }
    platform_.registry.SetText(SettingsKeyPath(host::kSettingsApplication, host::kFormsSection),
                               host::kBookSetting, platform_.locale.ToAnsi(u"MEDVILNE"));
    global_ = Create(u"gExcelObject");
    Call(global_, u"InitConnectEX", {excel_, ObjectPtr()});
    sheet_ = excel::Worksheet(GetObject(excel_->AddWorkbook(), u"ActiveSheet"));
    period_ = Create(u"CRepPeriod");
    Call(period_, u"Init", {sheet_.object()});
    Set(u"AccPlan", u"BIUDZ");
    Set(u"RepYear", 2024);
    Set(u"BudgetCount", 1);
  }
  ~PeriodOnEmbeddedHost() override {
    period_.reset();
    sheet_ = {};
    global_.reset();
    excel_.reset();
    ResetGlobals();
    ShutDown();
  }

  static ObjectPtr Create(std::u16string_view class_name) {
    return CreatePublicObject(*FindPublicClass(u"QVA_Varnholt." + std::u16string(class_name)));
  }
  void Set(std::u16string_view name, Value value) { sheet_.Range(name).SetValue(std::move(value)); }
  /// A cell of the table's first row.
  excel::Range Budget(std::int32_t column) { return sheet_.Range(u"BookCode").Offset(1, column); }

  /// Shows the period with an account set in its one row to a user, who confirms it in the end.
  bool Edit(std::u16string_view book, std::u16string_view account_set, const MemoryForm::User& user) {
    Budget(0).SetValue(book);
    Budget(1).SetValue(u"'" + std::u16string(account_set));  // as text, whatever it begins with
    platform_.forms.user = [&](MemoryForm& form) {
      user(form);
      form.Click(u"btOk");
    };
    return Call(period_, u"Edit").ToBoolean();
  }
  /// The codes of the documents offered for the account set and the year 2024; "no list" when none is shown.
  std::vector<std::string> Offered(std::u16string_view book, std::u16string_view account_set) {
    chooser_.shown.clear();
    Edit(book, account_set, [](MemoryForm& form) { form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode"); });
    if (chooser_.shown.size() != 1) return {"no list"};
    std::vector<std::string> codes;
    for (const auto& row : chooser_.shown.front().rows) codes.push_back(ToUtf8(row.front()));
    return codes;
  }

  Ref<memory::Application> excel_ = MakeRef<memory::Application>();
  ObjectPtr global_;
  excel::Worksheet sheet_;
  ObjectPtr period_;
};

TEST_F(PeriodOnEmbeddedHost, OffersTheDocumentsWithPostingsOnTheAccountSetOfTheRow) {
  EXPECT_THAT(Offered(u"MEDVILNE", u"BIUDZ"), ElementsAre("BIU-2024-01", "BIU-2024-02"));
  EXPECT_THAT(Offered(u"MEDVILNE", u"GAMYBA"), ElementsAre("BIU-2024-03"));
  EXPECT_THAT(Offered(u"BALTIJA", u"ŽVEJYBA"), ElementsAre("BIU-2024-02"));
  EXPECT_THAT(Offered(u"MEDVILNE", u"PAGR"), IsEmpty());
}

TEST_F(PeriodOnEmbeddedHost, TakesAnAccountSetWithAQuotationMarkForWhatItIs) {
  EXPECT_THAT(Offered(u"MEDVILNE", u"O'BRIEN"), ElementsAre("BIU-2024-01"));
}

TEST_F(PeriodOnEmbeddedHost, IsNeitherBrokenNorWidenedByAnyAccountSet) {
  for (const std::u16string_view hostile :
       {u"'", u"''", u"\"", u"BIUDZ'", u"X' OR '1'='1", u"X') OR (1=1", u"X') --", u"X' --", u"X'/*", u"X';",
        u"%", u"?1", u"X\\' OR 1=1", u"BIUDZ' OR 'a'='a"}) {
    EXPECT_THAT(Offered(u"MEDVILNE", hostile), IsEmpty()) << ToUtf8(hostile);
  }
  EXPECT_THAT(Offered(u"MEDVILNE", std::u16string_view(u"BIUDZ\0", 6)), ElementsAre("no list"));
}

TEST_F(PeriodOnEmbeddedHost, KeepsTheDocumentsOfBothPeriodsInTheWorkbook) {
  Pick(0);
  EXPECT_TRUE(Edit(u"MEDVILNE", u"BIUDZ", [](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    form.PressCellButton(kGrid, 0, u"BudgetLastDocCode");
  }));
  EXPECT_EQ(Budget(3).Value().ToInt32(), 102);
  EXPECT_EQ(Budget(4).Value(), Value(u"BIU-2024-01"));
  EXPECT_EQ(Budget(5).Value().ToInt32(), 101);
  EXPECT_EQ(Budget(6).Value(), Value(u"BIU-2023-01"));
}

TEST_F(PeriodOnEmbeddedHost, OffersTheDocumentsOfThePeriodThatTheDialogShows) {
  chooser_.shown.clear();
  Edit(u"MEDVILNE", u"BIUDZ", [](MemoryForm& form) {
    form.Click(u"optHalfYearTwo");
    form.PressCellButton(kGrid, 0, u"BudgetCurrDocCode");
    form.PressCellButton(kGrid, 0, u"BudgetLastDocCode");
  });
  ASSERT_THAT(chooser_.shown, SizeIs(2));
  ASSERT_THAT(chooser_.shown[0].rows, SizeIs(1));
  EXPECT_EQ(chooser_.shown[0].rows[0][0], u"BIU-2024-02");
  ASSERT_THAT(chooser_.shown[1].rows, SizeIs(1));
  EXPECT_EQ(chooser_.shown[1].rows[0][0], u"BIU-2024-01");
}

TEST_F(PeriodOnEmbeddedHost, LooksUpAndChecksCodesInTheDatabase) {
  Edit(u"MEDVILNE", u"", [&](MemoryForm& form) {
    form.PressCellButton(kGrid, 0, u"BookCode");
    form.PressCellButton(kGrid, 0, u"PlanCode");
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"BookCode", u"NERA"));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"PlanCode", u"ŽVEJYBA"));
    EXPECT_FALSE(form.TypeCell(kGrid, 0, u"PlanCode", u"X' OR '1'='1"));
    EXPECT_TRUE(form.TypeCell(kGrid, 0, u"PlanCode", u"O'BRIEN"));
    EXPECT_EQ(form.CellText(kGrid, 0, u"PlanIsBudget"), u"True");
  });
  const auto& lookups = platform_.list_chooser.shown;
  ASSERT_THAT(lookups, SizeIs(2));
  EXPECT_THAT(lookups[0].rows, SizeIs(2));
  EXPECT_THAT(lookups[1].rows, SizeIs(4));
}

}  // namespace
}  // namespace qva::embedded
