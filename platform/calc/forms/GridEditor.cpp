#include "platform/calc/forms/GridEditor.h"

#include <com/sun/star/awt/XTextComponent.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormControl.h"

namespace qva::calc {

using css::awt::XTextComponent;

GridEditor::GridEditor(FormControl& owner)
    : owner_(owner),
      window_("edit", owner.window().peer(), css::awt::VclWindowPeerAttribute::NOBORDER, *this) {
}

void GridEditor::Open(const css::awt::Rectangle& place, std::u16string_view text, bool marked) {
  const auto field = window_.As<XTextComponent>();
  field->setText(ToUno(text));
  const auto length = static_cast<sal_Int32>(text.size());
  field->setSelection({marked ? 0 : length, length});
  is_open_ = true;
  changed_ = false;
  window_.Place(place);
  window_.window()->setVisible(true);
  window_.window()->setFocus();
  field->setSelection({marked ? 0 : length, length});
}

void GridEditor::Close() {
  is_open_ = false;
  window_.window()->setVisible(false);
}

std::u16string GridEditor::Text() const {
  return FromUno(window_.As<XTextComponent>()->getText());
}

void GridEditor::OnTextChanged() {
  changed_ = true;
}

void GridEditor::OnFocus(bool gained) {
  if (!gained && is_open_ && on_left) on_left();
}

void GridEditor::OnFailure(std::exception_ptr failure) noexcept {
  owner_.OnFailure(std::move(failure));
}

}  // namespace qva::calc
