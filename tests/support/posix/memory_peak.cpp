#include "support/posix/memory_peak.h"

#include <malloc.h>
#include <fstream>
#include <stdexcept>
#include <string>

namespace ondrel::test {
namespace {

/// A number of /proc/self/status.
long Status(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ':')) return std::stol(line.substr(name.size() + 1));
  }
  throw std::runtime_error("the system does not tell " + name);
}

}  // namespace

MemoryPeak::MemoryPeak() {
  malloc_trim(0);  // what was freed before is taken anew, so that it counts
  constexpr char kForgetThePeak = '5';
  std::ofstream("/proc/self/clear_refs") << kForgetThePeak << std::flush;
  m_before = Status("VmRSS");
}

long MemoryPeak::Kibibytes() const { return Status("VmHWM") - m_before; }

}  // namespace ondrel::test
