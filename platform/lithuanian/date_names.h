// The names of months, weekdays and halves of the day where no system tells them.
#pragma once

#include <string>

#include "platform/locale.h"

namespace qva {

/// As Locale::NameOf of a Lithuanian user.
std::u16string LithuanianName(DateName name, int number);

}  // namespace qva
