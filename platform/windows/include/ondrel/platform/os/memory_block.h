// Blocks of memory that grow. OsBlock owns one.
#pragma once

#include <cstddef>
#include <cstring>
#include <new>

namespace ondrel::platform {

/// A block of `size` bytes, which are more than its `capacity`, the size that it was last given; with the first `used`
/// bytes of `block`, the others are not initialised. `block`, which may be null, is given up. Null when memory is
/// short; `block` is as it was then.
inline void* GrowOsBlock(void* block, std::size_t used, std::size_t, std::size_t size) {
  void* const grown = ::operator new(size, std::nothrow);
  if (grown == nullptr) return nullptr;
  if (used > 0) std::memcpy(grown, block, used);
  ::operator delete(block);
  return grown;
}
inline void FreeOsBlock(void* block, std::size_t) { ::operator delete(block); }

}  // namespace ondrel::platform
