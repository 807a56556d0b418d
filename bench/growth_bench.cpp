// How the time for a node grows with the number of nodes. Each run is a process of its own: a heap that has been used
// with one size would serve the other worse than a new one.
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

#include "forms.h"
#include "measure.h"

namespace ondrel::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Form = void (*)(CMMCObjectSet& set, CFile& file);

/// The mean seconds of storing a definition, or of loading what was stored, over so many times.
double SecondsOfStore(Form store, __int64 nodes, int times) {
  const auto set = MakeDefinition(nodes);
  std::chrono::duration<double> total{};
  for (int time = 0; time < times; ++time) {
    CMemFile file;
    const auto start = Clock::now();
    store(*set, file);
    total += Clock::now() - start;
  }
  return total.count() / times;
}

double SecondsOfLoad(Form store, Form load, __int64 nodes, int times) {
  CMemFile file;
  store(*MakeDefinition(nodes), file);
  TrimMemory();
  std::chrono::duration<double> total{};
  for (int time = 0; time < times; ++time) {
    const auto set = MakeSet();
    const auto start = Clock::now();
    load(*set, file);
    total += Clock::now() - start;
    CMMCObjectParams* params = nullptr;
    Require(set->GetParams(nodes - 1, params) && !set->GetParams(nodes + 1'000, params), "a load has lost nodes");
  }
  return total.count() / times;
}

/// Runs `work` in a child process; the seconds that it gives.
template <class Work>
double InChild(const Work& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("there is no pipe");
  const pid_t child = fork();
  if (child == -1) throw std::runtime_error("a process cannot be started");
  if (child == 0) {
    try {
      const double seconds = work();
      _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    } catch (const std::exception& fault) {
      std::fprintf(stderr, "%s\n", fault.what());
      _exit(1);
    }
  }
  close(ends[1]);
  double seconds = 0;
  const bool isRead = read(ends[0], &seconds, sizeof seconds) == sizeof seconds;
  close(ends[0]);
  int status = 0;
  while (waitpid(child, &status, 0) == -1 && errno == EINTR) {
  }
  if (!isRead || status != 0) throw std::runtime_error("a run in a process of its own failed");
  return seconds;
}

struct Size {
  const char* name;
  __int64 nodes;
  int times;  ///< As often as makes a time worth taking.
};

void Add(const std::string& work, const Size& size, double (*seconds)(__int64 nodes, int times)) {
  AddWork(work + '/' + size.name, size.nodes, 1, [=](benchmark::State& state) {
    for (auto _ : state) state.SetIterationTime(InChild([&] { return seconds(size.nodes, size.times); }));
  });
}

}  // namespace

void AddBenchmarks() {
  // The names are those of the columns: what is measured, and what it is compared with.
  const Size sizes[] = {{"ours", IsQuick() ? 10'000 : 1'000'000, IsQuick() ? 1 : 2},
                        {"few nodes", IsQuick() ? 1'000 : 10'000, IsQuick() ? 1 : 20}};
  for (const Size& size : sizes) {
    Add("growth_load_image", size,
        [](__int64 nodes, int times) { return SecondsOfLoad(StoreImage, LoadImage, nodes, times); });
    Add("growth_store_image", size, [](__int64 nodes, int times) { return SecondsOfStore(StoreImage, nodes, times); });
    Add("growth_load_project", size,
        [](__int64 nodes, int times) { return SecondsOfLoad(SaveProject, LoadProject, nodes, times); });
    Add("growth_save_project", size,
        [](__int64 nodes, int times) { return SecondsOfStore(SaveProject, nodes, times); });
  }
}

}  // namespace ondrel::bench
