// What tests of ClearFormulas share.
#pragma once

#include "tests/reports/report_fixture.h"

namespace qva {

class Formulas : public ReportTest {
 protected:
  void Clear(std::u16string_view address) { Call(reports, u"ClearFormulas", {TracedCells(address)}); }
  std::u16string FormulaOf(std::u16string_view address) const {
    return Get(Cells(address), u"Formula").ToText();
  }
};

}  // namespace qva
