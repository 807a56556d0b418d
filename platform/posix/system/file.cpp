// The system's regular files.
#include <ondrel/platform/os/file.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <limits>
#include <string>

#include "system/descriptor.h"
#include "system/native_path.h"

namespace ondrel::platform {
namespace {

constexpr mode_t kNewFileMode = 0666;  // the process's mask takes away from it

DWORD LastOsError() { return OsErrorFromErrno(errno); }

// The part of a path that names the folder of its last part.
std::string FolderOf(const std::string& path) {
  const std::size_t lastPart = path.find_last_not_of('/');
  if (lastPart == std::string::npos) return "/";
  const std::size_t separator = path.rfind('/', lastPart);
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

// The reason why the call that just failed on `path` did so. Where the path is missing, the contract tells a missing
// file from a missing folder above it.
DWORD PathError(const std::string& path) {
  const DWORD code = LastOsError();
  if (code != ERROR_FILE_NOT_FOUND) return code;
  struct stat folder = {};
  return stat(FolderOf(path).c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) ? code : ERROR_PATH_NOT_FOUND;
}

int OpenFlags(OsAccess access, OsCreation creation) {
  // Opening a pipe would wait for its other end without O_NONBLOCK, which says nothing to a regular file.
  int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  switch (access) {
    case OsAccess::read:
      flags |= O_RDONLY;
      break;
    case OsAccess::write:
      flags |= O_WRONLY;
      break;
    case OsAccess::readWrite:
      flags |= O_RDWR;
      break;
  }
  switch (creation) {
    case OsCreation::mustExist:
      break;
    case OsCreation::createOrEmpty:
      flags |= O_CREAT | O_TRUNC;
      break;
    case OsCreation::createOrKeep:
      flags |= O_CREAT;
      break;
    case OsCreation::createNew:
      flags |= O_CREAT | O_EXCL;
      break;
  }
  return flags;
}

// Makes a change of names in a folder last. Some file systems cannot, and say so with EINVAL: they have no such state
// of their own to bring to the disk.
DWORD SyncFolder(int folder) {
  if (Uninterrupted([folder] { return fsync(folder); }) == 0 || errno == EINVAL) return ERROR_SUCCESS;
  return LastOsError();
}

// Lets `change` put another file in the place `to`, and makes that last.
template <class Change>
DWORD ChangeName(const std::string& to, Change change) {
  // A folder that may be written but not read cannot be brought to the disk; the system does so in its own time.
  const std::string folderPath = FolderOf(to);
  const int folder = Uninterrupted([&] { return open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (folder == -1 && errno != EACCES) return PathError(to);
  DWORD error = change();
  if (folder != -1) {
    if (error == ERROR_SUCCESS) error = SyncFolder(folder);
    close(folder);
  }
  return error;
}

DWORD LockRange(OsFile file, short type, ULONGLONG position, ULONGLONG count) {
  constexpr ULONGLONG kLimit = std::numeric_limits<off_t>::max();
  if (position > kLimit || count > kLimit) return ERROR_INVALID_PARAMETER;
  if (count == 0) return ERROR_SUCCESS;  // for the system, 0 would mean "to the end of the file"
  struct flock range = {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(position);
  range.l_len = static_cast<off_t>(count);
  // Locks of the open file, not of the process: the others would vanish when any of its files is closed.
  if (fcntl(static_cast<int>(file), F_OFD_SETLK, &range) == 0) return ERROR_SUCCESS;
  return errno == EAGAIN || errno == EACCES ? ERROR_LOCK_VIOLATION : TransferError(file);
}

}  // namespace

DWORD OpenOsFile(LPCWSTR path, OsAccess access, OsSharing, OsCreation creation, OsFile& file) {
  std::string native;
  if (!NativePath(path, native)) return GetLastError();
  const int flags = OpenFlags(access, creation);
  const int opened = Uninterrupted([&] { return open(native.c_str(), flags, kNewFileMode); });
  if (opened == -1) return PathError(native);
  struct stat status = {};
  DWORD error = ERROR_SUCCESS;
  if (fstat(opened, &status) != 0) {
    error = LastOsError();
  } else if (!S_ISREG(status.st_mode)) {
    error = ERROR_ACCESS_DENIED;
  }
  if (error != ERROR_SUCCESS) {
    close(opened);
    return error;
  }
  file = opened;
  return ERROR_SUCCESS;
}

DWORD CloseOsFile(OsFile file) {
  // The descriptor is gone even when the call is interrupted; to call again could close another thread's new file.
  if (close(static_cast<int>(file)) == 0 || errno == EINTR) return ERROR_SUCCESS;
  return LastOsError();
}

DWORD DuplicateOsFile(OsFile file, OsFile& copy) {
  const int duplicate = fcntl(static_cast<int>(file), F_DUPFD_CLOEXEC, 0);
  if (duplicate == -1) return LastOsError();
  copy = duplicate;
  return ERROR_SUCCESS;
}

DWORD ReadOsFile(OsFile file, void* buffer, UINT count, UINT& read) {
  read = 0;
  while (read < count) {
    const ssize_t part =
        Uninterrupted([&] { return ::read(static_cast<int>(file), static_cast<char*>(buffer) + read, count - read); });
    if (part == -1) return TransferError(file);
    if (part == 0) break;
    read += static_cast<UINT>(part);
  }
  return ERROR_SUCCESS;
}

DWORD WriteOsFile(OsFile file, const void* buffer, UINT count) {
  UINT written = 0;
  while (written < count) {
    const ssize_t part = Uninterrupted(
        [&] { return write(static_cast<int>(file), static_cast<const char*>(buffer) + written, count - written); });
    if (part == -1) return TransferError(file);
    if (part == 0) return ERROR_WRITE_FAULT;  // a regular file never does; better an end than a loop without one
    written += static_cast<UINT>(part);
  }
  return ERROR_SUCCESS;
}

DWORD SeekOsFile(OsFile file, LONGLONG offset, UINT from, ULONGLONG& position) {
  constexpr int kOrigins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
  if (from >= std::size(kOrigins)) return ERROR_INVALID_PARAMETER;
  const off_t reached = lseek(static_cast<int>(file), offset, kOrigins[from]);
  if (reached == -1) return errno == EINVAL ? ERROR_NEGATIVE_SEEK : LastOsError();
  position = static_cast<ULONGLONG>(reached);
  return ERROR_SUCCESS;
}

DWORD ResizeOsFile(OsFile file, ULONGLONG length) {
  if (length > static_cast<ULONGLONG>(std::numeric_limits<off_t>::max())) return ERROR_DISK_FULL;
  const auto resize = [&] { return ftruncate(static_cast<int>(file), static_cast<off_t>(length)); };
  if (Uninterrupted(resize) == 0) return ERROR_SUCCESS;
  // The length is no negative one, so what is invalid is to resize a file that was opened to be read.
  return errno == EINVAL ? ERROR_ACCESS_DENIED : TransferError(file);
}

DWORD MeasureOsFile(OsFile file, ULONGLONG& length) {
  struct stat status = {};
  if (fstat(static_cast<int>(file), &status) != 0) return LastOsError();
  length = static_cast<ULONGLONG>(status.st_size);
  return ERROR_SUCCESS;
}

DWORD LockOsFile(OsFile file, ULONGLONG position, ULONGLONG count) { return LockRange(file, F_WRLCK, position, count); }

DWORD UnlockOsFile(OsFile file, ULONGLONG position, ULONGLONG count) {
  return LockRange(file, F_UNLCK, position, count);
}

void BeginSyncOsFile(OsFile file, ULONGLONG position, ULONGLONG count) {
  sync_file_range(static_cast<int>(file), static_cast<off_t>(position), static_cast<off_t>(count),
                  SYNC_FILE_RANGE_WRITE);
}

DWORD SyncOsFile(OsFile file) {
  return Uninterrupted([&] { return fsync(static_cast<int>(file)); }) == 0 ? ERROR_SUCCESS : LastOsError();
}

DWORD ReplaceOsFile(LPCWSTR from, LPCWSTR to) {
  std::string nativeFrom;
  std::string nativeTo;
  if (!NativePath(from, nativeFrom) || !NativePath(to, nativeTo)) return GetLastError();
  return ChangeName(nativeTo, [&] {
    return rename(nativeFrom.c_str(), nativeTo.c_str()) == 0 ? ERROR_SUCCESS : PathError(nativeFrom);
  });
}

DWORD ReplaceWithUnnamedOsFile(OsFile file, LPCWSTR name, LPCWSTR to) {
  std::string nativeName;
  std::string nativeTo;
  if (!NativePath(name, nativeName) || !NativePath(to, nativeTo)) return GetLastError();
  const std::string unnamed = DescriptorPath(static_cast<int>(file));
  return ChangeName(nativeTo, [&] {
    // Nothing more stands between the two calls: a process that is ended there leaves the name behind.
    if (linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, nativeName.c_str(), AT_SYMLINK_FOLLOW) != 0) {
      return PathError(nativeName);
    }
    if (rename(nativeName.c_str(), nativeTo.c_str()) == 0) return DWORD{ERROR_SUCCESS};
    const DWORD error = PathError(nativeName);
    unlink(nativeName.c_str());
    return error;
  });
}

DWORD RemoveOsFile(LPCWSTR path) {
  std::string native;
  if (!NativePath(path, native)) return GetLastError();
  return unlink(native.c_str()) == 0 ? ERROR_SUCCESS : PathError(native);
}

}  // namespace ondrel::platform
