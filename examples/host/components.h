// Projects are read and written through components of the system, which a thread of Windows has to ask for.
#pragma once

#include <ondrel/platform/com.h>

namespace host {

#ifdef _WIN32
class Components {
 public:
  Components() { AtlThrowIfFailed(CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
  ~Components() { CoUninitialize(); }
  Components(const Components&) = delete;
  Components& operator=(const Components&) = delete;
};
#else
class Components {
 public:
  Components() {}  // elsewhere the library brings its own
};
#endif

}  // namespace host
