// Lists to choose from.
#pragma once

#include "platform/list_chooser.h"

namespace qva::calc {

/// Shows a list with a field above it; what is typed there leaves only the rows that contain it in any
/// column, whatever the letters' case and marks. The current row stays so while it is left; otherwise the
/// first one becomes it. Enter, OK and a double-click pick a row, Escape leaves the list. Raises what
/// LibreOffice raises when it cannot show the window; otherwise as ListChooser::Choose.
std::optional<std::size_t> ChooseFromList(const ChoiceList& list, std::u16string_view selected);

}  // namespace qva::calc
