// The system's loading of libraries, as the framework uses it.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// Loads a library, or counts one that is there once more. Null on failure, with the reason in GetLastError().
HMODULE LoadOsLibrary(LPCWSTR path) noexcept;

/// Undoes one LoadOsLibrary. False on failure, with the reason in GetLastError().
bool FreeOsLibrary(HMODULE library) noexcept;

}  // namespace ondrel::platform
