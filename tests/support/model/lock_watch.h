// Whether a set's lock is free, which only another thread can tell: the one that has it may take it again.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::test {

/// Has a thread of its own, so that asking allocates nothing.
class LockWatch {
 public:
  LockWatch();
  ~LockWatch();
  LockWatch(const LockWatch&) = delete;
  LockWatch& operator=(const LockWatch&) = delete;

  /// Whether another thread gets the set's lock. One that the calling thread has kept is taken from it, so that the
  /// test goes on.
  bool IsFree(const CMMCObjectSet& set);

 private:
  void Watch();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  CCriticalSection* m_asked = nullptr;  ///< The lock to try; null when there is nothing to do.
  bool m_ends = false;
  std::thread m_thread;
};

}  // namespace ondrel::test
