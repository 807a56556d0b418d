// The system's regular files.
#include <ondrel/platform/os/file.h>

#include <iterator>
#include <memory>
#include <string>

#include "system/system_path.h"

namespace ondrel::platform {
namespace {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

HANDLE HandleOf(OsFile file) { return reinterpret_cast<HANDLE>(file); }

DWORD AccessRights(OsAccess access) {
  switch (access) {
    case OsAccess::read:
      return GENERIC_READ;
    case OsAccess::write:
      return GENERIC_WRITE;
    case OsAccess::readWrite:
      break;
  }
  return GENERIC_READ | GENERIC_WRITE;
}

DWORD ShareMode(OsSharing sharing) {
  switch (sharing) {
    case OsSharing::nothing:
      return 0;
    case OsSharing::reading:
      return FILE_SHARE_READ;
    case OsSharing::writing:
      return FILE_SHARE_WRITE;
    case OsSharing::everything:
      break;
  }
  return FILE_SHARE_READ | FILE_SHARE_WRITE;
}

DWORD Disposition(OsCreation creation) {
  switch (creation) {
    case OsCreation::mustExist:
      return OPEN_EXISTING;
    case OsCreation::createOrEmpty:
      return CREATE_ALWAYS;
    case OsCreation::createOrKeep:
      return OPEN_ALWAYS;
    case OsCreation::createNew:
      break;
  }
  return CREATE_NEW;
}

DWORD ResultOf(BOOL succeeded) { return succeeded ? ERROR_SUCCESS : GetLastError(); }

// Where a range of bytes begins, in the form that the calls on ranges take.
OVERLAPPED RangeStart(ULONGLONG position) {
  OVERLAPPED start = {};
  start.Offset = static_cast<DWORD>(position);
  start.OffsetHigh = static_cast<DWORD>(position >> 32);
  return start;
}

}  // namespace

DWORD OpenOsFile(LPCWSTR path, OsAccess access, OsSharing sharing, OsCreation creation, OsFile& file) {
  std::wstring systemPath;
  if (const DWORD code = SystemPath(path, systemPath); code != ERROR_SUCCESS) return code;
  const HANDLE opened = CreateFileW(systemPath.c_str(), AccessRights(access), ShareMode(sharing), nullptr,
                                    Disposition(creation), FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    const DWORD code = GetLastError();
    return code == ERROR_INVALID_NAME && IsFolderOrSeparator(path) ? ERROR_ACCESS_DENIED : code;
  }
  UniqueHandle owner(opened);
  if (GetFileType(opened) != FILE_TYPE_DISK) return ERROR_ACCESS_DENIED;
  file = reinterpret_cast<OsFile>(owner.release());
  return ERROR_SUCCESS;
}

DWORD CloseOsFile(OsFile file) { return ResultOf(CloseHandle(HandleOf(file))); }

DWORD DuplicateOsFile(OsFile file, OsFile& copy) {
  if (file == kNoOsFile) return ERROR_INVALID_HANDLE;  // the system would take this one for the process itself
  const HANDLE process = GetCurrentProcess();
  HANDLE duplicate = nullptr;
  if (!DuplicateHandle(process, HandleOf(file), process, &duplicate, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
    return GetLastError();
  }
  copy = reinterpret_cast<OsFile>(duplicate);
  return ERROR_SUCCESS;
}

DWORD ReadOsFile(OsFile file, void* buffer, UINT count, UINT& read) {
  read = 0;
  while (read < count) {
    DWORD part = 0;
    if (!ReadFile(HandleOf(file), static_cast<BYTE*>(buffer) + read, count - read, &part, nullptr)) {
      return GetLastError();
    }
    if (part == 0) break;
    read += part;
  }
  return ERROR_SUCCESS;
}

DWORD WriteOsFile(OsFile file, const void* buffer, UINT count) {
  UINT written = 0;
  while (written < count) {
    DWORD part = 0;
    if (!WriteFile(HandleOf(file), static_cast<const BYTE*>(buffer) + written, count - written, &part, nullptr)) {
      return GetLastError();
    }
    if (part == 0) return ERROR_WRITE_FAULT;  // a regular file never does; better an end than a loop without one
    written += part;
  }
  return ERROR_SUCCESS;
}

DWORD SeekOsFile(OsFile file, LONGLONG offset, UINT from, ULONGLONG& position) {
  constexpr DWORD kOrigins[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
  if (from >= std::size(kOrigins)) return ERROR_INVALID_PARAMETER;
  LARGE_INTEGER move = {};
  move.QuadPart = offset;
  LARGE_INTEGER reached = {};
  if (!SetFilePointerEx(HandleOf(file), move, &reached, kOrigins[from])) return GetLastError();
  position = static_cast<ULONGLONG>(reached.QuadPart);
  return ERROR_SUCCESS;
}

DWORD ResizeOsFile(OsFile file, ULONGLONG length) {
  FILE_END_OF_FILE_INFO end = {};
  end.EndOfFile.QuadPart = static_cast<LONGLONG>(length);
  if (end.EndOfFile.QuadPart < 0) return ERROR_DISK_FULL;
  return ResultOf(SetFileInformationByHandle(HandleOf(file), FileEndOfFileInfo, &end, sizeof end));
}

DWORD MeasureOsFile(OsFile file, ULONGLONG& length) {
  LARGE_INTEGER size = {};
  if (!GetFileSizeEx(HandleOf(file), &size)) return GetLastError();
  length = static_cast<ULONGLONG>(size.QuadPart);
  return ERROR_SUCCESS;
}

DWORD LockOsFile(OsFile file, ULONGLONG position, ULONGLONG count) {
  if (count == 0) return ERROR_SUCCESS;
  OVERLAPPED start = RangeStart(position);
  return ResultOf(LockFileEx(HandleOf(file), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0,
                             static_cast<DWORD>(count), static_cast<DWORD>(count >> 32), &start));
}

DWORD UnlockOsFile(OsFile file, ULONGLONG position, ULONGLONG count) {
  if (count == 0) return ERROR_SUCCESS;
  OVERLAPPED start = RangeStart(position);
  return ResultOf(UnlockFileEx(HandleOf(file), 0, static_cast<DWORD>(count), static_cast<DWORD>(count >> 32), &start));
}

DWORD SyncOsFile(OsFile file) { return ResultOf(FlushFileBuffers(HandleOf(file))); }

DWORD ReplaceOsFile(LPCWSTR from, LPCWSTR to) {
  std::wstring systemFrom;
  std::wstring systemTo;
  if (const DWORD code = SystemPath(from, systemFrom); code != ERROR_SUCCESS) return code;
  if (const DWORD code = SystemPath(to, systemTo); code != ERROR_SUCCESS) return code;
  // ReplaceFileW would hand on more of the old file, but in several steps: between two of them the old file has another
  // name, and a failure may leave it there.
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  return ResultOf(MoveFileExW(systemFrom.c_str(), systemTo.c_str(), kHow));
}

DWORD RemoveOsFile(LPCWSTR path) {
  std::wstring systemPath;
  if (const DWORD code = SystemPath(path, systemPath); code != ERROR_SUCCESS) return code;
  return ResultOf(DeleteFileW(systemPath.c_str()));
}

}  // namespace ondrel::platform
