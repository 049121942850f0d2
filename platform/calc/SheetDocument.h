// The document that a sheet of LibreOffice stands in.
#pragma once

#include <com/sun/star/frame/XModel.hpp>

#include "platform/object.h"

namespace qva::calc {

/// True when two worksheets stand in one document. Raises 438 for objects that are no worksheets, and what
/// LibreOffice raises.
bool AreInOneDocument(const ObjectPtr& sheet1, const ObjectPtr& sheet2);

/// The document that a worksheet stands in. Raises as AreInOneDocument.
css::uno::Reference<css::frame::XModel> DocumentOfSheet(const ObjectPtr& sheet);

}  // namespace qva::calc
