// What tests of the report period's dialog share.
#pragma once

#include "period/frmReportPeriod.h"
#include "tests/period/form_lines.h"
#include "tests/period/period_fixture.h"

namespace qva {

class ReportPeriodDialog : public PeriodTest {
 protected:
  /// What the last refused OK said and where it put the focus; empty when OK was not refused.
  struct Refused {
    std::u16string message;
    std::u16string focus;
    bool operator==(const Refused&) const = default;
  };

  /// Lets the user act and press OK once.
  Refused Confirm(const User& user) {
    Refused refused;
    Show([&](MemoryForm& form) {
      user(form);
      const std::size_t before = platform.message_box.boxes().size();
      form.Click(u"btOk");
      if (!form.Visible()) return;
      refused.focus = form.focused();
      if (platform.message_box.boxes().size() > before)
        refused.message = platform.message_box.boxes().back().text;
    });
    return refused;
  }
};

}  // namespace qva
