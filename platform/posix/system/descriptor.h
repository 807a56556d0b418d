// Calls over the system's file descriptors: interruptions, and the reasons why a transfer failed.
#pragma once

#include <fcntl.h>
#include <cerrno>
#include <string>

#include <ondrel/platform/os/file.h>

#include "system/os_error.h"

namespace ondrel::platform {

/// What `call` gives, once no signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

/// Where the system keeps an open file, by which one without a name can be given one.
inline std::string DescriptorPath(int file) { return "/proc/self/fd/" + std::to_string(file); }

/// The reason why the call that just failed on `file` did so. The system calls an open file of the wrong access a bad
/// descriptor, too.
inline DWORD TransferError(OsFile file) {
  const DWORD code = OsErrorFromErrno(errno);
  if (code != ERROR_INVALID_HANDLE) return code;
  return fcntl(static_cast<int>(file), F_GETFL) == -1 ? code : ERROR_ACCESS_DENIED;
}

}  // namespace ondrel::platform
