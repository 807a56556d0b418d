// Paths in the form that the system's calls take.
#pragma once

#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::platform {

/// The path as it is, or, where it is longer than the calls take it, in its full and extended form (\\?\). The system's
/// error code; ERROR_PATH_NOT_FOUND for an empty path.
DWORD SystemPath(LPCWSTR path, std::wstring& systemPath);

/// The path from its root, without "." and "..", with `\` between its parts. The system's error code.
DWORD FullSystemPath(LPCWSTR path, std::wstring& full);

/// Whether a full path is that of a device, such as "NUL" or "COM1".
bool IsDevicePath(const std::wstring& full);

/// Whether a path names a folder, by what is there or by the separator at its end.
bool IsFolderOrSeparator(LPCWSTR path);

}  // namespace ondrel::platform
