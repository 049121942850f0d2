// The window of a list from which the user picks a row.
#pragma once

#include "platform/list_chooser.h"

namespace qva::windows {

/// Shows the list above the window that the user is working in. A field above the list leaves the rows that
/// have its text in any column, whatever the letters' case, with or without the marks of Lithuanian letters.
/// Up, Down and the page keys move in the list from there, too. Enter, a double click and "OK" pick the
/// selected row; Escape, "Atšaukti" and closing the window leave the list. Nothing when Windows has no window
/// to give.
class ListChooserWindow : public ListChooser {
 public:
  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override;
};

}  // namespace qva::windows
