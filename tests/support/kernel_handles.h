// Handles of the system for tests: files and pipes, opened for waiting calls.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include <ondrel/platform/kernel_file.h>

namespace ondrel::test {

/// Whether the system has something open under the handle.
bool IsOpen(HANDLE handle);
void CloseHandleOfSystem(HANDLE handle);

/// Owns a handle, or none.
class KernelHandle {
 public:
  KernelHandle() = default;
  explicit KernelHandle(HANDLE handle) : m_handle(handle) {}
  KernelHandle(KernelHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
  KernelHandle& operator=(KernelHandle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  ~KernelHandle() { Close(); }

  HANDLE Get() const { return m_handle; }
  void Close() {
    if (m_handle != INVALID_HANDLE_VALUE) CloseHandleOfSystem(std::exchange(m_handle, INVALID_HANDLE_VALUE));
  }

 private:
  HANDLE m_handle = INVALID_HANDLE_VALUE;
};

// Each raises std::system_error when the system refuses.

KernelHandle OpenToRead(const std::filesystem::path& path);
/// Makes the file, or empties the one that is there.
KernelHandle OpenToWrite(const std::filesystem::path& path);

struct KernelPipe {
  KernelPipe();

  KernelHandle reading;
  KernelHandle writing;
};

/// What reading from a pipe comes to, as RaisedStatus tells it, when nobody writes to it any more.
extern const std::string kEndOfPipe;

}  // namespace ondrel::test
