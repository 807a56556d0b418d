// The system's loading of libraries.
#include <ondrel/platform/os/library.h>

#include <algorithm>
#include <new>
#include <string>

#include "system/system_path.h"

namespace ondrel::platform {

HMODULE LoadOsLibrary(LPCWSTR path) noexcept {
  try {
    std::wstring systemPath;
    if (const DWORD code = SystemPath(path, systemPath); code != ERROR_SUCCESS) {
      SetLastError(code);
      return nullptr;
    }
    std::replace(systemPath.begin(), systemPath.end(), L'/', L'\\');  // the loader knows no other separator
    return LoadLibraryW(systemPath.c_str());
  } catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
}

bool FreeOsLibrary(HMODULE library) noexcept { return FreeLibrary(library) != FALSE; }

}  // namespace ondrel::platform
