// The cookie of the code files whose records are tested, and its bytes in a record.
#pragma once

#include <string>

#include "support/model/hand_bytes.h"

namespace ondrel::test {

inline constexpr __int64 kFile = 0x0102030405060708;
inline const std::string kCookieBytes = FromHex("08 07 06 05 04 03 02 01");

}  // namespace ondrel::test
