// Values of each thread.
#pragma once

#include <cstdint>

namespace ondrel::platform {

/// A number or an address of each thread, 0 until the thread sets it. One slot for each `Tag`. Nothing is done with the
/// value when the thread ends, and it may be used until the very end of the thread.
template <class Tag>
class OsThreadSlot {
 public:
  static std::uintptr_t Get() noexcept { return t_value; }
  static void Set(std::uintptr_t value) noexcept { t_value = value; }

 private:
  static inline constinit thread_local std::uintptr_t t_value = 0;
};

}  // namespace ondrel::platform
