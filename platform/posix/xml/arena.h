// Memory that is taken piece by piece and given back all at once, with its owner.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <ondrel/platform/os_block.h>

namespace ondrel::platform {

class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  /// Memory that lives as long as the arena. Raises std::bad_alloc.
  void* Allocate(std::size_t size, std::size_t alignment) {
    const std::size_t padding = -reinterpret_cast<std::uintptr_t>(m_next) & (alignment - 1);
    if (m_left < padding || m_left - padding < size) return AllocateBlock(size);
    void* const memory = m_next + padding;
    m_next += padding + size;
    m_left -= padding + size;
    return memory;
  }

  /// An object that is never destroyed.
  template <class Object, class... Arguments>
  Object* New(Arguments&&... arguments) {
    static_assert(std::is_trivially_destructible_v<Object>);
    return new (Allocate(sizeof(Object), alignof(Object))) Object(std::forward<Arguments>(arguments)...);
  }

  /// Objects that are never destroyed, made as by {}.
  template <class Object>
  std::span<Object> NewArray(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<Object>);
    auto* const objects = static_cast<Object*>(Allocate(count * sizeof(Object), alignof(Object)));
    std::uninitialized_value_construct_n(objects, count);
    return {objects, count};
  }

  /// A copy of `text`.
  const char* Copy(std::string_view text);

 private:
  void* AllocateBlock(std::size_t size);

  std::vector<OsBlock> m_blocks;
  std::byte* m_next = nullptr;
  std::size_t m_left = 0;
  std::size_t m_nextBlockSize = kFirstBlockSize;

  // Blocks double from a page to a size at which neither the allocator's cost nor the system's shows.
  static constexpr std::size_t kFirstBlockSize = std::size_t{4} * 1024;
  static constexpr std::size_t kLargestBlockSize = std::size_t{16} * 1024 * 1024;
};

}  // namespace ondrel::platform
