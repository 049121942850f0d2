// What LibreOffice asks each of our objects: what it is called.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/supportsservice.hxx>

#include "platform/calc/UnoText.h"

namespace qva::calc {

/// Answers for a class over `Base`, which has XServiceInfo among its interfaces, by the names of its
/// implementation and of its services.
template <class Base, const char* implementation, const char*... services>
class NamedService : public Base {
 public:
  OUString SAL_CALL getImplementationName() override { return OUString::createFromAscii(implementation); }
  sal_Bool SAL_CALL supportsService(const OUString& name) override {
    return cppu::supportsService(this, name);
  }
  Sequence<OUString> SAL_CALL getSupportedServiceNames() override {
    return SequenceOf<OUString>({OUString::createFromAscii(services)...});
  }
};

}  // namespace qva::calc
