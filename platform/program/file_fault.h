// How the system's error codes leave the operations on files and folders.
#pragma once

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::platform {

/// Raises CFileException for an error code; `path` is the file's or folder's.
[[noreturn]] inline void ThrowFileFault(DWORD code, const CString& path) {
  const auto osError = static_cast<LONG>(code);
  AfxThrowFileException(CFileException::OsErrorToException(osError), osError, path);
}

}  // namespace ondrel::platform
