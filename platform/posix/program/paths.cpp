// Path arguments as wide text and back, and the full form of a path.
#include <algorithm>
#include <filesystem>
#include <string_view>

#include <ondrel/platform/program.h>

#include "system/native_path.h"
#include "system/os_error.h"

namespace ondrel::platform {
namespace {

// Wide text carries a byte that is no UTF-8 as this unit plus the byte.
constexpr WCHAR kRawByteBase = 0xDC00;

// The bytes that a UTF-8 sequence with this first byte has; 0 when it starts none.
std::size_t SequenceLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

// Takes one character off the front of `bytes`. False, with nothing taken, when they do not start with one.
bool TakeCharacter(std::string_view& bytes, char32_t& character) {
  const auto first = static_cast<unsigned char>(bytes[0]);
  const std::size_t length = SequenceLength(first);
  if (length == 0 || length > bytes.size()) return false;
  char32_t value = length == 1 ? first : first & (0xFFU >> (length + 1));
  for (std::size_t index = 1; index < length; ++index) {
    const auto next = static_cast<unsigned char>(bytes[index]);
    if ((next & 0xC0) != 0x80) return false;
    value = (value << 6) | (next & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};  // by length; shorter forms of a character are invalid
  if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return false;
  character = value;
  bytes.remove_prefix(length);
  return true;
}

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
  std::string_view rest = path;
  while (!rest.empty()) {
    char32_t character = 0;
    if (!TakeCharacter(rest, character)) {
      text += static_cast<WCHAR>(kRawByteBase + static_cast<unsigned char>(rest[0]));
      rest.remove_prefix(1);
    } else if (character < 0x10000) {
      text += static_cast<WCHAR>(character);
    } else {
      text += static_cast<WCHAR>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<WCHAR>(0xDC00 + ((character - 0x10000) & 0x3FF));
    }
  }
  return CString(std::move(text));
}

std::string PathToUtf8(const CString& path) {
  std::string bytes;
  AppendNativeText(path.View(), bytes);
  return bytes;
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
