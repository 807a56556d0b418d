// The lock of data of the whole process.
#pragma once

#include <mutex>

namespace ondrel::platform {

/// A lock for std::lock_guard that is there before the first constructor of a static object and after the last
/// destructor. Not recursive.
using OsStaticLock = std::mutex;

}  // namespace ondrel::platform
