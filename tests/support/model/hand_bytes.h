// Bytes as a test writes them by hand: hexadecimal digits, and the archive's values one by one.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <ondrel/platform/types.h>

namespace ondrel::test {

/// "01 ff 0A" as three bytes. Blanks between the digits say nothing.
inline std::string FromHex(std::string_view text) {
  std::string bytes;
  int digits = 0;
  int value = 0;
  for (const char unit : text) {
    if (unit == ' ' || unit == '\n') continue;
    const std::size_t digit = std::string_view("0123456789abcdef").find(static_cast<char>(unit | 0x20));
    if (digit == std::string_view::npos) throw std::invalid_argument("no hexadecimal digit: " + std::string(1, unit));
    value = value * 16 + static_cast<int>(digit);
    if (++digits % 2 == 0) {
      bytes.push_back(static_cast<char>(value));
      value = 0;
    }
  }
  if (digits % 2 != 0) throw std::invalid_argument("half a byte: " + std::string(text));
  return bytes;
}

/// The low `size` bytes of a number, the lowest first.
inline std::string LittleEndian(std::uint64_t value, int size) {
  std::string bytes;
  for (int index = 0; index < size; ++index) bytes.push_back(static_cast<char>(value >> (8 * index)));
  return bytes;
}
inline std::string Word(unsigned value) { return LittleEndian(value, 2); }
inline std::string Long(std::int64_t value) { return LittleEndian(static_cast<std::uint64_t>(value), 4); }
inline std::string Cookie(std::int64_t value) { return LittleEndian(static_cast<std::uint64_t>(value), 8); }
inline std::string Count(std::uint64_t value) { return LittleEndian(value, 8); }
/// A byte vector: its 32-bit count, then the bytes.
inline std::string ByteVector(std::string_view bytes) { return LittleEndian(bytes.size(), 4) + std::string(bytes); }
/// Text of fewer than 255 units of ASCII.
inline std::string ShortText(std::string_view ascii) {
  std::string bytes = "\xFF\xFE\xFF" + std::string(1, static_cast<char>(ascii.size()));
  for (const char unit : ascii) bytes += {unit, '\0'};
  return bytes;
}

/// A bitmap of type 0: width, height, bytes per row, planes 1, depth, pixels.
inline std::string BitmapBytes(std::int64_t width, std::int64_t height, std::int64_t widthBytes, unsigned depth,
                               std::string_view pixels) {
  return Long(0) + Long(width) + Long(height) + Long(widthBytes) + Word(1) + Word(depth) + ByteVector(pixels);
}

}  // namespace ondrel::test
