// A library that a test has loaded.
#pragma once

#include <string>
#include <utility>

#include <ondrel/platform/framework/library_loading.h>
#include <ondrel/platform/program.h>

namespace ondrel::test {

inline CString LibraryPath() { return platform::PathFromUtf8(ONDREL_LIBRARY); }
/// The library whose calls are recorded (see call_recorder.h).
inline CString RecordedLibraryPath() { return platform::PathFromUtf8(ONDREL_RECORDED_LIBRARY); }

/// Owns one AfxLoadLibrary.
class LoadedLibrary {
 public:
  explicit LoadedLibrary(const CString& path) : m_handle(AfxLoadLibrary(path)) {}
  ~LoadedLibrary() {
    if (m_handle != nullptr) AfxFreeLibrary(m_handle);
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  bool IsLoaded() const { return m_handle != nullptr; }
  HINSTANCE Handle() const { return m_handle; }
  BOOL Free() { return AfxFreeLibrary(std::exchange(m_handle, nullptr)); }

 private:
  HINSTANCE m_handle;
};

/// The status that HRESULT_FROM_WIN32 makes of the last error.
inline DWORD LastStatus() { return static_cast<DWORD>(HRESULT_FROM_WIN32(GetLastError())); }

}  // namespace ondrel::test
