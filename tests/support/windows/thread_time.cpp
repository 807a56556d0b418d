#include "support/thread_time.h"

#include <windows.h>

#include <stdexcept>

namespace ondrel::test {
namespace {

std::chrono::nanoseconds Duration(const FILETIME& time) {
  constexpr std::chrono::nanoseconds kUnit(100);
  return kUnit * (static_cast<long long>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

}  // namespace

std::chrono::nanoseconds ThreadTime() {
  FILETIME start{};
  FILETIME end{};
  FILETIME inKernel{};
  FILETIME inProgram{};
  if (!GetThreadTimes(GetCurrentThread(), &start, &end, &inKernel, &inProgram)) {
    throw std::runtime_error("the system does not tell the time of a thread");
  }
  return Duration(inKernel) + Duration(inProgram);
}

}  // namespace ondrel::test
