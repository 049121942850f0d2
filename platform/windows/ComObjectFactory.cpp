#include "platform/windows/ComObjectFactory.h"

#include "platform/ado.h"
#include "platform/cannot_create.h"
#include "platform/recordset/RecordsetFactory.h"
#include "platform/text.h"
#include "platform/windows/Bitness.h"
#include "platform/windows/Busy.h"
#include "platform/windows/Error.h"
#include "platform/windows/Handle.h"
#include "platform/windows/VariantConversion.h"
#include "platform/windows/WideText.h"

namespace qva::windows {
namespace {

/// What came of a creation: an object, or Windows' code for why there is none that automation can reach.
struct Creation {
  ObjectPtr object;
  HRESULT code = S_OK;
  CLSID class_id = {};
};

Creation CreateRegistered(std::u16string_view programmatic_identifier) {
  Creation creation;
  creation.code = CLSIDFromProgID(WideText(programmatic_identifier).c_str(), &creation.class_id);
  if (FAILED(creation.code)) return creation;
  ComPtr<IDispatch> object;
  creation.code = RetryWhileBusy([&] {
    return object.Obtain([&](IDispatch** received) {
      return CoCreateInstance(creation.class_id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              IID_IDispatch, reinterpret_cast<void**>(received));
    });
  });
  creation.object = ToObject(object.get());
  return creation;
}

/// Whether programs of the other bitness find a server of the class.
bool IsThereForOtherBitness(const CLSID& class_id) {
  wchar_t text[39];
  StringFromGUID2(class_id, text, 39);
  const std::wstring path = L"CLSID\\" + std::wstring(text) + L"\\InprocServer32";
  RegistryHandle key;
  return OpenKey(HKEY_CLASSES_ROOT, path, KEY_QUERY_VALUE | kOtherView, key) == ERROR_SUCCESS;
}

/// "0x80040154, not registered for 64-bit", or with the system's text for another code.
std::u16string CauseOf(const Creation& creation) {
  constexpr char16_t kDigits[] = u"0123456789ABCDEF";
  std::u16string cause = u"0x";
  for (int shift = 28; shift >= 0; shift -= 4) {
    cause += kDigits[static_cast<std::uint32_t>(creation.code) >> shift & 0xF];
  }
  const bool lacks_server = creation.code == REGDB_E_CLASSNOTREG || creation.code == REGDB_E_KEYMISSING;
  if (!lacks_server && creation.code != CO_E_CLASSSTRING) {
    return cause + u", " + SystemText(creation.code) + u" (" + std::u16string(kBitness) + u")";
  }
  cause += u", not registered for " + std::u16string(kBitness);
  if (lacks_server && IsThereForOtherBitness(creation.class_id)) {
    cause += u", but for " + std::u16string(kOtherBitness);
  }
  return cause;
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
  const Creation creation = CreateRegistered(programmatic_identifier);
  if (!creation.object) throw CannotCreate(programmatic_identifier, CauseOf(creation));
  return creation.object;
}

ObjectPtr ComObjectFactory::CreateRecordset() {
  if (recordsets_ == Recordsets::NotTried) {
    const ado::Recordset trial(CreateRegistered(ado::kRecordset).object);
    recordsets_ = KeepsRecords(trial) ? Recordsets::Ado : Recordsets::InMemory;
  }
  const ObjectPtr recordset =
      recordsets_ == Recordsets::Ado ? CreateRegistered(ado::kRecordset).object : ObjectPtr();
  return recordset ? recordset : recordset::NewRecordset();
}

}  // namespace qva::windows
