// The system's files, as the framework's file classes use them.
#pragma once

#include <cstdint>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

using OsFile = std::intptr_t;  // a file handle
inline constexpr OsFile kNoOsFile = -1;

enum class OsAccess { read, write, readWrite };
/// What other opened files of the same file may do meanwhile. Systems without such a rule let them.
enum class OsSharing { nothing, reading, writing, everything };
enum class OsCreation { mustExist, createOrEmpty, createOrKeep, createNew };

// Each gives ERROR_SUCCESS or the system's error code. Paths are wide text with `\` or `/` between their parts.

/// Opens a regular file; a folder, a pipe or a device is ERROR_ACCESS_DENIED.
DWORD OpenOsFile(LPCWSTR path, OsAccess access, OsSharing sharing, OsCreation creation, OsFile& file);
DWORD CloseOsFile(OsFile file);
/// A second handle of the same open file; both share one position.
DWORD DuplicateOsFile(OsFile file, OsFile& copy);
/// Reads until `count` bytes are there or the file ends.
DWORD ReadOsFile(OsFile file, void* buffer, UINT count, UINT& read);
/// Writes all of them, or fails.
DWORD WriteOsFile(OsFile file, const void* buffer, UINT count);
DWORD SeekOsFile(OsFile file, LONGLONG offset, UINT from, ULONGLONG& position);
DWORD ResizeOsFile(OsFile file, ULONGLONG length);
DWORD MeasureOsFile(OsFile file, ULONGLONG& length);
/// Keeps other opened files of the same file from locking any of these bytes: ERROR_LOCK_VIOLATION when one of them
/// already has. Needs a file that may be written. A count of 0 is no range.
DWORD LockOsFile(OsFile file, ULONGLONG position, ULONGLONG count);
DWORD UnlockOsFile(OsFile file, ULONGLONG position, ULONGLONG count);
/// Would begin to bring bytes to the disk without waiting for them. The system has no call for it.
inline void BeginSyncOsFile(OsFile, ULONGLONG, ULONGLONG) {}
/// Returns when the file's bytes are on the disk.
DWORD SyncOsFile(OsFile file);
/// Puts `from` in place of `to`, whole, in one step, and makes that last.
DWORD ReplaceOsFile(LPCWSTR from, LPCWSTR to);
DWORD RemoveOsFile(LPCWSTR path);

}  // namespace ondrel::platform
