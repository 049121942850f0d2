#include "period/HostForm.h"

#include "platform/host.h"
#include "platform/message_box.h"
#include "platform/services.h"

namespace qva {

HostForm::HostForm(ui::Form& form, ui::Button& ok, ui::Button& cancel, std::u16string title)
    : form_(form), title_(std::move(title)) {
  ok.on_click = [this] { Confirm(); };
  cancel.on_click = [this] { form_.Hide(); };
}

bool HostForm::ShowModal() {
  if (before_show) before_show();
  form_.ShowModal();
  return confirmed_;
}

void HostForm::Confirm() {
  bool verdict = true;
  std::u16string message;
  if (ok_click) ok_click(verdict, message);
  if (verdict) {
    confirmed_ = true;
    form_.Hide();
  } else if (!message.empty()) {
    IgnoreErrors([&] { host::Message::Create(*GetServices().object_factory).Show(message, title_, {kOk}); });
  }
}

}  // namespace qva
