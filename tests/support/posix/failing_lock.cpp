// Stands before the system's function of the same name, for all libraries in the program. Only test programs that use
// FailingLock take it.
#include "support/failing_lock.h"

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>

namespace {

std::atomic<bool> fails = false;

}  // namespace

extern "C" __attribute__((visibility("default"))) int pthread_mutexattr_settype(pthread_mutexattr_t* attributes,
                                                                                int kind) noexcept {
  if (fails) return ENOMEM;
  static const auto system =
      reinterpret_cast<int (*)(pthread_mutexattr_t*, int)>(dlsym(RTLD_NEXT, "pthread_mutexattr_settype"));
  return system(attributes, kind);
}

namespace ondrel::test {

FailingLock::FailingLock() { fails = true; }
FailingLock::~FailingLock() { fails = false; }

}  // namespace ondrel::test
