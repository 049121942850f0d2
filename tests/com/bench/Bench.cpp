#include "tests/com/bench/Bench.h"

#include "platform/host.h"
#include "platform/memory/excel/Application.h"

namespace qva::bench {

Bench::Bench() {
  Services services = platform.services();
  services.files = &files;
  InstallServices(services);
  for (const std::u16string_view identifier : host::kCreatableClasses) {
    platform.object_factory.Register(identifier, [this, identifier] { return host.Create(identifier); });
  }
  Reset();
}

void Bench::Reset() {
  host = MemoryHost::Sample();
  platform.message_box = {};
  host.message_box = &platform.message_box;
  host.list_chooser = &platform.list_chooser;
  trace.Clear();
  failure.Reset(0);
  is_busy = false;
  turned_away = 0;
  lookups.clear();
}

ObjectPtr Bench::NewExcel() {
  const Ref<memory::Application> excel = MakeRef<memory::Application>();
  excel->AddWorkbook();
  return interceptor.Wrap(excel, u"Application");
}

ObjectPtr Bench::NewHostObject(std::u16string_view programmatic_identifier) {
  return factory.Create(programmatic_identifier);
}

Bench& TheBench() {
  static Bench& bench = *new Bench;
  return bench;
}

}  // namespace qva::bench
