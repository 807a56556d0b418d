#include "measure.h"

#include <malloc.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <ondrel/platform/program.h>

namespace ondrel::bench {
namespace {

bool quick = false;

}  // namespace

bool IsQuick() { return quick; }

void TrimMemory() { malloc_trim(0); }

void AddWork(const std::string& name, __int64 items, int iterations, std::function<void(benchmark::State&)> run) {
  const auto guarded = [run = std::move(run), items](benchmark::State& state) {
    try {
      run(state);
    } catch (const std::exception& fault) {
      state.SkipWithError(fault.what());
    }
    state.counters["items"] = static_cast<double>(items);
  };
  benchmark::RegisterBenchmark(name.c_str(), guarded)
      ->UseManualTime()
      ->Iterations(iterations)
      ->Unit(benchmark::kMillisecond);
}

void RequireNone(const std::string& difference) {
  if (!difference.empty()) throw std::runtime_error(difference);
}

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

}  // namespace ondrel::bench

int main(int argc, char** argv) {
  ondrel::platform::PrepareProgram();
  const ondrel::platform::ComponentScope components;
  const auto isQuick = [](const char* argument) { return std::string_view(argument) == "--quick"; };
  char** const end = std::remove_if(argv + 1, argv + argc, isQuick);
  ondrel::bench::quick = end != argv + argc;
  argc = static_cast<int>(end - argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  ondrel::bench::AddBenchmarks();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
