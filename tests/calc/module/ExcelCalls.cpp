// A module in the embedded host's place: a class that calls Excel as the library does, through the façades,
// and one that shows forms.
#include <dlfcn.h>

#include <cstdlib>

#include "platform/excel.h"
#include "platform/member_table.h"
#include "platform/module.h"
#include "platform/text.h"
#include "tests/calc/module/FormCalls.h"

namespace {

using namespace qva;

class ExcelCalls : public Described<ExcelCalls> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ExcelCalls", "Calls members of Excel's objects")
        .Method<&ExcelCalls::CopyFromRecordset>(u"CopyFromRecordset", {{u"Cells"}, {u"Data"}})
        .Method<&ExcelCalls::WriteValues>(u"WriteValues", {{u"Cells"}});
  }

 private:
  std::int32_t CopyFromRecordset(const excel::Range& cells, const Facade& data) {
    return cells.CopyFromRecordset(data);
  }
  /// The same values in two rows: as one array, and one by one. They are of types that macros cannot pass
  /// whole.
  void WriteValues(const excel::Range& cells) {
    const std::vector<Value> values = {Date{45427}, Date{45427.75}, Currency{25500}, u"2024-05-15 d."};
    const auto columns = static_cast<std::int32_t>(values.size());
    cells.Cells(1, 1).Resize(1, columns).SetValue(Array::Block(1, columns, values));
    for (std::int32_t i = 0; i < columns; ++i) cells.Cells(2, i + 1).SetValue(values[i]);
  }
};

/// Passes what it does not know on to the host itself, where QVA_TEST_HOST names its module.
class Factory : public ObjectFactory {
 public:
  explicit Factory(const Services& services) {
    const char* path = std::getenv("QVA_TEST_HOST");
    if (!path) return;
    if (void* module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE)) {
      const auto open = reinterpret_cast<OpenModule>(::dlsym(module, kOpenModuleName));
      if (open) host_ = open(services);
    }
  }

  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    if (EqualIgnoringCase(programmatic_identifier, u"NVXCommonObjects.ExcelCalls"))
      return MakeRef<ExcelCalls>();
    if (EqualIgnoringCase(programmatic_identifier, u"NVXCommonObjects.FormCalls"))
      return MakeRef<FormCalls>();
    if (host_) return host_->Create(programmatic_identifier);
    throw AutomationError(kCannotCreateObject);
  }

 private:
  ObjectFactory* host_ = nullptr;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) ObjectFactory* QvaOpenModule(const Services& services) {
  InstallServices(services);
  static Factory& factory = *new Factory(services);
  return &factory;
}
