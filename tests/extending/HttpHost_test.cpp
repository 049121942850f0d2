// A report on a host that has no database: what the sample reports' macros ask of their host, answered over
// HTTP.
#include "tests/extending/HttpHost.h"

#include <map>

#include "platform/date.h"
#include "tests/period/rep_period_fixture.h"
#include "tests/test_paths.h"

namespace qva::http {
namespace {

using testing::ElementsAre;

/// Answers from memory, and keeps what it was asked.
class StubService : public Service {
 public:
  std::optional<std::string> Get(const std::string& path) override {
    asked.push_back(path);
    if (!answers) throw AutomationError(kDeviceError);
    const auto found = resources.find(path);
    return found == resources.end() ? std::nullopt : std::optional(found->second);
  }

  std::map<std::string, std::string> resources;
  std::vector<std::string> asked;
  bool answers = true;
};

class ReportOverHttp : public ReportPeriodTest {
 protected:
  static constexpr const char* kDocuments =
      "/books/MEDVILNE/documents?type=BOBN&from=2024-01-01&to=2024-12-31&where="
      "%28in%20IDC%20"
      "%28each%20AccPost.DocId%20of%20GLContAccountPostBBN%20AccPost%2C%20THDocument%20Doc%20"
      "on%20AccPost.DocId%20%3D%20Doc.IDC%20"
      "where%20%28and%20%28%3D%20AccPost.AccSetCode%20%22BIUDZ%22%29%20"
      "%28%3D%20Doc.DocTypeCode%20%22BOBN%22%29%29%29%29";

  ReportOverHttp() {
    service.resources = {
        {"/books/MEDVILNE", "UAB „Medvilnės namai“"},
        {"/books/MEDVILNE/company",
         "Code\tVATCode\tName\tAddress\tTEL\tFA\tDIR\tFDIR\n"
         "398417265\tLT100099172410\tUAB „Medvilnės namai“\tAudėjų g. 14-3, LT-44177 Kaunas\t"
         "+370 37 000 112\t+370 37 000 113\tRūta Žiedaitė\tŠarūnas Įkalnis\n"},
        {"/books/MEDVILNE/tables/glaccountset",
         "Code\tName\tIsBudget:flag\n"
         "BIUDZ\tBiudžetas\t1\n"
         "PAGR\tPagrindinis\t0\n"},
        {"/books/MEDVILNE/tables/refbankaccountrole", "Code\tName\n"},
        {"/books/MEDVILNE/tables/glaccountmonth",
         "Code\tAccountCode\tMonth:day\tIsClosing:flag\tDebit:money\tCredit:money\n"
         "1\t500\t2024-04-01\t0\t1250050\t0\n"
         "2\t500\t2024-05-01\t0\t0\t450025\n"
         "3\t271\t2024-05-01\t0\t99\t0\n"},
        {"/folders/BookRepSave", "C:\\Archyvas"},
        {kDocuments,
         "IDC:number\tCode\tDate:day\tName\n"
         "101\tBIU-2024-01\t2024-05-02\tMetų biudžetas\n"}};
    for (const std::u16string_view identifier : host::kCreatableClasses) {
      platform.object_factory.Register(identifier,
                                       [this, identifier] { return over_http.Create(identifier); });
    }
    platform.files.SetFolder(u"C:\\Archyvas");
    global.reset();  // it is connected to another host
    ResetGlobals();
    ShutDown();
  }

  /// The cells of a column, from its first row.
  std::vector<Value> Column(const std::u16string& letter, int rows) {
    std::vector<Value> values;
    for (int row = 1; row <= rows; ++row) values.push_back(At(letter + NumberText(row)));
    return values;
  }

  StubService service;
  HttpHost over_http{service, platform.services(), SourceFolder() / "host"};
};

TEST_F(ReportOverHttp, ConnectsAsksThePeriodFillsItsCellsAndStoresItself) {
  // The connection.
  global = Connected();
  EXPECT_EQ(Get(GetObject(global, u"oBook"), u"BookCode"), Value(u"MEDVILNE"));
  EXPECT_NE(Get(global, u"oMyPlant"), Nothing());

  // The period, and in it a budget's document.
  period = Create(u"CRepPeriod");
  NameCells();
  Set(u"AccPlan", u"BIUDZ");
  Set(u"BudgetCount", 1);
  SetRow(1, {u"MEDVILNE", u"BIUDZ", true});
  platform.list_chooser.user = [](const ChoiceList&, std::u16string_view) { return std::size_t{0}; };
  EXPECT_TRUE(EditAndConfirm([](MemoryForm& form) {
    EXPECT_EQ(form.CellText(u"SpecGrid", 0, u"PlanCode"), u"BIUDZ");
    form.PressCellButton(u"SpecGrid", 0, u"BudgetCurrDocCode");
  }));
  ASSERT_EQ(platform.list_chooser.shown.size(), 1u);
  EXPECT_THAT(platform.list_chooser.shown[0].rows,
              ElementsAre(ElementsAre(u"BIU-2024-01", u"2024-05-02", u"Metų biudžetas")));
  EXPECT_EQ(RowOf(1)[4], Value(u"BIU-2024-01"));

  // The company.
  const ObjectPtr report = Create(u"CReports");
  Call(report, u"Init", {u"Balansas"});
  Arguments attributes;
  for (int row = 1; row <= 8; ++row) {
    attributes.positional.push_back(Cell(u"D" + NumberText(row)).object());
  }
  Call(report, u"FillAttr", attributes);
  EXPECT_THAT(Column(u"D", 8), ElementsAre(398417265.0, u"LT100099172410", u"UAB „Medvilnės namai“",
                                           u"Audėjų g. 14-3, LT-44177 Kaunas", u"+370 37 000 112",
                                           u"+370 37 000 113", u"Rūta Žiedaitė", u"Šarūnas Įkalnis"));

  // The ledger, which macros read themselves.
  const Value turnovers = Call(GetObject(GetObject(global, u"oBook"), u"Table", {u"GLAccountMonth"}), u"Rows",
                               {Array::Of({u"AccountCode", u"Month", u"Debit", u"Credit"})});
  Put(Cell(u"F1").Resize(3, 4).object(), u"Value", turnovers);
  EXPECT_THAT(Column(u"F", 3), ElementsAre(500.0, 500.0, 271.0));
  EXPECT_EQ(At(u"G2").ToDate(), DateFromParts(2024, 5, 1));
  EXPECT_EQ(At(u"H1").ToDouble() - At(u"I2").ToDouble(), 800025);

  // The archive.
  Put(GetObject(workbook, u"VBProject"), u"Name", u"Balansas");
  Names().Add(u"Saved", u"=Sheet1!$K$1");
  Set(u"L1", 2024);
  Arguments save{Cell(u"L1").object(), Nothing(), false, false};
  Call(report, u"SaveDoc", save);
  EXPECT_TRUE(excel->HasFile(u"C:\\Archyvas\\2024\\Balansas_2024.xls"));
  EXPECT_EQ(At(u"K1"), Value(true));
  ASSERT_FALSE(platform.message_box.boxes().empty());
  EXPECT_THAT(ToUtf8(platform.message_box.boxes().back().text), testing::HasSubstr("Balansas_2024.xls"));

  EXPECT_THAT(service.asked,
              ElementsAre("/books/MEDVILNE",                                         // of the connection
                          "/books/MEDVILNE", "/books/MEDVILNE/tables/glaccountset",  // of the dialog
                          "/books/MEDVILNE/tables/refbankaccountrole", kDocuments,
                          "/books/MEDVILNE/tables/glaccountset",  // when it is confirmed
                          "/books/MEDVILNE/company", "/books/MEDVILNE/tables/glaccountmonth",
                          "/folders/BookRepSave"));
}

TEST_F(ReportOverHttp, IsToldWhenThereIsNoBookAndWhenTheServiceDoesNotAnswer) {
  const ObjectPtr not_connected = Create(u"gExcelObject");
  const auto connect = [&] { Call(not_connected, u"InitConnectEX", {application, ObjectPtr()}); };
  SetSetting(u"Forms\\MDI", u"P0", u"NERA");
  EXPECT_EQ(ErrorOf(connect).value().description(), u"Nepavyko prisijungti prie apskaitos knygos „NERA“.");
  SetSetting(u"Forms\\MDI", u"P0", u"MEDVILNE");
  service.answers = false;
  EXPECT_EQ(ErrorOf(connect).value().description(),
            u"Nepavyko prisijungti prie apskaitos knygos „MEDVILNE“.");
  service.answers = true;
  EXPECT_NO_THROW(connect());
}

}  // namespace
}  // namespace qva::http
