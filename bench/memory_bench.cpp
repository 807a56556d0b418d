// The memory that loading a large definition takes at its peak, in a process that does nothing else.
#include <string>

#include "measure.h"
#include "processes.h"
#include "support/temporary_folder.h"

namespace ondrel::bench {
namespace {

__int64 Nodes() { return IsQuick() ? 10'000 : 1'000'000; }

void MeasurePeak(benchmark::State& state, const std::string& form) {
  const ondrel::test::TemporaryFolder folder;
  const std::string file = (folder / "definition").string();
  SecondsOf({ONDREL_BENCH_MAKE_DEFINITION, {form, std::to_string(Nodes()), file}, folder.Path()});
  long long bytes = 0;
  for (auto _ : state) bytes = std::stoll(OutputOf({ONDREL_BENCH_LOAD_PEAK, {form, file}, folder.Path()}));
  // A set without its nodes would need next to nothing.
  Require(bytes > 100 * Nodes(), "a load has taken less memory than its nodes need");
  state.counters["bytes_per_item"] = static_cast<double>(bytes) / static_cast<double>(Nodes());
}

}  // namespace

void AddBenchmarks() {
  AddWork("memory_load_image/ours", Nodes(), 1, [](benchmark::State& state) { MeasurePeak(state, "image"); });
  AddWork("memory_load_project/ours", Nodes(), 1, [](benchmark::State& state) { MeasurePeak(state, "project"); });
}

}  // namespace ondrel::bench
