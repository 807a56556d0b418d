// The system's loading of libraries.
#include <ondrel/platform/os/library.h>

#include <dlfcn.h>
#include <unistd.h>
#include <new>
#include <string>

#include "system/native_path.h"

namespace ondrel::platform {

HMODULE LoadOsLibrary(LPCWSTR path) noexcept {
  try {
    std::string native;
    if (!NativePath(path, native)) return nullptr;
    const HMODULE library = dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
      SetLastError(access(native.c_str(), F_OK) == 0 ? ERROR_BAD_EXE_FORMAT : ERROR_MOD_NOT_FOUND);
    }
    return library;
  } catch (const std::bad_alloc&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
}

bool FreeOsLibrary(HMODULE library) noexcept {
  if (library != nullptr && dlclose(library) == 0) return true;
  SetLastError(ERROR_INVALID_HANDLE);
  return false;
}

}  // namespace ondrel::platform
