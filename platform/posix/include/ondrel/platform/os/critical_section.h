// The system's recursive lock.
#pragma once

#include <pthread.h>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// Recursive. Initialised and destroyed by the functions below, never copied.
using OsCriticalSection = pthread_mutex_t;

/// False when the system cannot make one, with the reason in GetLastError().
ONDREL_OS_EXPORT bool InitializeOsCriticalSection(OsCriticalSection& section);
ONDREL_OS_EXPORT void DestroyOsCriticalSection(OsCriticalSection& section);
ONDREL_OS_EXPORT void EnterOsCriticalSection(OsCriticalSection& section);
ONDREL_OS_EXPORT void LeaveOsCriticalSection(OsCriticalSection& section);

}  // namespace ondrel::platform
