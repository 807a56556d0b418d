// What the framework keeps for each thread.
//
// That is the thread's module state (see module_state.h) and its locks of the temporary handle maps. It is plain data,
// which is gone with the thread; what a library has to do at a thread's end is to let go of what it set.
#pragma once

#include <ondrel/platform/export.h>
#include <ondrel/platform/types.h>

/// Keeps the objects that stand for handles for a while only. This framework makes none, so nothing hangs on the lock
/// but the count: code written for such objects still finds each lock of the thread matched by an unlock.
FRAMEWORK_API void AfxLockTempMaps() noexcept;
/// Undoes one AfxLockTempMaps of the calling thread, if there is one. TRUE while the thread holds more of them.
FRAMEWORK_API BOOL AfxUnlockTempMaps() noexcept;

/// For a thread that ends: it holds no lock of the temporary handle maps any more, and when its module state is that of
/// the module `instance` (null: of any), it is back at the one of the process's program.
FRAMEWORK_API void AfxTermThread(HINSTANCE instance = nullptr) noexcept;
