// The system's recursive lock.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

using OsCriticalSection = CRITICAL_SECTION;

inline bool InitializeOsCriticalSection(OsCriticalSection& section) {
  return InitializeCriticalSectionAndSpinCount(&section, 0) != FALSE;
}
inline void DestroyOsCriticalSection(OsCriticalSection& section) { DeleteCriticalSection(&section); }
inline void EnterOsCriticalSection(OsCriticalSection& section) { EnterCriticalSection(&section); }
inline void LeaveOsCriticalSection(OsCriticalSection& section) { LeaveCriticalSection(&section); }

}  // namespace ondrel::platform
