// Large pages for large blocks of memory, which on this system only accounts of their own right may use.
#pragma once

#include <cstddef>

namespace ondrel::platform {

inline constexpr std::size_t kLargeBlockSize = std::size_t{4} * 1024 * 1024;
inline void UseLargePages(void*, std::size_t) {}

}  // namespace ondrel::platform
