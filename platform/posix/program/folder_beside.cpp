// Folders as the system makes, renames and removes them.
#include "program/folder_beside.h"

#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "system/native_path.h"
#include "system/os_error.h"

namespace ondrel::platform {
namespace {

constexpr mode_t kNewFolderMode = 0777;  // the process's mask takes away from it
constexpr mode_t kEveryPermission = 07777;

DWORD FolderError() {
  // The system has two numbers for a folder that is not empty.
  return errno == EEXIST || errno == ENOTEMPTY ? ERROR_NOT_EMPTY : OsErrorFromErrno(errno);
}

}  // namespace

DWORD CheckFolderPlace(const CString& place) {
  std::string native;
  if (!NativePath(place, native)) return GetLastError();
  struct stat status = {};
  if (lstat(native.c_str(), &status) != 0) return errno == ENOENT ? ERROR_SUCCESS : OsErrorFromErrno(errno);
  if (!S_ISDIR(status.st_mode)) return ERROR_FILE_EXISTS;
  std::error_code error;
  const bool isEmpty = std::filesystem::is_empty(native, error);
  if (error) return OsErrorFromErrno(error.value());
  return isEmpty ? ERROR_SUCCESS : ERROR_NOT_EMPTY;
}

DWORD MakeOsFolder(const CString& path) {
  std::string native;
  if (!NativePath(path, native)) return GetLastError();
  if (mkdir(native.c_str(), kNewFolderMode) == 0) return ERROR_SUCCESS;
  // A missing name here is that of the folder around it.
  return errno == ENOENT ? ERROR_PATH_NOT_FOUND : OsErrorFromErrno(errno);
}

DWORD RemoveOsFolder(const CString& path) {
  std::string native;
  if (!NativePath(path, native)) return GetLastError();
  return rmdir(native.c_str()) == 0 ? ERROR_SUCCESS : FolderError();
}

DWORD PlaceOsFolder(const CString& folder, const CString& place) {
  std::string nativeFolder;
  std::string nativePlace;
  if (!NativePath(folder, nativeFolder) || !NativePath(place, nativePlace)) return GetLastError();
  struct stat replaced = {};
  if (stat(nativePlace.c_str(), &replaced) == 0) {
    [[maybe_unused]] const int chmoded = chmod(nativeFolder.c_str(), replaced.st_mode & kEveryPermission);
  }
  return rename(nativeFolder.c_str(), nativePlace.c_str()) == 0 ? ERROR_SUCCESS : FolderError();
}

}  // namespace ondrel::platform
