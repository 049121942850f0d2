#include "platform/windows/ComObjectFactory.h"

#include "platform/ado.h"
#include "platform/recordset/RecordsetFactory.h"
#include "platform/text.h"
#include "platform/windows/Busy.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"

namespace qva::windows {
namespace {

/// An object of a registered class; null when there is none that can be reached by automation.
ObjectPtr CreateRegistered(std::u16string_view programmatic_identifier) {
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
  return ToObject(object.get());
}

ObjectPtr CreateRecordset() {
  const ObjectPtr recordset = CreateRegistered(ado::kRecordset);
  // Wine's ADO gives out an automation interface that refuses every call.
  const bool answers = recordset && IgnoreErrors([&] { Get(recordset, u"State"); });
  return answers ? recordset : recordset::NewRecordset();
}

}  // namespace

ObjectPtr ComObjectFactory::Create(std::u16string_view programmatic_identifier) {
  if (EqualIgnoringCase(programmatic_identifier, ado::kRecordset)) return CreateRecordset();
  ObjectPtr object = CreateRegistered(programmatic_identifier);
  if (!object) throw AutomationError(kCannotCreateObject);
  return object;
}

}  // namespace qva::windows
