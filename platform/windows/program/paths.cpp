// Path arguments as wide text and back, and the full form of a path.
#include <ondrel/platform/program.h>

#include <ondrel/platform/drive_letter.h>

#include "system/system_path.h"
#include "text/unicode.h"

namespace ondrel::platform {

// File names may have lone surrogates. They are encoded like any other character, so that the name is found again.

CString PathFromUtf8(const std::string& path) {
  constexpr bool kSurrogates = true;
  std::wstring text;
  text.reserve(path.size());
  const char* byte = path.data();
  const char* const end = byte + path.size();
  while (byte != end) {
    WCHAR units[2];
    text.append(units, PutUtf16(TakeUtf8(byte, end, kSurrogates).character, units));
  }
  return CString(std::move(text));
}

std::string PathToUtf8(const CString& path) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(path.GetLength()));
  const WCHAR* unit = path.GetString();
  const WCHAR* const end = unit + path.GetLength();
  while (unit != end) {
    char encoded[4];
    bytes.append(encoded, PutUtf8(TakeUtf16(unit, end), encoded));
  }
  return bytes;
}

std::string PathForPrograms(const CString& path) { return PathToUtf8(path); }

CString FullPath(const CString& path) {
  if (path.IsEmpty() || !CanReach(path)) return path;
  std::wstring full;
  if (const DWORD code = FullSystemPath(path, full); code != ERROR_SUCCESS) {
    const auto osError = static_cast<LONG>(code);
    AfxThrowFileException(CFileException::OsErrorToException(osError), osError, path);
  }
  return CString(std::move(full));
}

bool CanReach(const CString& path) {
  if (!HasDriveLetter(path.View())) return true;
  const CString root = path.Left(2) + _T("\\");
  return GetDriveTypeW(root) != DRIVE_NO_ROOT_DIR;
}

}  // namespace ondrel::platform
