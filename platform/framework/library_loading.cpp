// Loading libraries into the process.
#include <ondrel/platform/framework/library_loading.h>

#include <ondrel/platform/os/library.h>
#include <ondrel/platform/os/static_lock.h>
#include <ondrel/platform/os/thread_slot.h>

using namespace ondrel::platform;

namespace {

// Where the system does not let a library refuse, one that did is there until it has been freed again. No other thread
// may find it there meanwhile.
constinit OsStaticLock g_loading;
using LoadingDepthSlot = OsThreadSlot<struct LoadingDepthTag>;  // how often the thread holds g_loading

/// Holds g_loading. A library that is being loaded may load others.
class LoadingScope {
 public:
  LoadingScope() noexcept {
    const std::uintptr_t depth = LoadingDepthSlot::Get();
    if (depth == 0) g_loading.lock();
    LoadingDepthSlot::Set(depth + 1);
  }
  ~LoadingScope() {
    const std::uintptr_t depth = LoadingDepthSlot::Get() - 1;
    LoadingDepthSlot::Set(depth);
    if (depth == 0) g_loading.unlock();
  }
  LoadingScope(const LoadingScope&) = delete;
  LoadingScope& operator=(const LoadingScope&) = delete;
};

// Where a library that refuses leaves its status for the innermost AfxLoadLibrary of the thread; 0 when there is none.
using RefusalSlot = OsThreadSlot<struct RefusalTag>;

// The code that HRESULT_FROM_WIN32 turns into `status`.
DWORD ErrorCodeOf(HRESULT status) {
  const auto code = static_cast<DWORD>(status) & 0xFFFF;
  return HRESULT_FROM_WIN32(code) == status ? code : static_cast<DWORD>(status);
}

class RefusalScope {
 public:
  RefusalScope() : m_outer(RefusalSlot::Get()) { RefusalSlot::Set(reinterpret_cast<std::uintptr_t>(&m_status)); }
  ~RefusalScope() { RefusalSlot::Set(m_outer); }
  RefusalScope(const RefusalScope&) = delete;
  RefusalScope& operator=(const RefusalScope&) = delete;

  HRESULT Status() const { return m_status; }

 private:
  HRESULT m_status = S_OK;
  const std::uintptr_t m_outer;
};

}  // namespace

HINSTANCE AfxLoadLibrary(LPCTSTR path) noexcept {
  if (path == nullptr) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const LoadingScope loading;
  const RefusalScope refusal;
  const HMODULE library = LoadOsLibrary(path);
  if (SUCCEEDED(refusal.Status())) return library;
  if (library != nullptr) FreeOsLibrary(library);
  SetLastError(ErrorCodeOf(refusal.Status()));
  return nullptr;
}

BOOL AfxFreeLibrary(HINSTANCE library) noexcept {
  const LoadingScope loading;
  return FreeOsLibrary(library) ? TRUE : FALSE;
}

namespace ondrel::platform {

bool RefuseLoading(HRESULT status) noexcept {
  auto* const refusal = reinterpret_cast<HRESULT*>(RefusalSlot::Get());
  if (refusal == nullptr) return false;
  *refusal = status;
  return true;
}

}  // namespace ondrel::platform
