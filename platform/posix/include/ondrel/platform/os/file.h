// The system's files, as the framework's file classes use them.
#pragma once

#include <cstdint>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

using OsFile = std::intptr_t;  // a file descriptor
inline constexpr OsFile kNoOsFile = -1;

enum class OsAccess { read, write, readWrite };
/// What other opened files of the same file may do meanwhile. Systems without such a rule let them.
enum class OsSharing { nothing, reading, writing, everything };
enum class OsCreation { mustExist, createOrEmpty, createOrKeep, createNew };

// Each gives ERROR_SUCCESS or the system's error code. Paths are wide text with `\` or `/` between their parts.

/// Opens a regular file; a folder, a pipe or a device is ERROR_ACCESS_DENIED, a drive letter ERROR_PATH_NOT_FOUND.
ONDREL_OS_EXPORT DWORD OpenOsFile(LPCWSTR path, OsAccess access, OsSharing sharing, OsCreation creation, OsFile& file);
ONDREL_OS_EXPORT DWORD CloseOsFile(OsFile file);
/// A second handle of the same open file; both share one position.
ONDREL_OS_EXPORT DWORD DuplicateOsFile(OsFile file, OsFile& copy);
/// Reads until `count` bytes are there or the file ends.
ONDREL_OS_EXPORT DWORD ReadOsFile(OsFile file, void* buffer, UINT count, UINT& read);
/// Writes all of them, or fails.
ONDREL_OS_EXPORT DWORD WriteOsFile(OsFile file, const void* buffer, UINT count);
ONDREL_OS_EXPORT DWORD SeekOsFile(OsFile file, LONGLONG offset, UINT from, ULONGLONG& position);
ONDREL_OS_EXPORT DWORD ResizeOsFile(OsFile file, ULONGLONG length);
ONDREL_OS_EXPORT DWORD MeasureOsFile(OsFile file, ULONGLONG& length);
/// Keeps other opened files of the same file from locking any of these bytes: ERROR_LOCK_VIOLATION when one of them
/// already has. Needs a file that may be written. A count of 0 is no range.
ONDREL_OS_EXPORT DWORD LockOsFile(OsFile file, ULONGLONG position, ULONGLONG count);
ONDREL_OS_EXPORT DWORD UnlockOsFile(OsFile file, ULONGLONG position, ULONGLONG count);
/// Begins to bring `count` bytes from `position` on to the disk and does not wait for them, so that SyncOsFile has less
/// left to do. It only helps: nothing tells whether it did.
ONDREL_OS_EXPORT void BeginSyncOsFile(OsFile file, ULONGLONG position, ULONGLONG count);
/// Returns when the file's bytes are on the disk.
ONDREL_OS_EXPORT DWORD SyncOsFile(OsFile file);
/// Puts `from` in place of `to`, whole, in one step, and makes that last.
ONDREL_OS_EXPORT DWORD ReplaceOsFile(LPCWSTR from, LPCWSTR to);
/// The same with an open file that has no name: it takes the free name `name` on its way. ERROR_FILE_EXISTS when
/// another file has that name; after a failure the file has none.
ONDREL_OS_EXPORT DWORD ReplaceWithUnnamedOsFile(OsFile file, LPCWSTR name, LPCWSTR to);
ONDREL_OS_EXPORT DWORD RemoveOsFile(LPCWSTR path);

}  // namespace ondrel::platform
