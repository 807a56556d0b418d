// Asking for memory that is likely to be read soon, so that the waiting for it falls together with other work.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ondrel::platform {

/// A hint for `size` bytes that begin `distance` bytes behind `place`. There need not be anything: it changes nothing
/// but the time that a later read takes.
inline void PrefetchBehind(const void* place, std::size_t distance, std::size_t size) noexcept {
  constexpr std::size_t kCacheLine = 64;
  const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(place) + distance;
  for (std::size_t offset = 0; offset < size; offset += kCacheLine) {
    __builtin_prefetch(reinterpret_cast<const void*>(start + offset));  // NOLINT(performance-no-int-to-ptr): see above
  }
}

}  // namespace ondrel::platform
