// Paths of the contract (wide text, `\` or `/` between the parts) as the system's own bytes.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// The path in the system's form: UTF-8 with `/` between its parts, the lone surrogates DC80 to DCFF as the bytes 80 to
/// FF. False, with the reason in GetLastError(), for a path that names nothing here: ERROR_PATH_NOT_FOUND for an empty
/// one or one with a drive letter in front, ERROR_INVALID_NAME for one with any other lone surrogate.
ONDREL_OS_EXPORT bool NativePath(LPCWSTR path, std::string& native);

/// Appends wide text to `bytes` as NativePath does, separators kept. False when a surrogate had to become U+FFFD.
ONDREL_OS_EXPORT bool AppendNativeText(std::basic_string_view<WCHAR> text, std::string& bytes);

}  // namespace ondrel::platform
