#include "support/peak_memory.h"

#include <windows.h>

#include <psapi.h>

#include <stdexcept>

namespace ondrel::test {

long PeakKibibytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) {
    throw std::runtime_error("the system does not tell how much memory is in use");
  }
  return static_cast<long>(counters.PeakWorkingSetSize / 1024);
}

}  // namespace ondrel::test
