// Wide paths turned into the bytes that the system's calls take.
#include "system/native_path.h"

#include <algorithm>

#include <ondrel/platform/drive_letter.h>

namespace ondrel::platform {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;
// A byte 80 to FF that is no UTF-8 is carried in wide text as this unit plus the byte.
constexpr char32_t kRawByteBase = 0xDC00;

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool IsRawByte(char32_t unit) { return unit >= kRawByteBase + 0x80 && unit <= kRawByteBase + 0xFF; }

void AppendUtf8(char32_t character, std::string& bytes) {
  const auto continuation = [character](int shift) { return static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    bytes += static_cast<char>(character);
  } else if (character < 0x800) {
    bytes += static_cast<char>(0xC0 | (character >> 6));
    bytes += continuation(0);
  } else if (character < 0x10000) {
    bytes += static_cast<char>(0xE0 | (character >> 12));
    bytes += continuation(6);
    bytes += continuation(0);
  } else {
    bytes += static_cast<char>(0xF0 | (character >> 18));
    bytes += continuation(12);
    bytes += continuation(6);
    bytes += continuation(0);
  }
}

}  // namespace

bool AppendNativeText(std::basic_string_view<WCHAR> text, std::string& bytes) {
  bool faithful = true;
  bytes.reserve(bytes.size() + text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    const char32_t unit = text[index];
    if (IsHighSurrogate(unit) && index + 1 < text.size() && IsLowSurrogate(text[index + 1])) {
      AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (text[++index] - 0xDC00), bytes);
    } else if (IsRawByte(unit)) {
      bytes += static_cast<char>(unit - kRawByteBase);
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendUtf8(kReplacementCharacter, bytes);
      faithful = false;
    } else {
      AppendUtf8(unit, bytes);
    }
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
