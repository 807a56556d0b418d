// The system's recursive lock.
#include <ondrel/platform/os/critical_section.h>

#include <cstdlib>

#include "system/os_error.h"

namespace ondrel::platform {
namespace {

// What can fail on a lock that was made is misuse (entered after its end, left by a thread that does not hold it), and
// going on would break the caller's data without a word.
void RequireDone(int error) {
  if (error != 0) std::abort();
}

}  // namespace

bool InitializeOsCriticalSection(OsCriticalSection& section) {
  pthread_mutexattr_t attributes;
  int error = pthread_mutexattr_init(&attributes);
  if (error == 0) {
    error = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    if (error == 0) error = pthread_mutex_init(&section, &attributes);
    pthread_mutexattr_destroy(&attributes);
  }
  if (error == 0) return true;
  SetLastError(OsErrorFromErrno(error));
  return false;
}

void DestroyOsCriticalSection(OsCriticalSection& section) { RequireDone(pthread_mutex_destroy(&section)); }

void EnterOsCriticalSection(OsCriticalSection& section) { RequireDone(pthread_mutex_lock(&section)); }

void LeaveOsCriticalSection(OsCriticalSection& section) { RequireDone(pthread_mutex_unlock(&section)); }

}  // namespace ondrel::platform
