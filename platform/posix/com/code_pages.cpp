// Text between UTF-16 and the narrow code pages: 1252, whatever the locale, and UTF-8.

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include <ondrel/platform/os/com.h>

#include "text/code_page_1252.h"
#include "text/unicode.h"

namespace {

using namespace ondrel::platform;

constexpr UINT kCodePage1252 = 1252;

constexpr DWORD kErrorOnInvalidBytes = 0x08;  // MB_ERR_INVALID_CHARS
constexpr DWORD kPrecomposed = 0x01;          // MB_PRECOMPOSED, the way of 1252 anyhow
constexpr DWORD kErrorOnInvalidUnits = 0x80;  // WC_ERR_INVALID_CHARS
constexpr DWORD kNoBestFit = 0x400;           // WC_NO_BEST_FIT_CHARS, the only way kept here
constexpr char kDefaultByte = '?';

// False for a unit that the code page does not have.
bool ToByte(WCHAR unit, char& byte) {
  if (unit <= 0xFF && !IsSpecial1252(unit)) {
    byte = static_cast<char>(unit);
    return true;
  }
  for (std::size_t i = 0; i < kSpecial1252.size(); ++i) {
    if (kSpecial1252[i] != unit) continue;
    byte = static_cast<char>(kFirstSpecial1252 + i);
    return true;
  }
  return false;
}

int Fail(DWORD code) {
  SetLastError(code);
  return 0;
}

/// Counts what is converted and stores it as far as it fits, never a part of a character.
template <class Unit>
class Target {
 public:
  Target(Unit* units, int capacity) : m_units(units), m_capacity(static_cast<std::size_t>(capacity)) {}

  void Put(const Unit* units, std::size_t count) {
    if (m_capacity > 0 && !m_full) {
      m_full = count > m_capacity - m_count;
      if (!m_full) std::memcpy(m_units + m_count, units, count * sizeof(Unit));
    }
    m_count += count;
  }
  int Finish() const {
    if (m_full) return Fail(ERROR_INSUFFICIENT_BUFFER);
    if (m_count > static_cast<std::size_t>(std::numeric_limits<int>::max())) return Fail(ERROR_INVALID_PARAMETER);
    return static_cast<int>(m_count);
  }

 private:
  Unit* m_units;
  std::size_t m_capacity;
  std::size_t m_count = 0;
  bool m_full = false;
};

// Both conversions take the same arguments: a negative source count means "up to and with the zero unit".
template <class From, class To>
bool AreArgumentsValid(const From* source, int count, const To* target, int capacity) {
  if (source == nullptr || count == 0 || capacity < 0) return false;
  return capacity == 0 || (target != nullptr && static_cast<const void*>(source) != static_cast<const void*>(target));
}

template <class Unit>
const Unit* EndOf(const Unit* source, int count) {
  return source + (count < 0 ? std::char_traits<Unit>::length(source) + 1 : static_cast<std::size_t>(count));
}

// 1252 has one unit for every byte, so the length is known before anything is converted.
int From1252(const char* bytes, const char* end, WCHAR* text, int capacity) {
  const auto length = static_cast<std::size_t>(end - bytes);
  if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) return Fail(ERROR_INVALID_PARAMETER);
  if (capacity == 0) return static_cast<int>(length);
  const std::size_t fitting = std::min(length, static_cast<std::size_t>(capacity));
  // Most blocks have no special byte, and then need no decision on any byte.
  constexpr std::size_t kBlock = 4096;
  for (std::size_t start = 0; start < fitting; start += kBlock) {
    const std::size_t behind = std::min(start + kBlock, fitting);
    unsigned char anyBits = 0;
    for (std::size_t i = start; i < behind; ++i) anyBits |= static_cast<unsigned char>(bytes[i]);
    if (anyBits < kFirstSpecial1252) {
      for (std::size_t i = start; i < behind; ++i) text[i] = static_cast<unsigned char>(bytes[i]);
    } else {
      for (std::size_t i = start; i < behind; ++i) text[i] = UnitOf1252(bytes[i]);
    }
  }
  return fitting < length ? Fail(ERROR_INSUFFICIENT_BUFFER) : static_cast<int>(length);
}

int FromUtf8(const char* bytes, const char* end, bool strict, WCHAR* text, int capacity) {
  Target<WCHAR> target(text, capacity);
  while (bytes != end) {
    const Utf8Character next = TakeUtf8(bytes, end);
    if (strict && !next.valid) return Fail(ERROR_NO_UNICODE_TRANSLATION);
    WCHAR units[2];
    target.Put(units, PutUtf16(next.character, units));
  }
  return target.Finish();
}

int To1252(const WCHAR* text, const WCHAR* end, char* bytes, int capacity, char defaultByte, BOOL* usedDefault) {
  Target<char> target(bytes, capacity);
  bool replaced = false;
  for (; text != end; ++text) {
    char byte = defaultByte;
    if (!ToByte(*text, byte)) replaced = true;
    target.Put(&byte, 1);
  }
  if (usedDefault != nullptr) *usedDefault = replaced ? TRUE : FALSE;
  return target.Finish();
}

int ToUtf8(const WCHAR* text, const WCHAR* end, bool strict, char* bytes, int capacity) {
  Target<char> target(bytes, capacity);
  while (text != end) {
    char32_t character = TakeUtf16(text, end);
    if (IsSurrogate(character)) {
      if (strict) return Fail(ERROR_NO_UNICODE_TRANSLATION);
      character = kReplacementCharacter;
    }
    char encoded[4];
    target.Put(encoded, PutUtf8(character, encoded));
  }
  return target.Finish();
}

bool Is1252(UINT codePage) { return codePage == CP_ACP || codePage == CP_THREAD_ACP || codePage == kCodePage1252; }

}  // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteCount, WCHAR* text, int capacity) {
  if (!AreArgumentsValid(bytes, byteCount, text, capacity)) return Fail(ERROR_INVALID_PARAMETER);
  if (Is1252(codePage)) {
    if ((flags & ~(kPrecomposed | kErrorOnInvalidBytes)) != 0) return Fail(ERROR_INVALID_FLAGS);
    return From1252(bytes, EndOf(bytes, byteCount), text, capacity);
  }
  if (codePage != CP_UTF8) return Fail(ERROR_INVALID_PARAMETER);
  if ((flags & ~kErrorOnInvalidBytes) != 0) return Fail(ERROR_INVALID_FLAGS);
  return FromUtf8(bytes, EndOf(bytes, byteCount), flags != 0, text, capacity);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR* text, int length, char* bytes, int capacity,
                        const char* defaultByte, BOOL* usedDefault) {
  if (!AreArgumentsValid(text, length, bytes, capacity)) return Fail(ERROR_INVALID_PARAMETER);
  if (Is1252(codePage)) {
    if ((flags & ~kNoBestFit) != 0) return Fail(ERROR_INVALID_FLAGS);
    return To1252(text, EndOf(text, length), bytes, capacity, defaultByte != nullptr ? *defaultByte : kDefaultByte,
                  usedDefault);
  }
  // UTF-8 has every character, so there is no place for a default.
  if (codePage != CP_UTF8 || defaultByte != nullptr || usedDefault != nullptr) return Fail(ERROR_INVALID_PARAMETER);
  if ((flags & ~kErrorOnInvalidUnits) != 0) return Fail(ERROR_INVALID_FLAGS);
  return ToUtf8(text, EndOf(text, length), flags != 0, bytes, capacity);
}
