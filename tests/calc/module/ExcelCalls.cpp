// A module in the embedded host's place: a class that calls Excel as the library does, through the façades,
// and one that shows forms.
#include "platform/excel.h"
#include "platform/member_table.h"
#include "platform/module.h"
#include "platform/text.h"
#include "tests/calc/module/FormCalls.h"

namespace {

using namespace qva;

class ExcelCalls : public Described<ExcelCalls> {
 public:
  static const ClassDescription& Description() {
    static const ClassDescription description =
        ClassBuilder(u"ExcelCalls", "Calls members of Excel's objects")
            .Method<&ExcelCalls::CopyFromRecordset>(u"CopyFromRecordset", {{u"Cells"}, {u"Data"}});
    return description;
  }

 private:
  std::int32_t CopyFromRecordset(const excel::Range& cells, const Facade& data) {
    return cells.CopyFromRecordset(data);
  }
};

class Factory : public ObjectFactory {
 public:
  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    if (EqualIgnoringCase(programmatic_identifier, u"NVXCommonObjects.ExcelCalls"))
      return MakeRef<ExcelCalls>();
    if (EqualIgnoringCase(programmatic_identifier, u"NVXCommonObjects.FormCalls"))
      return MakeRef<FormCalls>();
    throw AutomationError(kCannotCreateObject);
  }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) ObjectFactory* QvaOpenModule(const Services& services) {
  InstallServices(services);
  static Factory& factory = *new Factory;
  return &factory;
}
