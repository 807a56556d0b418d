// Blocks of memory that grow, and large pages for large ones.

#include <ondrel/platform/os/memory_block.h>

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <limits>

namespace ondrel::platform {

namespace {

// Blocks of this size and more are the system's own. An allocator's would begin with some bytes for itself, and to
// write these makes small pages of the first large one.
constexpr std::size_t kLargeBlockSize = std::size_t{4} * 1024 * 1024;
constexpr std::size_t kLargePageSize = std::size_t{2} * 1024 * 1024;

bool IsLarge(std::size_t size) { return size >= kLargeBlockSize; }

// The size of the large pages that hold so many bytes; the system lets blocks of whole large pages begin with one.
std::size_t MappedSize(std::size_t size) { return (size + kLargePageSize - 1) / kLargePageSize * kLargePageSize; }

// Makes a large block larger, or a new one of null. Null when memory is short.
void* GrowMapping(void* block, std::size_t capacity, std::size_t size) {
  const std::size_t mappedSize = MappedSize(size);
  void* const mapped = block == nullptr
                           ? mmap(nullptr, mappedSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)
                           : mremap(block, MappedSize(capacity), mappedSize, MREMAP_MAYMOVE);
  if (mapped == MAP_FAILED) return nullptr;
#ifdef MADV_HUGEPAGE
  madvise(mapped, mappedSize, MADV_HUGEPAGE);  // a hint, which changes nothing but the time
#endif
  return mapped;
}

}  // namespace

void* GrowOsBlock(void* block, std::size_t used, std::size_t capacity, std::size_t size) {
  if (!IsLarge(size)) return std::realloc(block, size);
  if (size > std::numeric_limits<std::size_t>::max() - kLargePageSize) return nullptr;
  if (IsLarge(capacity)) return GrowMapping(block, capacity, size);
  void* const mapped = GrowMapping(nullptr, 0, size);
  if (mapped == nullptr) return nullptr;
  if (used > 0) std::memcpy(mapped, block, used);
  std::free(block);
  return mapped;
}

void FreeOsBlock(void* block, std::size_t capacity) {
  if (IsLarge(capacity)) {
    munmap(block, MappedSize(capacity));
  } else {
    std::free(block);
  }
}

}  // namespace ondrel::platform
