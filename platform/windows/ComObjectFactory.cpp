#include "platform/windows/ComObjectFactory.h"

#include "platform/windows/Busy.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"

namespace qva::windows {

ObjectPtr ComObjectFactory::Create(std::u16string_view programmatic_identifier) {
  ComPtr<IDispatch> object;
  CLSID class_id;
  if (SUCCEEDED(CLSIDFromProgID(WideText(programmatic_identifier).c_str(), &class_id))) {
    RetryWhileBusy([&] {
      return object.Obtain([&](IDispatch** received) {
        return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(received));
      });
    });
  }
  if (!object) throw AutomationError(kCannotCreateObject);
  return ToObject(object.get());
}

}  // namespace qva::windows
