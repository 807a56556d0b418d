// Handles of the system with an owner.
#pragma once

#include <windows.h>

#include <memory>

namespace ondrel::platform {

struct HandleCloser {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

}  // namespace ondrel::platform
