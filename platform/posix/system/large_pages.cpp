// Large pages for large blocks of memory.

#include <ondrel/platform/os/large_pages.h>

#include <sys/mman.h>

#include <memory>

namespace ondrel::platform {

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
