// Loading libraries into the process, and how a library that refuses tells the reason.
#pragma once

#include <ondrel/platform/export.h>
#include <ondrel/platform/types.h>

/// Loads the library in a file, with those that it needs, and lets it start; a library that is there already is counted
/// once more. `\` and `/` both separate folders; a bare name is looked up where the system keeps its libraries.
///
/// Null on failure, with the reason in GetLastError(). When a library refused to start, HRESULT_FROM_WIN32 of that is
/// the status that it refused with, and it is unloaded again.
///
/// Threads load and free libraries one at a time, so neither may be called where the system does the same: not in what
/// a library does as it is loaded or unloaded, unless AfxLoadLibrary or AfxFreeLibrary is what does that.
FRAMEWORK_API HINSTANCE AfxLoadLibrary(LPCTSTR path) noexcept;

/// Undoes one AfxLoadLibrary; with the last one the library ends and is unloaded. FALSE on failure, with the reason in
/// GetLastError().
FRAMEWORK_API BOOL AfxFreeLibrary(HINSTANCE library) noexcept;

namespace ondrel::platform {

/// For the system's entry of a library that refuses to start: gives the status, a failing one, to the AfxLoadLibrary
/// that is loading on this thread. False when there is none.
FRAMEWORK_API bool RefuseLoading(HRESULT status) noexcept;

}  // namespace ondrel::platform
