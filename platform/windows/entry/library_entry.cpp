// The system's entry of a library.
#include <ondrel/platform/library_entry.h>

#include <ondrel/platform/framework/library_loading.h>

namespace {

// The system announces the end of a library that has refused to start, too.
constinit bool g_attached = false;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  using namespace ondrel::platform;
  switch (reason) {
    case DLL_PROCESS_ATTACH: {
      const HRESULT status = AttachLibrary(instance);
      g_attached = SUCCEEDED(status);
      if (!g_attached) RefuseLoading(status);  // all that the system passes on is that the library refused
      return g_attached ? TRUE : FALSE;
    }
    case DLL_THREAD_DETACH:
      if (g_attached) DetachLibraryThread(instance);
      return TRUE;
    case DLL_PROCESS_DETACH:
      if (g_attached) DetachLibrary(instance);
      g_attached = false;
      return TRUE;
    default:
      return TRUE;
  }
}
