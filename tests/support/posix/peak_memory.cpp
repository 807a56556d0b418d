#include "support/peak_memory.h"

#include <sys/resource.h>

namespace ondrel::test {

long PeakKibibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

}  // namespace ondrel::test
