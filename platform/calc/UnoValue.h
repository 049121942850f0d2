// Values on their way between UNO and the automation protocol.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

#include "platform/automation.h"
#include "platform/calc/Uno.h"

namespace qva::calc {

/// A UNO object that carries one of our own objects; the front door's published objects are of this kind. So
/// an object that went out to a macro comes back as itself. It is known by its XUnoTunnel: the proxies that
/// LibreOffice puts before workbooks and sheets lack C++ type information, and a dynamic_cast of one crashes.
class CarriesObject {
 public:
  /// The carrier that a UNO object is; null when it is none of ours.
  static const CarriesObject* Of(const Reference<css::uno::XInterface>& object);

  virtual const ObjectPtr& Carried() const = 0;

 protected:
  ~CarriesObject() = default;
  /// The carrier's XUnoTunnel::getSomething.
  sal_Int64 Tunnel(const Sequence<sal_Int8>& identifier) const;
};

/// Makes the UNO object that publishes one of our own objects. Set once by the front door.
using PublishFunction = Reference<css::uno::XInterface> (*)(const ObjectPtr& object);

/// Sets what conversions need: the component context and the front door's way to publish an object.
void InstallConversion(const Reference<css::uno::XComponentContext>& context, PublishFunction publish);

/// The component context set by InstallConversion.
const Reference<css::uno::XComponentContext>& Context();

/// A UNO value as a value of ours. Nothing at all is Empty; UNO's interfaces become objects (a null one a
/// null reference, which is how Basic passes Null, too); 64-bit numbers, which Basic makes of Currency,
/// become Int32 or Double; sequences become arrays from 0. Basic hands bytes over as signed ones, which are
/// taken as 0 to 255. Raises 13 (Type mismatch) for anything else, such as structures.
Value FromAny(const Any& any);

/// A value as UNO's. Empty, Missing and errors held as values become nothing at all, Null a null interface,
/// Byte a short number (Basic would read its own byte as signed), dates and currency their own types. The
/// bounds of an array are lost: Basic sees it from 0. Raises 13 (Type mismatch) for arrays of more than two
/// dimensions.
Any ToAny(const Value& value);

}  // namespace qva::calc
