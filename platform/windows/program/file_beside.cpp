// A new file beside the place that it is to take.
#include "program/file_beside.h"

#include <random>
#include <string>
#include <string_view>

#include "system/system_path.h"

namespace ondrel::platform {
namespace {

constexpr int kMaxNameAttempts = 100;               // of names that are all taken
constexpr std::size_t kLongestName = 255;           // units of a file's name, on every file system here
constexpr std::wstring_view kDevices = L"\\\\.\\";  // what the full path of "NUL" or "COM1" begins with

// The place of a path that is a link: where it leads.
DWORD FollowLinks(std::wstring& path) {
  const HANDLE target = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (target == INVALID_HANDLE_VALUE) return GetLastError();
  std::wstring final(MAX_PATH, L'\0');
  DWORD length = GetFinalPathNameByHandleW(target, final.data(), static_cast<DWORD>(final.size()), 0);
  if (length > final.size()) {
    final.resize(length);
    length = GetFinalPathNameByHandleW(target, final.data(), static_cast<DWORD>(final.size()), 0);
  }
  const DWORD code = length == 0 ? GetLastError() : ERROR_SUCCESS;
  CloseHandle(target);
  if (code != ERROR_SUCCESS) return code;
  final.resize(length);
  path = std::move(final);
  return ERROR_SUCCESS;
}

// A name for a file beside `place` that no other has.
std::wstring TemporaryName(const std::wstring& place) {
  constexpr wchar_t kDigits[] = L"0123456789abcdef";
  std::random_device random;
  std::wstring suffix = L".";
  for (int word = 0; word < 2; ++word) {
    const unsigned bits = random();
    for (int shift = 28; shift >= 0; shift -= 4) suffix += kDigits[(bits >> shift) & 0xF];
  }
  suffix += L".tmp";
  const std::size_t name = place.rfind(L'\\') + 1;
  return place.substr(0, name) + L"." + place.substr(name, kLongestName - 1 - suffix.size()) + suffix;
}

}  // namespace

DWORD CreateFileBeside(const CString& path, FileBeside& created) {
  if (path.IsEmpty()) return ERROR_PATH_NOT_FOUND;
  std::wstring place;
  if (const DWORD code = FullSystemPath(path, place); code != ERROR_SUCCESS) return code;
  if (place.starts_with(kDevices)) return ERROR_ACCESS_DENIED;
  std::wstring systemPlace;
  if (const DWORD code = SystemPath(place.c_str(), systemPlace); code != ERROR_SUCCESS) return code;
  const DWORD attributes = GetFileAttributesW(systemPlace.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ERROR_ACCESS_DENIED;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      if (const DWORD code = FollowLinks(systemPlace); code != ERROR_SUCCESS) return code;
      place = systemPlace;
    }
  }
  if (place.back() == L'\\') return ERROR_PATH_NOT_FOUND;  // a folder that is not there
  for (int attempts = 0; attempts < kMaxNameAttempts; ++attempts) {
    const CString name(TemporaryName(place));
    OsFile file = kNoOsFile;
    const DWORD code = OpenOsFile(name, OsAccess::write, OsSharing::nothing, OsCreation::createNew, file);
    if (code == ERROR_FILE_EXISTS) continue;
    // A missing name here is the folder's: the file itself is being made.
    if (code == ERROR_FILE_NOT_FOUND) return ERROR_PATH_NOT_FOUND;
    if (code == ERROR_SUCCESS) created = {file, CString(std::move(place)), name};
    return code;
  }
  return ERROR_FILE_EXISTS;
}

}  // namespace ondrel::platform
