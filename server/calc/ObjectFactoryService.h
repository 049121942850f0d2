// The service that Basic's CreateObject asks; LibreOffice has one of its own on Windows alone.
#pragma once

#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>

#include "platform/calc/Uno.h"
#include "server/calc/NamedService.h"
#include "server/calc/service_names.h"

namespace qva::calc {

/// Creates objects by programmatic identifier: the library's public classes, recordsets (ADODB.Recordset),
/// and the classes of the modules that stand beside the component, such as the embedded host's. A class that
/// these lack is error 429 in the macro, and what the library's start-up raises is raised there, too. For the
/// identifiers of other libraries it gives nothing: Basic asks it for UNO's own structures as well, and goes
/// on looking.
class ObjectFactoryService
    : public NamedService<cppu::WeakImplHelper2<css::lang::XMultiServiceFactory, css::lang::XServiceInfo>,
                          kObjectFactory, kOleObjectFactory> {
 public:
  explicit ObjectFactoryService(const Reference<css::uno::XComponentContext>& context);

  Reference<css::uno::XInterface> SAL_CALL createInstance(const OUString& identifier) override;
  Reference<css::uno::XInterface> SAL_CALL createInstanceWithArguments(const OUString& identifier,
                                                                       const Sequence<Any>&) override;
  Sequence<OUString> SAL_CALL getAvailableServiceNames() override;
};

}  // namespace qva::calc
