// What a call through a member table costs, against the same call made directly.
#include <benchmark/benchmark.h>

#include "platform/member_table.h"
#include "platform/memory/MemoryPlatform.h"

namespace qva {
namespace {

class Counter : public Described<Counter> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Counter", "").Method<&Counter::Add>(u"Add", {{u"Amount"}});
  }
  std::int32_t Add(std::int32_t amount) { return total_ += amount & 1; }

 private:
  std::int32_t total_ = 0;
};

void DirectCall(benchmark::State& state) {
  const auto counter = MakeRef<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->Add(1));
}
BENCHMARK(DirectCall);

void CallByName(benchmark::State& state) {
  const ObjectPtr counter = MakeRef<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(Call(counter, u"Add", {std::int32_t{1}}));
}
BENCHMARK(CallByName);

void CallByNameWithConversion(benchmark::State& state) {
  MemoryPlatform platform;
  InstallServices(platform.services());
  const ObjectPtr counter = MakeRef<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(Call(counter, u"add", {u"1"}));
  InstallServices({});
}
BENCHMARK(CallByNameWithConversion);

}  // namespace
}  // namespace qva
