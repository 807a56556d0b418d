// A block of memory that grows, with its owner.
#pragma once

#include <cstddef>
#include <utility>

#include <ondrel/platform/os/memory_block.h>

namespace ondrel::platform {

/// Bytes that are not initialised when they are added. No bytes at first.
class OsBlock {
 public:
  OsBlock() noexcept = default;
  OsBlock(OsBlock&& other) noexcept
      : m_bytes(std::exchange(other.m_bytes, nullptr)), m_size(std::exchange(other.m_size, 0)) {}
  OsBlock& operator=(OsBlock&&) = delete;
  ~OsBlock() { FreeOsBlock(m_bytes, m_size); }

  /// Null while there are none. Valid until the block grows.
  std::byte* Bytes() const noexcept { return m_bytes; }
  std::size_t Size() const noexcept { return m_size; }

  /// Makes the block one of `size` bytes, which are more than it has, and keeps the first `used` of them. False when
  /// memory is short; the block is as it was then.
  bool Grow(std::size_t used, std::size_t size) noexcept {
    void* const grown = GrowOsBlock(m_bytes, used, m_size, size);
    if (grown == nullptr) return false;
    m_bytes = static_cast<std::byte*>(grown);
    m_size = size;
    return true;
  }

 private:
  std::byte* m_bytes = nullptr;
  std::size_t m_size = 0;
};

}  // namespace ondrel::platform
