// A new file beside the place that it is to take.
#include "program/file_beside.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "program/temporary_name.h"
#include "system/system_path.h"

namespace ondrel::platform {
namespace {

constexpr int kMaxNameAttempts = 100;      // of names that are all taken
constexpr std::size_t kLongestName = 255;  // units of a file's name, on every file system here

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

// Whether somebody has a file open in a way that does not let it be replaced.
bool IsKeptOpen(const std::wstring& path) {
  constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(path.c_str(), DELETE, kSharing, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
  CloseHandle(file);
  return false;
}

// What a file that is replaced hands on: who may use it, and how folders list it. Where its file system knows no such
// things, the new file comes with its own.
class Inheritance {
 public:
  Inheritance(const std::wstring& oldFile, DWORD oldAttributes) : m_attributes(oldAttributes & kAttributes) {
    DWORD size = 0;
    GetFileSecurityW(oldFile.c_str(), kAccessRules, nullptr, 0, &size);
    m_rules.resize(size);
    if (!GetFileSecurityW(oldFile.c_str(), kAccessRules, m_rules.data(), size, &size)) m_rules.clear();
  }

  void GiveTo(const std::wstring& newFile) {
    if (!m_rules.empty()) SetFileSecurityW(newFile.c_str(), kAccessRules, m_rules.data());
    if (m_attributes != 0) SetFileAttributesW(newFile.c_str(), m_attributes);
  }

 private:
  static constexpr SECURITY_INFORMATION kAccessRules = DACL_SECURITY_INFORMATION;
  static constexpr DWORD kAttributes =
      FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

  DWORD m_attributes;
  std::vector<BYTE> m_rules;
};

// A name for a file beside `place` that no other has.
std::wstring TemporaryName(const std::wstring& place) {
  const std::string digits = TemporaryEnding();
  const std::wstring ending(digits.begin(), digits.end());
  const std::size_t name = place.rfind(L'\\') + 1;
  return place.substr(0, name) + L"." + place.substr(name, kLongestName - 1 - ending.size()) + ending;
}

}  // namespace

DWORD CreateFileBeside(const CString& path, FileBeside& created) {
  if (path.IsEmpty()) return ERROR_PATH_NOT_FOUND;
  std::wstring place;
  if (const DWORD code = FullSystemPath(path, place); code != ERROR_SUCCESS) return code;
  if (IsDevicePath(place)) return ERROR_ACCESS_DENIED;
  std::wstring systemPlace;
  if (const DWORD code = SystemPath(place.c_str(), systemPlace); code != ERROR_SUCCESS) return code;
  std::optional<Inheritance> inheritance;
  if (DWORD attributes = GetFileAttributesW(systemPlace.c_str()); attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      if (const DWORD code = FollowLinks(systemPlace); code != ERROR_SUCCESS) return code;
      place = systemPlace;
      attributes = GetFileAttributesW(systemPlace.c_str());
    }
    // The system refuses to replace any of these, but only in the end, when all has been written.
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) return ERROR_ACCESS_DENIED;
    if (IsKeptOpen(systemPlace)) return ERROR_SHARING_VIOLATION;
    inheritance.emplace(systemPlace, attributes);
  }
  if (place.back() == L'\\') return ERROR_PATH_NOT_FOUND;  // a folder that is not there
  for (int attempts = 0; attempts < kMaxNameAttempts; ++attempts) {
    const CString name(TemporaryName(place));
    std::wstring systemName;
    if (const DWORD code = SystemPath(name, systemName); code != ERROR_SUCCESS) return code;
    OsFile file = kNoOsFile;
    const DWORD code = OpenOsFile(name, OsAccess::write, OsSharing::nothing, OsCreation::createNew, file);
    if (code == ERROR_FILE_EXISTS) continue;
    // A missing name here is the folder's: the file itself is being made.
    if (code == ERROR_FILE_NOT_FOUND) return ERROR_PATH_NOT_FOUND;
    if (code != ERROR_SUCCESS) return code;
    if (inheritance) inheritance->GiveTo(systemName);
    created = {file, CString(std::move(place)), name};
    return code;
  }
  return ERROR_FILE_EXISTS;
}

// Every file here has a name from its making on.
DWORD PlaceUnnamedFile(OsFile, const CString&) { return ERROR_NOT_SUPPORTED; }

bool IsSameName(const CString& name, const CString& other) {
  constexpr BOOL kIgnoreCase = TRUE;
  return CompareStringOrdinal(name, name.GetLength(), other, other.GetLength(), kIgnoreCase) == CSTR_EQUAL;
}

}  // namespace ondrel::platform
