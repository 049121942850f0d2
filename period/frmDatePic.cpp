#include "period/frmDatePic.h"

#include "platform/error.h"
#include "platform/services.h"

namespace qva {
namespace {

/// Empty but while a picker is shown.
std::unique_ptr<frmDatePic>& TheForm() {
  static auto& form = *new std::unique_ptr<frmDatePic>;  // never destroyed: a host ends as it likes
  return form;
}

ui::FormDescription Layout() {
  ui::FormDescription form;
  form.name = u"frmDatePic";
  form.caption = u"Pasirinkite data";
  form.width = 240;
  form.height = 190;
  form.controls = {{ui::ControlKind::MonthView, u"MonthView1", u"", {4, 4, 232, 182}, u"", 0}};
  return form;
}

}  // namespace

frmDatePic& frmDatePic::Load() {
  std::unique_ptr<frmDatePic>& form = TheForm();
  if (form) throw AutomationError(kFormAlreadyDisplayed);
  form.reset(new frmDatePic);
  return *form;
}

void frmDatePic::Unload() {
  TheForm().reset();
}

frmDatePic::frmDatePic() : form_(GetServices().forms->Create(Layout())) {
}

}  // namespace qva
