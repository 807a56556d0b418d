// Blocks of memory that grow, and large pages for large ones. OsBlock owns one.
#pragma once

#include <cstddef>

#include <ondrel/platform/os/export.h>

namespace ondrel::platform {

/// A block of `size` bytes, which are more than its `capacity`, the size that it was last given; with the first `used`
/// bytes of `block`, the others are not initialised. `block`, which may be null, is given up. Null when memory is
/// short; `block` is as it was then. Large blocks come from the system and lie on large pages where it has some,
/// because most of what a large new block costs is that the system provides it page by page; they grow without being
/// copied.
ONDREL_OS_EXPORT void* GrowOsBlock(void* block, std::size_t used, std::size_t capacity, std::size_t size);
ONDREL_OS_EXPORT void FreeOsBlock(void* block, std::size_t capacity);

}  // namespace ondrel::platform
