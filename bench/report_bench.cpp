// What it costs to freeze a report's formulas in the in-memory Excel, by the cells of the area and how many
// of them hold a formula.
#include <benchmark/benchmark.h>

#include "global/Globals.h"
#include "platform/memory/MemoryPlatform.h"
#include "platform/memory/excel/Application.h"
#include "platform/text.h"
#include "server/PublicClasses.h"

namespace qva {
namespace {

constexpr std::int32_t kColumns = 10;

void ClearFormulas(benchmark::State& state) {
  const auto cells = static_cast<std::int32_t>(state.range(0));
  const auto formulas = static_cast<std::int32_t>(state.range(1));
  MemoryPlatform platform;
  InstallServices(platform.services());
  {
    const auto excel = MakeRef<memory::Application>();
    const ObjectPtr sheet = GetObject(excel->AddWorkbook(), u"ActiveSheet");
    const auto first_rows = [&](std::int32_t count) {
      const std::int32_t columns = count < kColumns ? count : kColumns;
      const ObjectPtr first = GetObject(sheet, u"Range", {u"A1"});
      return GetObject(first, u"Resize", {count / columns, columns});
    };
    const ObjectPtr area = first_rows(cells);
    const ObjectPtr reports = CreatePublicObject(*FindPublicClass(u"QVA_Varnholt.CReports"));
    for (auto _ : state) {
      state.PauseTiming();
      Put(area, u"Value", 1);
      if (formulas > 0) Put(first_rows(formulas), u"Formula", u"=1+1");
      state.ResumeTiming();
      Call(reports, u"ClearFormulas", {area});
    }
  }
  state.counters["cells/s"] = benchmark::Counter(
      static_cast<double>(cells) * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
  InstallServices({});
}
BENCHMARK(ClearFormulas)
    ->ArgNames({"cells", "formulas"})
    ->Args({1, 1})
    ->Args({1'000, 0})
    ->Args({1'000, 1'000})
    ->Args({100'000, 0})
    ->Args({100'000, 1'000})
    ->Args({100'000, 100'000})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qva
