// Blocks of memory that grow.
#pragma once

#include <cstddef>

#include <ondrel/platform/os/export.h>

namespace ondrel::platform {

/// A block of `size` bytes, which are more than it had, with the first `used` bytes of `block`; the others are not
/// initialised. `block`, which may be null, is given up. Null when memory is short; `block` is as it was then.
ONDREL_OS_EXPORT void* GrowOsBlock(void* block, std::size_t used, std::size_t size);
ONDREL_OS_EXPORT void FreeOsBlock(void* block);

/// Blocks of this size and more are worth large pages.
inline constexpr std::size_t kLargeBlockSize = std::size_t{4} * 1024 * 1024;

/// Asks the system to back a block with large pages where it lies on them: most of what a large new block costs is that
/// the system provides it page by page. A hint, which changes nothing but the time. GrowOsBlock gives it, too.
void UseLargePages(void* block, std::size_t size);

}  // namespace ondrel::platform
