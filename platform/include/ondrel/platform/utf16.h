// UTF-16, unit by unit, and which characters XML text can carry (section 2.2 of XML 1.0).
#pragma once

#include <cstddef>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr bool IsSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

/// Whether XML text can carry the character, directly or as a reference.
constexpr bool IsXmlCharacter(char32_t character) {
  if (character < ' ') return character == '\t' || character == '\n' || character == '\r';
  return !IsSurrogate(character) && character != 0xFFFE && character != 0xFFFF;
}

/// The character at `text`, which is before `end`; `text` moves behind it. A lone surrogate is given as it is.
inline char32_t TakeUtf16(const WCHAR*& text, const WCHAR* end) {
  const char32_t unit = *text++;
  if (!IsHighSurrogate(unit) || text == end || !IsLowSurrogate(*text)) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (*text++ - 0xDC00);
}

/// Writes a character as 1 or 2 units; how many.
inline std::size_t PutUtf16(char32_t character, WCHAR* units) {
  if (character < 0x10000) {
    units[0] = static_cast<WCHAR>(character);
    return 1;
  }
  units[0] = static_cast<WCHAR>(0xD800 + ((character - 0x10000) >> 10));
  units[1] = static_cast<WCHAR>(0xDC00 + ((character - 0x10000) & 0x3FF));
  return 2;
}

}  // namespace ondrel::platform
