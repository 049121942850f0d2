// Pictures for the buttons of command bars.
#pragma once

#include <com/sun/star/graphic/XGraphic.hpp>
#include <cstdint>
#include <vector>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// A picture in LibreOffice's three sizes of icons (16, 24 and 32 pixels), in this order; empty for none.
using IconSizes = std::vector<Reference<css::graphic::XGraphic>>;

/// The icon of the command of LibreOffice that means the same as one of Excel's faces; empty for a face that
/// has no such command.
IconSizes FaceIcon(std::int32_t face_id);

/// The command of LibreOffice that does what one of Excel's own controls does; empty for none.
OUString BuiltInCommand(std::int32_t control_id);

}  // namespace qva::calc
