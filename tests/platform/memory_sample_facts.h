// What MemoryHost::Sample() holds, for the host's contract over it and over a service that tells the same.
#pragma once

#include "tests/platform/host_contract.h"

namespace qva {

/// The budgets are each host's own: none may stand in the order that the contract asks for.
inline HostFacts MemorySampleFacts(decltype(HostFacts::budgets) budgets) {
  return {.book = u"MEDVILNE",
          .empty_book = u"TUSCIA",
          .account_sets = {{u"B1", u"Biudžetas", true}, {u"F1", u"Finansinė apskaita", false}},
          .budgets = std::move(budgets),
          .company_code = u"302511789",
          .vat_code = u"LT100005117810",
          .company_name = u"UAB „Medvilnė“",
          .address = u"Šaltinių g. 12, LT-03215 Vilnius",
          .telephone = u"(8 5) 212 3456",
          .fax = u"(8 5) 212 3457",
          .director = u"Žygimantas Ąžuolaitis",
          .chief_accountant = u"Eglė Čepėnienė",
          .archive = u"C:\\Ataskaitos",
          .number_of_a_text = 800};
}

}  // namespace qva
