// The lock of data of the whole process.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// A lock for std::lock_guard that is there before the first constructor of a static object and after the last
/// destructor. Not recursive. When a thread that holds it is ended with the process, whoever waits for it is ended,
/// too.
class OsStaticLock {
 public:
  constexpr OsStaticLock() noexcept = default;
  OsStaticLock(const OsStaticLock&) = delete;
  OsStaticLock& operator=(const OsStaticLock&) = delete;

  void lock() noexcept { AcquireSRWLockExclusive(&m_lock); }
  void unlock() noexcept { ReleaseSRWLockExclusive(&m_lock); }

 private:
  SRWLOCK m_lock = SRWLOCK_INIT;
};

}  // namespace ondrel::platform
