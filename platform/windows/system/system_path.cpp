// Paths in the form that the system's calls take.
#include "system/system_path.h"

#include <string_view>

namespace ondrel::platform {
namespace {

// Without the extended form the calls take paths of less than MAX_PATH units, folders of 12 less.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 12;
constexpr std::wstring_view kExtended = L"\\\\?\\";
constexpr std::wstring_view kExtendedNetwork = L"\\\\?\\UNC\\";
constexpr std::wstring_view kNetwork = L"\\\\";
constexpr std::wstring_view kDevices = L"\\\\.\\";

}  // namespace

DWORD FullSystemPath(LPCWSTR path, std::wstring& full) {
  DWORD length = MAX_PATH;
  do {
    full.resize(length);
    length = GetFullPathNameW(path, static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0) return GetLastError();
  } while (length > full.size());  // the room that is needed; a length that fits does not count the closing zero
  full.resize(length);
  return ERROR_SUCCESS;
}

DWORD SystemPath(LPCWSTR path, std::wstring& systemPath) {
  systemPath = path;
  if (systemPath.empty()) return ERROR_PATH_NOT_FOUND;
  if (systemPath.size() < kLongestPlainPath || systemPath.starts_with(kExtended)) return ERROR_SUCCESS;
  std::wstring full;
  if (const DWORD code = FullSystemPath(path, full); code != ERROR_SUCCESS) return code;
  if (full.starts_with(kNetwork)) {
    systemPath = std::wstring(kExtendedNetwork) + full.substr(kNetwork.size());
  } else {
    systemPath = std::wstring(kExtended) + full;
  }
  return ERROR_SUCCESS;
}

bool IsDevicePath(const std::wstring& full) { return full.starts_with(kDevices); }

bool IsFolderOrSeparator(LPCWSTR path) {
  const std::wstring_view text(path);
  if (text.ends_with(L'\\') || text.ends_with(L'/')) return true;
  const DWORD attributes = GetFileAttributesW(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace ondrel::platform
