#include "platform/calc/forms/Cells.h"

#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>

#include "platform/calc/UnoText.h"

namespace qva::calc {

using css::awt::XCheckBox;
using css::awt::XTextComponent;

CellWindow::CellWindow(CellOwner& owner, const Reference<css::awt::XWindowPeer>& parent,
                       const ui::GridColumn& column)
    : owner_(owner),
      is_mark_(column.check_box),
      window_(is_mark_ ? "checkbox" : "edit", parent, css::awt::VclWindowPeerAttribute::NOBORDER, *this) {
  window_.SetProperty("Tabstop", Any(false));
  if (!is_mark_) window_.As<XTextComponent>()->setEditable(!column.read_only);
}

void CellWindow::SetName(std::u16string_view name) {
  if (name_ == name) return;
  name_ = name;
  window_.SetProperty("AccessibleName", Any(ToUno(name)));
}

bool CellWindow::IsOn() const {
  return window_.As<XCheckBox>()->getState() != 0;
}

std::u16string CellWindow::Text() const {
  return FromUno(window_.As<XTextComponent>()->getText());
}

void CellWindow::SetText(std::u16string_view text) {
  text_ = text;
  if (is_mark_) {
    if (IsOn() != IsMarked(text)) window_.As<XCheckBox>()->setState(IsMarked(text) ? 1 : 0);
  } else if (Text() != text) {
    window_.As<XTextComponent>()->setText(ToUno(text));
  }
}

void CellWindow::SetColors(sal_Int32 background, sal_Int32 text) {
  if (colors_ == std::pair(background, text)) return;
  colors_ = {background, text};
  window_.SetProperty("BackgroundColor", Any(background));
  window_.SetProperty("TextColor", Any(text));
}

void CellWindow::SelectAll() const {
  window_.As<XTextComponent>()->setSelection({0, static_cast<sal_Int32>(Text().size())});
}

void CellWindow::MoveCaretToEnd() const {
  const auto end = static_cast<sal_Int32>(Text().size());
  window_.As<XTextComponent>()->setSelection({end, end});
}

// The toolkit tells of what the grid sets, too.
void CellWindow::OnTextChanged() {
  if (Text() != text_) owner_.CellChanged(*this);
}

void CellWindow::OnItemChanged() {
  if (IsOn() != IsMarked(text_)) owner_.CellChanged(*this);
}

Caption::Caption(EventTarget& owner, const Reference<css::awt::XWindowPeer>& parent, std::u16string_view text)
    : InnerWindow(owner, parent, "fixedtext", css::awt::VclWindowPeerAttribute::NOLABEL) {
  window.SetProperty("MultiLine", Any(true));
  window.SetProperty("VerticalAlign", Any(css::style::VerticalAlignment_MIDDLE));
  window.SetCaption(text);
  window.window()->setVisible(true);
}

CellColumn::CellColumn(CellOwner& owner, const Reference<css::awt::XWindowPeer>& parent,
                       const ui::GridColumn& column, std::size_t lines)
    : caption_(owner.target(), parent, column.caption) {
  for (std::size_t line = 0; line < lines; ++line) {
    cells_.emplace_back(owner, parent, column);
  }
}

}  // namespace qva::calc
