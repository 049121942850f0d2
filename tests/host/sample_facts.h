// What the embedded host's sample holds, for the host's contract: here and as Windows' demo host.
#pragma once

#include "platform/date.h"
#include "tests/platform/host_contract.h"

namespace qva::embedded {

/// SQL at the sample's end: a book without account sets, and a document of the day of another one whose code
/// and number are not in its order.
inline constexpr char kContractSql[] =
    "INSERT INTO Book (Code, Name, CompanyCode) VALUES ('TUSCIA', 'Tuščia', '398417265');\n"
    "INSERT INTO THDocument (IDC, BookCode, DocTypeCode, Code, DocDate, Name) "
    "VALUES (190, 'MEDVILNE', 'BOBN', 'BIU-2024-00', '2024-07-01', 'Pirmas');\n";

inline HostFacts SampleFacts() {
  return {.book = u"MEDVILNE",
          .empty_book = u"TUSCIA",
          .account_sets = {{u"BIUDZ", u"Biudžeto sąskaitų planas", true},
                           {u"GAMYBA", u"Gamybos padalinio biudžetas", true},
                           {u"O'BRIEN", u"Padalinio „O'Brien“ biudžetas", true},
                           {u"PAGR", u"Pagrindinis sąskaitų planas", false}},
          .budgets = {{102, u"BIU-2024-01", DateFromParts(2024, 1, 1)},
                      {190, u"BIU-2024-00", DateFromParts(2024, 7, 1)},
                      {103, u"BIU-2024-02", DateFromParts(2024, 7, 1)}},
          .company_code = u"398417265",
          .vat_code = u"LT100099172410",
          .company_name = u"UAB „Medvilnės namai“",
          .address = u"Audėjų g. 14-3, LT-44177 Kaunas",
          .telephone = u"+370 37 000 112",
          .fax = u"+370 37 000 113",
          .director = u"Rūta Žiedaitė",
          .chief_accountant = u"Šarūnas Įkalnis",
          .archive = u"C:\\Ataskaitos\\Archyvas",
          .number_of_a_text = 800};
}

}  // namespace qva::embedded
