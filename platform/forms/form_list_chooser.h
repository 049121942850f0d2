// Lists to choose from, as forms.
#pragma once

#include "platform/controls.h"
#include "platform/list_chooser.h"

namespace qva {

/// Shows a list with a field above it, which leaves the rows that have its text in any column, whatever the
/// letters' case, with or without the marks of Lithuanian letters. The current row stays so while it is left;
/// otherwise the first one becomes it. Up, Down and the page keys move in the list from the field, too.
/// Enter, a double click and "OK" pick the current row; Escape, "Atšaukti" and closing the window leave the
/// list. Nothing when the factory cannot show it.
class FormListChooser : public ListChooser {
 public:
  /// The factory is borrowed.
  explicit FormListChooser(ui::FormFactory& forms) : forms_(forms) {}
  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override;

 private:
  ui::FormFactory& forms_;
};

}  // namespace qva
