// The system's loading of libraries, as the framework uses it.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// Loads a library, or counts one that is there once more. Null on failure, with the reason in GetLastError():
/// ERROR_MOD_NOT_FOUND when there is no such file, ERROR_BAD_EXE_FORMAT when it is there and cannot be loaded, for
/// itself or for a library that it needs, ERROR_PATH_NOT_FOUND or ERROR_INVALID_NAME for a path that names nothing
/// here. The constructors of what is loaded run before it returns, on the calling thread.
ONDREL_OS_EXPORT HMODULE LoadOsLibrary(LPCWSTR path) noexcept;

/// Undoes one LoadOsLibrary. False on failure, with the reason in GetLastError().
ONDREL_OS_EXPORT bool FreeOsLibrary(HMODULE library) noexcept;

}  // namespace ondrel::platform
