// A real file of the system whose reading fails on the way.
#pragma once

#include <cstddef>
#include <string_view>

#include "support/kernel_handles.h"

namespace ondrel::test {

/// A handle that gives some bytes and then fails as a broken device does. It reads this process's own memory up to
/// where a mapped file ends before its mapping.
class FailingMemoryFile {
 public:
  /// Raises std::system_error when the system refuses.
  explicit FailingMemoryFile(std::string_view bytes);
  ~FailingMemoryFile();
  FailingMemoryFile(const FailingMemoryFile&) = delete;
  FailingMemoryFile& operator=(const FailingMemoryFile&) = delete;

  HANDLE Handle() const { return m_handle.Get(); }

 private:
  void* m_memory;
  std::size_t m_size;
  KernelHandle m_handle;
};

}  // namespace ondrel::test
