// Path arguments as wide text and back, and the full form of a path.
#include <algorithm>
#include <filesystem>
#include <string_view>

#include <ondrel/platform/drive_letter.h>
#include <ondrel/platform/program.h>

#include "system/native_path.h"
#include "system/os_error.h"
#include "text/unicode.h"

namespace ondrel::platform {
namespace {

// Wide text carries a byte that is no UTF-8 as this unit plus the byte.
constexpr WCHAR kRawByteBase = 0xDC00;

// Adds one part of a path to `folder`, an absolute path of the system.
void Enter(std::filesystem::path& folder, std::string_view part) {
  if (part.empty() || part == ".") return;
  if (part != "..") {
    folder /= part;
    return;
  }
  // Where the last part is a link, ".." leads above what it points to.
  std::error_code error;
  if (std::filesystem::is_symlink(folder, error)) {
    const std::filesystem::path target = std::filesystem::canonical(folder, error);
    if (!error) folder = target;
  }
  folder = folder.parent_path();
}

}  // namespace

CString PathFromUtf8(const std::string& path) {
  std::basic_string<WCHAR> text;
  text.reserve(path.size());
  const char* byte = path.data();
  const char* const end = byte + path.size();
  while (byte != end) {
    const char* const start = byte;
    const auto [character, valid] = TakeUtf8(byte, end);
    if (valid) {
      WCHAR units[2];
      text.append(units, PutUtf16(character, units));
    } else {
      text += static_cast<WCHAR>(kRawByteBase + static_cast<unsigned char>(*start));
      byte = start + 1;
    }
  }
  return CString(std::move(text));
}

std::string PathToUtf8(const CString& path) {
  std::string bytes;
  AppendNativeText(path.View(), bytes);
  return bytes;
}

std::string PathForPrograms(const CString& path) {
  CString text = path;
  text.Replace('\\', '/');
  return PathToUtf8(text);
}

bool CanReach(const CString& path) {
  const auto text = path.View();
  return !HasDriveLetter(text) && !text.starts_with(_T("\\\\"));
}

CString FullPath(const CString& path) {
  std::string native;
  if (!NativePath(path, native)) return path;
  std::error_code error;
  std::filesystem::path full = "/";
  if (native.front() != '/') {
    full = std::filesystem::current_path(error);
    if (error) {
      const auto osError = static_cast<LONG>(OsErrorFromErrno(error.value()));
      AfxThrowFileException(CFileException::badPath, osError, path);
    }
  }
  std::string_view rest = native;
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find('/'), rest.size());
    Enter(full, rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  std::string result = full.native();
  // A separator at the end says that a folder is meant.
  if (native.back() == '/' && result.back() != '/') result += '/';
  CString wide = PathFromUtf8(result);
  wide.Replace('/', '\\');
  return wide;
}

}  // namespace ondrel::platform
