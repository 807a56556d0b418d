// Code page 1252: Latin-1 but for 32 bytes.
#pragma once

#include <array>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// What the bytes from 0x80 to 0x9F mean. The five unassigned ones are the control characters of the same number.
inline constexpr WCHAR kFirstSpecial1252 = 0x80;
inline constexpr std::array<WCHAR, 32> kSpecial1252{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsSpecial1252(unsigned value) {
  return value >= kFirstSpecial1252 && value < kFirstSpecial1252 + kSpecial1252.size();
}

constexpr WCHAR UnitOf1252(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return IsSpecial1252(value) ? kSpecial1252[value - kFirstSpecial1252] : static_cast<WCHAR>(value);
}

}  // namespace ondrel::platform
