// Reading and writing through a handle that carries a file descriptor.
#include <ondrel/platform/os/kernel_file.h>

#include <pthread.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <limits>
#include <optional>

#include "system/descriptor.h"

namespace {

using ondrel::platform::TransferError;
using ondrel::platform::Uninterrupted;

// Keeps the signal of a pipe that nobody reads any more from ending the process: for hosts it is an error of the write.
// The signal is the thread's own, so what the process does with it otherwise stays as it is.
class HeldPipeSignal {
 public:
  HeldPipeSignal() {
    sigemptyset(&m_signal);
    sigaddset(&m_signal, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    m_wasPending = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &m_signal, &m_before);
  }
  ~HeldPipeSignal() {
    if (!m_wasPending) {
      constexpr timespec kAtOnce{};
      Uninterrupted([&] { return sigtimedwait(&m_signal, nullptr, &kAtOnce); });
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
  }
  HeldPipeSignal(const HeldPipeSignal&) = delete;
  HeldPipeSignal& operator=(const HeldPipeSignal&) = delete;

 private:
  sigset_t m_signal;
  sigset_t m_before;
  bool m_wasPending;
};

// The descriptor of a handle, and none for a number that no descriptor has: cut to size, it would name another file.
std::optional<int> DescriptorOf(HANDLE handle) {
  const auto number = reinterpret_cast<std::intptr_t>(handle);
  if (number < 0 || number > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(number);
}

// The descriptor behind the arguments of a call, of which nothing is moved yet; none, and the reason in the last error,
// when they are refused.
std::optional<int> Accept(HANDLE handle, DWORD* moved, const OVERLAPPED* overlapped) {
  if (moved == nullptr || overlapped != nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return std::nullopt;
  }
  *moved = 0;
  const std::optional<int> descriptor = DescriptorOf(handle);
  if (!descriptor) SetLastError(ERROR_INVALID_HANDLE);
  return descriptor;
}

BOOL Fail(int descriptor) {
  SetLastError(TransferError(descriptor));
  return FALSE;
}

}  // namespace

BOOL ReadFile(HANDLE handle, void* buffer, DWORD count, DWORD* read, OVERLAPPED* overlapped) {
  const std::optional<int> descriptor = Accept(handle, read, overlapped);
  if (!descriptor) return FALSE;
  const ssize_t bytes = Uninterrupted([&] { return ::read(*descriptor, buffer, count); });
  if (bytes == -1) return Fail(*descriptor);
  *read = static_cast<DWORD>(bytes);
  return TRUE;
}

BOOL WriteFile(HANDLE handle, const void* buffer, DWORD count, DWORD* written, OVERLAPPED* overlapped) {
  const std::optional<int> descriptor = Accept(handle, written, overlapped);
  if (!descriptor) return FALSE;
  const HeldPipeSignal held;
  const auto* const bytes = static_cast<const char*>(buffer);
  // The system's call may end early, because of a signal or because the disk is full, and tells why only when it is
  // asked for the rest. Callers do not look at the count.
  do {
    const ssize_t part = Uninterrupted([&] { return ::write(*descriptor, bytes + *written, count - *written); });
    if (part == -1) return *written > 0 && errno == EAGAIN ? TRUE : Fail(*descriptor);
    if (part == 0 && count > 0) {
      SetLastError(ERROR_WRITE_FAULT);  // better an end than a loop without one
      return FALSE;
    }
    *written += static_cast<DWORD>(part);
  } while (*written < count);
  return TRUE;
}
