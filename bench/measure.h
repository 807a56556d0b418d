// How a work is timed, and the program around the benchmarks.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::bench {

/// Whether sizes are small, because only the outcome counts. The program's argument --quick says so.
bool IsQuick();

/// Registers the benchmarks of a program, which defines it; called when the arguments have been read.
void AddBenchmarks();

/// Gives freed memory back to the system.
void TrimMemory();

/// Once an iteration, makes a subject with `make` and takes the time of `work` with it alone. What the work made is
/// destroyed outside of that time when the subject holds it.
template <class Make, class Work>
void MeasureUsed(benchmark::State& state, const Make& make, const Work& work) {
  for (auto _ : state) {
    auto subject = make();
    const auto start = std::chrono::steady_clock::now();
    work(*subject);
    const auto end = std::chrono::steady_clock::now();
    state.SetIterationTime(std::chrono::duration<double>(end - start).count());
  }
}

/// The same, where each iteration begins with a heap that has been trimmed, like the first of a process.
template <class Make, class Work>
void Measure(benchmark::State& state, const Make& make, const Work& work) {
  MeasureUsed(
      state,
      [&] {
        TrimMemory();
        return make();
      },
      work);
}

/// Registers a work of the name "WORK/WHO": for bench_table, what is done and who does it. `run` is called for each
/// repetition, with a state of so many iterations, and tells the time of each. What it raises is the work's error, with
/// which the whole run fails. `items` is the number of things that are worked on: nodes, files or icons.
void AddWork(const std::string& name, __int64 items, int iterations, std::function<void(benchmark::State&)> run);

/// Requires that `difference` is empty; otherwise raises std::runtime_error with it.
void RequireNone(const std::string& difference);
void Require(bool holds, const std::string& what);

}  // namespace ondrel::bench
