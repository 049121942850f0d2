#include "platform/calc/forms/NativeControls.h"

#include <com/sun/star/awt/XComboBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>

#include <algorithm>
#include <limits>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/forms/form_description.h"

namespace qva::calc {

using css::awt::XComboBox;
using css::awt::XRadioButton;
using css::awt::XTextComponent;

namespace {

namespace attribute = css::awt::VclWindowPeerAttribute;

/// To assistive technology a label is the name of all fields after it, up to the next label, and would be
/// that of a grid's cells, too. Where one stands, the field that it belongs to is told its name.
bool IsBesideGrid(const FormWindow& form, const ui::ControlDescription& label) {
  return std::ranges::any_of(form.description().controls, [&](const ui::ControlDescription& control) {
    return control.kind == ui::ControlKind::Grid && control.parent == label.parent &&
           control.page == label.page;
  });
}

}  // namespace

LabelControl::LabelControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "fixedtext", IsBesideGrid(form, description) ? attribute::NOLABEL : 0) {
  window().SetProperty("MultiLine", Any(true));
  window().SetProperty("VerticalAlign", Any(css::style::VerticalAlignment_MIDDLE));
  SetWindowCaption(description.caption);
}

NoteControl::NoteControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "fixedtext", 0) {
  window().SetProperty("VerticalAlign", Any(css::style::VerticalAlignment_MIDDLE));
  SetWindowCaption(description.caption);
}

void NoteControl::SetText(std::u16string_view text) {
  if (max_length_ > 0) text = text.substr(0, max_length_);
  if (text == Text()) return;
  SetWindowCaption(text);
  if (on_change) on_change();
}

FrameControl::FrameControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "groupbox", 0) {
  SetWindowCaption(description.caption);
}

// --- Text boxes --------------------------------------------------------------------------------------------

TextBoxControl::TextBoxControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "edit", css::awt::WindowAttribute::BORDER) {
  SetText(description.caption);
  if (form.controls().empty()) return;
  const ui::ControlDescription& before = form.controls().back()->description();
  if (before.kind == ui::ControlKind::Label && IsBesideGrid(form, before)) {
    window().SetProperty("AccessibleName", Any(ToUno(before.caption)));
  }
}

std::u16string TextBoxControl::Text() const {
  return FromUno(window().As<XTextComponent>()->getText());
}

void TextBoxControl::SetText(std::u16string_view text) {
  if (max_length_ > 0) text = text.substr(0, max_length_);
  if (text == Text()) return;
  window().As<XTextComponent>()->setText(ToUno(text));
  LimitTyping();
  OnTextChanged();
}

void TextBoxControl::SetMaxLength(int length) {
  max_length_ = static_cast<std::size_t>(std::max(length, 0));
  LimitTyping();
}

/// LibreOffice cuts what stands in the box already, which the program did not ask for.
void TextBoxControl::LimitTyping() {
  const std::size_t limit = max_length_ == 0 ? 0 : std::max(max_length_, Text().size());
  window().As<XTextComponent>()->setMaxTextLen(
      static_cast<sal_Int16>(std::min<std::size_t>(limit, std::numeric_limits<sal_Int16>::max())));
}

void TextBoxControl::TakeFocus() {
  FormControl::TakeFocus();
  window().As<XTextComponent>()->setSelection({0, static_cast<sal_Int32>(Text().size())});
}

// LibreOffice tells of a text that was set, too, and of one that is the old one.
void TextBoxControl::OnTextChanged() {
  std::u16string text = Text();
  if (text == text_) return;
  text_ = std::move(text);
  if (on_change) on_change();
}

// --- Options -----------------------------------------------------------------------------------------------

OptionControl::OptionControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "radiobutton", 0) {
  SetWindowCaption(description.caption);
}

void OptionControl::Select() {
  window().As<XRadioButton>()->setState(true);
  OnItemChanged();
}

void OptionControl::OnItemChanged() {
  if (selected_ || !window().As<XRadioButton>()->getState()) return;
  for (const auto& control : form().controls()) {
    auto* other = dynamic_cast<OptionControl*>(control.get());
    if (!other || other == this || !AreOneGroup(other->description(), description())) continue;
    other->selected_ = false;
    other->window().As<XRadioButton>()->setState(false);
  }
  selected_ = true;
  if (on_click) on_click();
}

// --- Combo boxes -------------------------------------------------------------------------------------------

ComboBoxControl::ComboBoxControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "combobox", css::awt::WindowAttribute::BORDER | attribute::DROPDOWN) {
  // A code that begins like another one could not be typed otherwise.
  window().SetProperty("Autocomplete", Any(false));
  window().As<XComboBox>()->setDropDownLineCount(12);
}

void ComboBoxControl::SetItems(std::vector<Item> items) {
  const std::u16string code = Value();
  list_.SetItems(std::move(items));
  const auto box = window().As<XComboBox>();
  box->removeItems(0, box->getItemCount());
  for (const Item& item : list_.items()) box->addItem(ToUno(CodeList::Shown(item)), box->getItemCount());
  SetValue(code);
}

std::u16string ComboBoxControl::Value() const {
  return list_.CodeOf(FromUno(window().As<XTextComponent>()->getText()));
}

void ComboBoxControl::SetValue(std::u16string_view code) {
  window().As<XTextComponent>()->setText(ToUno(list_.Shown(code)));
}

// --- Buttons -----------------------------------------------------------------------------------------------

ButtonControl::ButtonControl(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "pushbutton",
                  description.name == form.description().default_button ? attribute::DEFBUTTON : 0) {
  SetWindowCaption(description.caption);
}

void ButtonControl::OnAction() {
  if (on_click) on_click();
}

}  // namespace qva::calc
