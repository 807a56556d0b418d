// Folders as the system makes, renames and removes them.
#include "program/folder_beside.h"

#include <string>

#include "system/system_path.h"

namespace ondrel::platform {
namespace {

// The code of the contract for what has two of them here.
DWORD CodeOf(DWORD code) {
  switch (code) {
    case ERROR_ALREADY_EXISTS:
      return ERROR_FILE_EXISTS;
    case ERROR_DIR_NOT_EMPTY:
      return ERROR_NOT_EMPTY;
    default:
      return code;
  }
}

DWORD ResultOf(BOOL done) { return done ? ERROR_SUCCESS : CodeOf(GetLastError()); }

// Whether a folder holds nothing but the names of itself and of the folder around it.
DWORD LookForEntries(const CString& folder) {
  std::wstring pattern;
  if (const DWORD code = SystemPath(folder + L"\\*", pattern); code != ERROR_SUCCESS) return code;
  WIN32_FIND_DATAW found = {};
  const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : GetLastError();
  DWORD code = ERROR_SUCCESS;
  do {
    const std::wstring name(found.cFileName);
    if (name != L"." && name != L"..") code = ERROR_NOT_EMPTY;
  } while (code == ERROR_SUCCESS && FindNextFileW(search, &found));
  FindClose(search);
  return code;
}

}  // namespace

DWORD CheckFolderPlace(const CString& place) {
  std::wstring systemPath;
  if (const DWORD code = SystemPath(place, systemPath); code != ERROR_SUCCESS) return code;
  if (IsDevicePath(systemPath)) return ERROR_FILE_EXISTS;
  const DWORD attributes = GetFileAttributesW(systemPath.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    const DWORD code = GetLastError();
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND ? ERROR_SUCCESS : code;
  }
  const bool isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  return isFolder && !isLink ? LookForEntries(place) : ERROR_FILE_EXISTS;
}

DWORD MakeOsFolder(const CString& path) {
  std::wstring systemPath;
  if (const DWORD code = SystemPath(path, systemPath); code != ERROR_SUCCESS) return code;
  return ResultOf(CreateDirectoryW(systemPath.c_str(), nullptr));
}

DWORD RemoveOsFolder(const CString& path) {
  std::wstring systemPath;
  if (const DWORD code = SystemPath(path, systemPath); code != ERROR_SUCCESS) return code;
  return ResultOf(RemoveDirectoryW(systemPath.c_str()));
}

DWORD PlaceOsFolder(const CString& folder, const CString& place) {
  std::wstring systemFolder;
  std::wstring systemPlace;
  if (const DWORD code = SystemPath(folder, systemFolder); code != ERROR_SUCCESS) return code;
  if (const DWORD code = SystemPath(place, systemPlace); code != ERROR_SUCCESS) return code;
  // The system puts no folder in place of another one, not even of an empty one.
  const bool replaces = GetFileAttributesW(systemPlace.c_str()) != INVALID_FILE_ATTRIBUTES;
  if (replaces && !RemoveDirectoryW(systemPlace.c_str())) return CodeOf(GetLastError());
  const DWORD code = ResultOf(MoveFileExW(systemFolder.c_str(), systemPlace.c_str(), MOVEFILE_WRITE_THROUGH));
  if (code != ERROR_SUCCESS && replaces) CreateDirectoryW(systemPlace.c_str(), nullptr);
  return code;
}

}  // namespace ondrel::platform
