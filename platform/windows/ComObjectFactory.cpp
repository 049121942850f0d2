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

/// Whether a new recordset does what the library asks of recordsets, so that no value is lost; it holds
/// records of its own afterwards. Not every ADO does: Wine's of old refuses every call, its newer one forgets
/// the values of AddNew, knows neither GetRows nor Delete, and moves clones along.
bool KeepsRecords(const ado::Recordset& recordset) {
  bool keeps = false;
  IgnoreErrors([&] {
    const ado::Fields fields = recordset.Fields();
    fields.Append(u"Code", ado::adVarChar, 1, ado::adFldIsNullable);
    fields.Append(u"Id", ado::adInteger, 0, ado::adFldIsNullable);
    recordset.Open();
    const Value names = Array::Of({u"Code", u"Id"});
    recordset.AddNew(names, Array::Of({u"a", 1}));
    recordset.AddNew(names, Array::Of({u"b", 2}));
    recordset.MoveFirst();
    const Value all = recordset.Clone().GetRows();
    recordset.Delete();
    recordset.MoveNext();
    const std::int32_t count = recordset.RecordCount();
    const Value rest = recordset.GetRows();
    keeps = fields.Count() == 2 && fields.Item(1).Name() == u"Id" && count == 1 && recordset.EndOfFile() &&
            all.ToArray().elements == std::vector<Value>{u"a", u"b", 1, 2} &&
            rest.ToArray().elements == std::vector<Value>{u"b", 2};
  });
  return keeps;
}

}  // namespace

ObjectPtr ComObjectFactory::Create(std::u16string_view programmatic_identifier) {
  if (EqualIgnoringCase(programmatic_identifier, ado::kRecordset)) return CreateRecordset();
  ObjectPtr object = CreateRegistered(programmatic_identifier);
  if (!object) throw AutomationError(kCannotCreateObject);
  return object;
}

ObjectPtr ComObjectFactory::CreateRecordset() {
  if (recordsets_ == Recordsets::NotTried) {
    const ado::Recordset trial(CreateRegistered(ado::kRecordset));
    recordsets_ = KeepsRecords(trial) ? Recordsets::Ado : Recordsets::InMemory;
  }
  const ObjectPtr recordset =
      recordsets_ == Recordsets::Ado ? CreateRegistered(ado::kRecordset) : ObjectPtr();
  return recordset ? recordset : recordset::NewRecordset();
}

}  // namespace qva::windows
