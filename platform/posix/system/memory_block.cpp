// Blocks of memory that grow, and large pages for large ones.

#include <ondrel/platform/os/memory_block.h>

#include <sys/mman.h>

#include <cstdlib>
#include <memory>

namespace ondrel::platform {

void* GrowOsBlock(void* block, std::size_t, std::size_t size) {
  // The C library can make a large block larger without moving its bytes.
  void* const grown = std::realloc(block, size);
  if (grown != nullptr && size >= kLargeBlockSize) UseLargePages(grown, size);
  return grown;
}

void FreeOsBlock(void* block) { std::free(block); }

void UseLargePages(void* block, std::size_t size) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kPageSize = std::size_t{2} * 1024 * 1024;
  if (std::align(kPageSize, kPageSize, block, size) == nullptr) return;
  madvise(block, size - size % kPageSize, MADV_HUGEPAGE);
#else
  static_cast<void>(block);
  static_cast<void>(size);
#endif
}

}  // namespace ondrel::platform
