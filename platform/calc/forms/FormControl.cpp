#include "platform/calc/forms/FormControl.h"

#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>

#include "platform/calc/forms/FormWindow.h"

namespace qva::calc {

FormControl::FormControl(FormWindow& form, const ui::ControlDescription& description, const char* service,
                         sal_Int32 attributes)
    : form_(form), description_(description), window_(service, form.window().peer(), attributes, *this) {
}

void FormControl::SetWindowCaption(std::u16string_view caption) {
  caption_ = caption;
  ShowCaption();
}

void FormControl::ShowCaption() {
  if (caption_) window_.SetCaption(*caption_);
}

void FormControl::SetEnabled(bool enabled) {
  enabled_ = enabled;
  if (!enabled) {
    const auto settings = window_.As<css::awt::XStyleSettingsSupplier>()->getStyleSettings();
    settings->setDisableColor(form_.theme().disabled_text);
  }
  window_.window()->setEnable(enabled);
  window_.Invalidate();
}

void FormControl::SetFocus() {
  form_.Focus(*this);
}

void FormControl::SetShown(bool shown) {
  shown_ = shown;
  window_.window()->setVisible(shown);
}

void FormControl::OnFailure(std::exception_ptr failure) noexcept {
  form_.Fail(std::move(failure));
}

}  // namespace qva::calc
