// Large pages for large blocks of memory.
#pragma once

#include <cstddef>

#include <ondrel/platform/os/export.h>

namespace ondrel::platform {

/// Blocks of this size and more are worth large pages.
inline constexpr std::size_t kLargeBlockSize = std::size_t{4} * 1024 * 1024;

/// Asks the system to back a block with large pages where it lies on them: most of what a large new block costs is that
/// the system provides it page by page. A hint, which changes nothing but the time.
ONDREL_OS_EXPORT void UseLargePages(void* block, std::size_t size);

}  // namespace ondrel::platform
