// The sample companies' ledgers: what reports are made of must agree with itself.
#include <map>

#include "platform/date.h"
#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

/// Amounts in cents, by account.
using Balances = std::map<std::string, std::int64_t>;

class Ledger : public HostTest, public testing::WithParamInterface<const char16_t*> {
 protected:
  /// The rows of a table of the book as texts and numbers, in the order of the fields.
  std::vector<Record> Rows(std::u16string_view table, const std::vector<Value>& fields) {
    const Value rows = OpenBook(GetParam()).Table(table).Rows(fields);
    const Array& block = rows.ToArray();
    std::vector<Record> records;
    for (std::size_t i = 0; i < block.elements.size(); ++i) {
      if (i % fields.size() == 0) records.emplace_back();
      records.back().push_back(block.elements[i]);
    }
    return records;
  }

  /// What each account holds at the end of a month, debits positive.
  Balances BalancesAt(std::string_view month) {
    Balances balances;
    for (const Record& row : Rows(u"GLAccountMonth", {u"AccountCode", u"Code", u"Debit", u"Credit"})) {
      const std::string code = ToUtf8(row[1].ToText());
      const std::size_t slash = code.find('/');
      if (code.substr(slash + 1, 7) > month) continue;
      balances[ToUtf8(row[0].ToText())] += row[2].ToInt32() - row[3].ToInt32();
    }
    return balances;
  }
  static std::int64_t Sum(const Balances& balances, std::string_view first, std::string_view last) {
    std::int64_t sum = 0;
    for (const auto& [account, amount] : balances) {
      if (account.substr(0, first.size()) >= first && account.substr(0, last.size()) <= last) sum += amount;
    }
    return sum;
  }
  static std::vector<std::string> Months() {
    std::vector<std::string> months{"2023-12"};
    for (const char* year : {"2024-", "2025-"}) {
      for (int month = 1; month <= 12; ++month) {
        months.push_back(year + std::string(month < 10 ? "0" : "") + std::to_string(month));
      }
    }
    return months;
  }
};

INSTANTIATE_TEST_SUITE_P(Of, Ledger, testing::Values(u"MEDVILNE", u"BALTIJA"),
                         [](const auto& tested) { return ToUtf8(tested.param); });

TEST_P(Ledger, AssetsEqualEquityLiabilitiesAndProfitAtTheEndOfEachMonth) {
  for (const std::string& month : Months()) {
    const Balances balances = BalancesAt(month);
    EXPECT_GT(Sum(balances, "1", "2"), 0) << month;
    EXPECT_EQ(Sum(balances, "1", "2"), -Sum(balances, "3", "6")) << month;
    EXPECT_EQ(Sum(balances, "3900", "3900"), 0) << month << ": the summary account is not empty";
  }
}

TEST_P(Ledger, TheProfitOfAYearIsWhatItsClosingBringsToEquity) {
  for (const std::string year : {"2024", "2025"}) {
    std::int64_t profit = 0;
    for (const Record& row :
         Rows(u"GLAccountMonth", {u"AccountCode", u"Code", u"IsClosing", u"Debit", u"Credit"})) {
      const bool of_year = ToUtf8(row[1].ToText()).find("/" + year) != std::string::npos;
      if (!of_year || row[2].ToBoolean() || row[0].ToText() < u"5") continue;
      profit += row[4].ToInt32() - row[3].ToInt32();
    }
    EXPECT_GT(profit, 0);
    EXPECT_EQ(BalancesAt(year + "-12")["3411"], -profit);
    EXPECT_EQ(Sum(BalancesAt(year + "-12"), "5", "6"), 0) << "income and expenses are not closed";
  }
}

TEST_P(Ledger, CashStocksAndReceivablesAreNeverNegativeNorDebtsPositive) {
  for (const std::string& month : Months()) {
    const Balances balances = BalancesAt(month);
    for (const char* account : {"2010", "2030", "2410", "2710", "2720", "2910"}) {
      EXPECT_GE(Sum(balances, account, account), 0) << account << " " << month;
    }
    for (const char* account : {"3011", "3411", "3412", "4210", "4430", "4480", "4492"}) {
      EXPECT_LE(Sum(balances, account, account), 0) << account << " " << month;
    }
  }
}

TEST_P(Ledger, TheRegistersOfInvoicesGiveTheVatThatTheLedgerOwes) {
  std::map<std::string, std::int64_t> owed;
  for (const Record& row : Rows(u"VATMonth", {u"Code", u"IsSale", u"VATClassCode", u"Base", u"VATAmount"})) {
    const std::string month = ToUtf8(row[0].ToText()).substr(0, 7);
    const bool reverse_charge = row[2].ToText() == u"PVM16";
    const bool is_standard = reverse_charge || row[2].ToText() == u"PVM1";
    EXPECT_NEAR(row[4].ToInt32(), is_standard ? row[3].ToInt32() * 0.21 : 0.0, 10) << month;
    if (row[1].ToBoolean()) owed[month] += row[4].ToInt32();
    if (!row[1].ToBoolean() && !reverse_charge) owed[month] -= row[4].ToInt32();
  }
  EXPECT_EQ(owed.size(), 24u);
  for (const auto& [month, amount] : owed) EXPECT_EQ(BalancesAt(month)["4492"], -amount) << month;
}

TEST_P(Ledger, EntriesAddUpToTheTurnoversOfTheirMonths) {
  std::map<std::string, std::int64_t> debits, credits;
  for (const Record& row :
       Rows(u"GLEntry", {u"EntryDate", u"Kind", u"DebitAccount", u"CreditAccount", u"Amount"})) {
    const std::u16string month =
        u"/" + FormatByWindowsPattern(row[0].ToDate(), u"yyyy-MM") + (row[1].ToText() == u"UZD" ? u"U" : u"");
    debits[ToUtf8(row[2].ToText() + month)] += row[4].ToInt32();
    credits[ToUtf8(row[3].ToText() + month)] += row[4].ToInt32();
  }
  EXPECT_GT(debits.size(), 500u);
  std::size_t turnovers = 0;
  for (const Record& row : Rows(u"GLAccountMonth", {u"Code", u"Debit", u"Credit"})) {
    const std::string code = ToUtf8(row[0].ToText());
    EXPECT_EQ(debits[code], row[1].ToInt32()) << code;
    EXPECT_EQ(credits[code], row[2].ToInt32()) << code;
    ++turnovers;
  }
  debits.merge(credits);
  EXPECT_EQ(debits.size(), turnovers);
}

TEST_P(Ledger, AccountsAndPostingsOfDocumentsAreGivenOut) {
  EXPECT_TRUE(OpenBook(GetParam()).Table(u"GLAccount").Seek(u"2710"));
  const auto postings = OpenBook(u"MEDVILNE").Table(u"GLDocumentPosting");
  ASSERT_TRUE(postings.Seek(u"105/1"));
  EXPECT_EQ(postings.Field(u"AccSetCode"), Value(u"BIUDZ"));
  EXPECT_EQ(postings.Field(u"Amount"), Value(Currency{330000000000})) << "in cents";
  EXPECT_FALSE(postings.Seek(u"204/1")) << "another book's";
}

}  // namespace
}  // namespace qva::embedded
