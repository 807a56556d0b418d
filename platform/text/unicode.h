// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <ondrel/platform/types.h>
#include <ondrel/platform/utf16.h>

namespace ondrel::platform {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::size_t kMaximumUtf8PerUnit = 3;  // bytes that one unit of UTF-16 can become

/// Writes a character, a lone surrogate included, as 1 to 4 bytes; how many.
inline std::size_t PutUtf8(char32_t character, char* bytes) {
  const auto tail = [character](int shift) { return static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    bytes[0] = static_cast<char>(character);
    return 1;
  }
  if (character < 0x800) {
    bytes[0] = static_cast<char>(0xC0 | (character >> 6));
    bytes[1] = tail(0);
    return 2;
  }
  if (character < 0x10000) {
    bytes[0] = static_cast<char>(0xE0 | (character >> 12));
    bytes[1] = tail(6);
    bytes[2] = tail(0);
    return 3;
  }
  bytes[0] = static_cast<char>(0xF0 | (character >> 18));
  bytes[1] = tail(12);
  bytes[2] = tail(6);
  bytes[3] = tail(0);
  return 4;
}

// Nearly all text is ASCII. These copy it several characters at a time, as long as all of them are, and give how many
// that were: a few characters before one of another kind, or before the end, may be left to the caller. With
// `StopsAtControls`, characters below the blank are of another kind too.

template <bool StopsAtControls = false>
std::size_t CopyAscii(const char* from, std::size_t count, char* bytes) {
  constexpr std::uint64_t kEach = 0x0101'0101'0101'0101;
  std::size_t copied = 0;
  for (; count - copied >= sizeof kEach; copied += sizeof kEach) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, from + copied, sizeof eight);
    if ((eight & (kEach * 0x80)) != 0) break;
    if (StopsAtControls && ((eight + kEach * (0x80 - ' ')) & (kEach * 0x80)) != kEach * 0x80) break;
    std::memcpy(bytes + copied, &eight, sizeof eight);
  }
  return copied;
}

template <bool StopsAtControls = false>
std::size_t CopyAscii(const WCHAR* units, std::size_t count, char* bytes) {
  constexpr std::uint64_t kEach = 0x0001'0001'0001'0001;
  std::size_t copied = 0;
  for (; count - copied >= 4; copied += 4) {
    std::uint64_t four = 0;
    std::memcpy(&four, units + copied, sizeof four);
    if ((four & (kEach * 0xFF80)) != 0) break;
    if (StopsAtControls && ((four + kEach * (0x80 - ' ')) & (kEach * 0x80)) != kEach * 0x80) break;
    four = (four | (four >> 8)) & 0x0000'FFFF'0000'FFFF;
    const auto narrow = static_cast<std::uint32_t>(four | (four >> 16));
    std::memcpy(bytes + copied, &narrow, sizeof narrow);
  }
  return copied;
}

inline std::size_t CopyAscii(const char* bytes, std::size_t count, WCHAR* units) {
  std::size_t copied = 0;
  for (; count - copied >= 4; copied += 4) {
    std::uint32_t narrow = 0;
    std::memcpy(&narrow, bytes + copied, sizeof narrow);
    if ((narrow & 0x8080'8080) != 0) break;
    std::uint64_t four = narrow;
    four = (four | (four << 16)) & 0x0000'FFFF'0000'FFFF;
    four = (four | (four << 8)) & 0x00FF'00FF'00FF'00FF;
    std::memcpy(units + copied, &four, sizeof four);
  }
  return copied;
}

struct Utf8Character {
  char32_t character;  ///< kReplacementCharacter when it is not valid.
  bool valid;
};

/// The character at `bytes`, which is before `end`; `bytes` moves behind it. Of bytes that are no UTF-8 it takes the
/// longest run that begins a character, at least one byte, as one replacement character. Encoded surrogates are valid
/// only with `surrogates`.
inline Utf8Character TakeUtf8(const char*& bytes, const char* end, bool surrogates = false) {
  const auto lead = static_cast<unsigned char>(*bytes++);
  if (lead < 0x80) return {lead, true};
  // What the second byte may be keeps overlong forms, surrogates and numbers beyond U+10FFFF out.
  int more = 0;
  unsigned lowest = 0x80;
  unsigned highest = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    more = 1;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    more = 2;
    if (lead == 0xE0) lowest = 0xA0;
    if (lead == 0xED && !surrogates) highest = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    more = 3;
    if (lead == 0xF0) lowest = 0x90;
    if (lead == 0xF4) highest = 0x8F;
  } else {
    return {kReplacementCharacter, false};
  }
  char32_t character = lead & (0x3FU >> more);
  for (; more > 0; --more) {
    if (bytes == end) return {kReplacementCharacter, false};
    const auto next = static_cast<unsigned char>(*bytes);
    if (next < lowest || next > highest) return {kReplacementCharacter, false};
    ++bytes;
    character = (character << 6) | (next & 0x3F);
    lowest = 0x80;
    highest = 0xBF;
  }
  return {character, true};
}

}  // namespace ondrel::platform
