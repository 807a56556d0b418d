// The count of objects that callers hold handles to.
#pragma once

#include <atomic>

namespace ondrel::platform {

/// A part of every object of one kind that a handle names: counts the object while it lives.
template <class Kind>
class LiveHandle {
 public:
  LiveHandle() noexcept { s_count.fetch_add(1, std::memory_order_relaxed); }
  ~LiveHandle() { s_count.fetch_sub(1, std::memory_order_relaxed); }
  LiveHandle(const LiveHandle&) = delete;
  LiveHandle& operator=(const LiveHandle&) = delete;

  static long Count() noexcept { return s_count.load(std::memory_order_relaxed); }

 private:
  static inline std::atomic<long> s_count{0};
};

}  // namespace ondrel::platform
