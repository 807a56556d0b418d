// Wide paths turned into the bytes that the system's calls take.
#include "system/native_path.h"

#include <algorithm>

#include <ondrel/platform/drive_letter.h>

#include "text/unicode.h"

namespace ondrel::platform {
namespace {

// A byte 80 to FF that is no UTF-8 is carried in wide text as this unit plus the byte.
constexpr char32_t kRawByteBase = 0xDC00;

constexpr bool IsRawByte(char32_t unit) { return unit >= kRawByteBase + 0x80 && unit <= kRawByteBase + 0xFF; }

}  // namespace

bool AppendNativeText(std::basic_string_view<WCHAR> text, std::string& bytes) {
  bool faithful = true;
  bytes.reserve(bytes.size() + text.size());
  const WCHAR* unit = text.data();
  const WCHAR* const end = unit + text.size();
  while (unit != end) {
    char32_t character = TakeUtf16(unit, end);
    if (IsRawByte(character)) {
      bytes += static_cast<char>(character - kRawByteBase);
      continue;
    }
    if (IsSurrogate(character)) {
      character = kReplacementCharacter;
      faithful = false;
    }
    char encoded[4];
    bytes.append(encoded, PutUtf8(character, encoded));
  }
  return faithful;
}

bool NativePath(LPCWSTR path, std::string& native) {
  const std::basic_string_view<WCHAR> text(path);
  if (text.empty() || HasDriveLetter(text)) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return false;
  }
  native.clear();
  if (!AppendNativeText(text, native)) {
    SetLastError(ERROR_INVALID_NAME);
    return false;
  }
  std::replace(native.begin(), native.end(), '\\', '/');
  return true;
}

}  // namespace ondrel::platform
