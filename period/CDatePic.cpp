#include "period/CDatePic.h"

#include <cmath>

#include "period/frmDatePic.h"
#include "platform/services.h"

namespace qva {
namespace {

constexpr int kEnter = 13;
constexpr int kEscape = 27;

}  // namespace

const ClassDescription& CDatePic::Description() {
  static const ClassDescription& description =
      ClassBuilder(u"CDatePic", "Lets the user pick a date")
          .Method<&CDatePic::Show>(u"Show", {{u"Selectdate"}}, "Shows the calendar; true when confirmed");
  return description;
}

bool CDatePic::Show(Date& Selectdate) {
  if (Selectdate.serial == 0) Selectdate = {std::floor(GetServices().clock->Now().serial)};

  frmDatePic& form = frmDatePic::Load();
  struct UnloadForm {
    ~UnloadForm() { frmDatePic::Unload(); }
  } const unload;
  ui::MonthView& calendar = form.MonthView1();
  bool is_confirmed = false;
  calendar.on_day_double_click = [&] {
    is_confirmed = true;
    form.Hide();
  };
  calendar.on_key_press = [&](int character) {
    // Any other key takes a confirmation back.
    is_confirmed = character == kEnter;
    if (character == kEnter || character == kEscape) form.Hide();
  };
  calendar.SetValue(Selectdate);
  calendar.SetFocus();
  form.ShowModal();
  if (is_confirmed) Selectdate = calendar.Value();
  return is_confirmed;
}

}  // namespace qva
