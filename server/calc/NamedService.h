// What LibreOffice asks each of our objects: what it is called.
#pragma once

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/supportsservice.hxx>
#include <rtl/ustring.hxx>

#include "platform/calc/UnoText.h"

namespace qva::calc {

/// Answers for a class over `Base`, which has XServiceInfo among its interfaces, by the names of its
/// implementation and of its services.
template <class Base, const char* implementation, const char*... services>
class NamedService : public Base {
 public:
  rtl::OUString SAL_CALL getImplementationName() override {
    return rtl::OUString::createFromAscii(implementation);
  }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return cppu::supportsService(this, name);
  }
  css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    return SequenceOf<rtl::OUString>({rtl::OUString::createFromAscii(services)...});
  }
};

}  // namespace qva::calc
