// Values of each thread.
#pragma once

#include <cstdint>
#include <cstdlib>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// A number or an address of each thread, 0 until the thread sets it. One slot for each `Tag`. Nothing is done with the
/// value when the thread ends, and it may be used until the very end of the thread: of the compiler's thread_local,
/// which has memory from the heap behind it, nothing is left when libraries are told that a thread ends.
template <class Tag>
class OsThreadSlot {
 public:
  static std::uintptr_t Get() noexcept {
    const KeptLastError error;
    return reinterpret_cast<std::uintptr_t>(TlsGetValue(s_index));
  }
  static void Set(std::uintptr_t value) noexcept {
    const KeptLastError error;
    TlsSetValue(s_index, reinterpret_cast<void*>(value));
  }

 private:
  // The system's calls set the last error on success, too.
  class KeptLastError {
   public:
    ~KeptLastError() { SetLastError(m_code); }

   private:
    const DWORD m_code = GetLastError();
  };

  class Index {
   public:
    Index() noexcept {
      if (m_index == TLS_OUT_OF_INDEXES) std::abort();
    }
    ~Index() { TlsFree(m_index); }
    Index(const Index&) = delete;
    Index& operator=(const Index&) = delete;
    operator DWORD() const noexcept { return m_index; }

   private:
    const DWORD m_index = TlsAlloc();
  };

  static inline const Index s_index;
};

}  // namespace ondrel::platform
