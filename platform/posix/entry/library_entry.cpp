// The system's entry of a library: a constructor and a destructor of the shared object, or of a program that the
// library is linked into.
#include <ondrel/platform/library_entry.h>

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>
#include <cstdio>

#include <ondrel/platform/framework/library_loading.h>

namespace ondrel::platform {
namespace {

constexpr int kCannotStart = 127;  // the exit status of a program whose libraries cannot be loaded

constinit HINSTANCE g_instance = nullptr;  // null unless the library is attached

// The name by which the system knows the file that this is in; empty for the program itself.
const char* OwnFile() {
  Dl_info info = {};
  void* file = nullptr;
  return dladdr1(&g_instance, &info, &file, RTLD_DL_LINKMAP) != 0 ? static_cast<link_map*>(file)->l_name : nullptr;
}

// What dlopen gives for this library, which is there for as long as the library is.
HINSTANCE OwnInstance() {
  const char* const file = OwnFile();
  void* const library = file != nullptr ? dlopen(file, RTLD_LAZY | RTLD_NOLOAD) : nullptr;
  if (library != nullptr) dlclose(library);  // it was counted once more
  return library;
}

[[noreturn]] void EndProcess(HRESULT status) {
  const char* const file = OwnFile();
  char line[1024];
  const int length = std::snprintf(line, sizeof line, "%.900s: cannot start, status 0x%08X\n",
                                   file != nullptr && *file != '\0' ? file : "a library", static_cast<DWORD>(status));
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line, static_cast<std::size_t>(length));
  _exit(kCannotStart);
}

__attribute__((constructor)) void OnLoad() {
  const HINSTANCE instance = OwnInstance();
  const HRESULT status = instance != nullptr ? AttachLibrary(instance) : HRESULT_FROM_WIN32(ERROR_DLL_INIT_FAILED);
  if (SUCCEEDED(status)) {
    g_instance = instance;
  } else if (!RefuseLoading(status)) {
    EndProcess(status);  // whoever loads it cannot be told, and would go on with a library that has not started
  }
}

__attribute__((destructor)) void OnUnload() {
  if (g_instance == nullptr) return;
  DetachLibrary(g_instance);
  g_instance = nullptr;
}

}  // namespace
}  // namespace ondrel::platform
