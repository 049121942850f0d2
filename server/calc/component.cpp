// The entries by which LibreOffice creates the component's services (qva_calc.components names them).
#include <sal/types.h>

#include "server/calc/MenuJob.h"
#include "server/calc/ObjectFactoryService.h"
#include "server/calc/ReportJob.h"

using css::uno::Any;
using css::uno::Sequence;
using css::uno::XComponentContext;
using css::uno::XInterface;

namespace {

/// Null, which LibreOffice takes for a service that there is not, where it cannot be made.
template <class Service>
XInterface* Created(XComponentContext* context) noexcept {
  try {
    auto* service = new Service(css::uno::Reference<XComponentContext>(context));
    service->acquire();
    return static_cast<cppu::OWeakObject*>(service);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* qva_create_object_factory(XComponentContext* context,
                                                                      const Sequence<Any>&) {
  return Created<qva::calc::ObjectFactoryService>(context);
}

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* qva_create_report_job(XComponentContext* context,
                                                                  const Sequence<Any>&) {
  return Created<qva::calc::ReportJob>(context);
}

extern "C" SAL_DLLPUBLIC_EXPORT XInterface* qva_create_menu_job(XComponentContext* context,
                                                                const Sequence<Any>&) {
  return Created<qva::calc::MenuJob>(context);
}
