#include "platform/calc/forms/DateField.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/forms/FormWindow.h"
#include "platform/calc/forms/Painter.h"
#include "platform/text.h"

namespace qva::calc {

using css::awt::XTextComponent;

namespace {

constexpr int kButtonWidth = 17;  // at 100 %

}  // namespace

DateField::DateField(FormWindow& form, const ui::ControlDescription& description)
    : FormControl(form, description, "edit", css::awt::WindowAttribute::BORDER),
      buttons_(*this, form.window().peer(), "window") {
  buttons_.window.peer()->setBackground(form.theme().dialog);
  buttons_.on_paint = [this] { DrawButtons(); };
  buttons_.on_press = [this](const MousePress& press) {
    if (!Enabled()) return;
    if (!HasFocus()) TakeFocus();
    Step(press.y < buttons_.window.Size().Height / 2 ? 1 : -1);
  };
  Show();
}

void DateField::DrawButtons() {
  const Theme& theme = form().theme();
  const css::awt::Size all = buttons_.window.Size();
  Painter painter(buttons_.window, theme);
  painter.Fill({0, 0, all.Width, all.Height}, theme.dialog);
  painter.Frame({0, 0, all.Width, all.Height}, theme.shadow);
  painter.Line(0, all.Height / 2, all.Width - 1, all.Height / 2, theme.shadow);
  const sal_Int32 color = Enabled() ? theme.dialog_text : theme.disabled_text;
  const int x = all.Width / 2;
  const int size = theme.Scaled(3);
  for (const int up : {1, -1}) {
    const int y = all.Height / 2 - up * all.Height / 4;
    painter.Polygon(
        {{x - size, y + up * size / 2}, {x + size, y + up * size / 2}, {x, y - up * (size / 2 + 1)}}, color);
  }
}

void DateField::SetEnabled(bool enabled) {
  FormControl::SetEnabled(enabled);
  buttons_.window.Invalidate();
}

void DateField::SetShown(bool shown) {
  FormControl::SetShown(shown);
  buttons_.window.window()->setVisible(shown);
}

void DateField::Place(const css::awt::Rectangle& pixels) {
  const int width = form().Scaled(kButtonWidth);
  FormControl::Place({pixels.X, pixels.Y, pixels.Width - width, pixels.Height});
  buttons_.window.Place({pixels.X + pixels.Width - width, pixels.Y, width, pixels.Height});
}

bool DateField::OnKey(const css::awt::KeyEvent& event) {
  namespace key = css::awt::Key;
  if (event.Modifiers != 0) return false;
  switch (event.KeyCode) {
    case key::UP:
    case key::ADD:
      Step(1);
      return true;
    case key::DOWN:
    case key::SUBTRACT:
      Step(-1);
      return true;
    case key::LEFT:
      MoveToPart(-1);
      return true;
    case key::RIGHT:
      MoveToPart(1);
      return true;
    case key::RETURN:
      StoreDigits();
      return false;
  }
  if (IsDigit(event.KeyChar)) TypeDigit(static_cast<char16_t>(event.KeyChar));
  // Nothing else is typed.
  return event.KeyChar >= u' ' || event.KeyCode == key::BACKSPACE || event.KeyCode == key::HOME ||
         event.KeyCode == key::END;
}

void DateField::OnFocus(bool gained) {
  if (!gained) return StoreDigits();
  // The toolkit marks the whole text, unless a click has put the caret somewhere.
  form().Later([this] {
    const css::awt::Selection marked = window().As<XTextComponent>()->getSelection();
    if (marked.Min != marked.Max) Show();
  });
}

void DateField::OnMousePressed(const MousePress&) {
  const sal_Int32 caret = window().As<XTextComponent>()->getSelection().Max;
  ChoosePartAt(static_cast<std::size_t>(caret));
}

void DateField::Show() {
  const MarkedText shown = Text();
  const auto field = window().As<XTextComponent>();
  if (FromUno(field->getText()) != shown.text) field->setText(ToUno(shown.text));
  field->setSelection({static_cast<sal_Int32>(shown.from), static_cast<sal_Int32>(shown.to)});
}

}  // namespace qva::calc
