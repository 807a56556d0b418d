// Module states: what the framework keeps for each module (the process's program, or a library) that is built on it.
#pragma once

#include <ondrel/platform/export.h>
#include <ondrel/platform/types.h>

class CWinApp;

/// What the framework keeps for one module. A library instantiates it once, for as long as it is loaded; the process's
/// program has one in the framework. Its functions are used by one thread at a time, as a module's start and end are.
class AFX_MODULE_STATE {
 public:
  constexpr AFX_MODULE_STATE() noexcept = default;
  AFX_MODULE_STATE(const AFX_MODULE_STATE&) = delete;
  AFX_MODULE_STATE& operator=(const AFX_MODULE_STATE&) = delete;

  CWinApp* m_pCurrentWinApp = nullptr;           ///< The module's application, not owned; null without one.
  HINSTANCE m_hCurrentInstanceHandle = nullptr;  ///< The module, from AfxWinInit to AfxWinTerm.
  BOOL m_bInitialized = FALSE;                   ///< From AfxCoreInitModule to AfxWinTerm.
};

/// The calling thread's module state; the one of the process's program until the thread is given another. Never null.
FRAMEWORK_API AFX_MODULE_STATE* AfxGetModuleState() noexcept;

/// Makes `state`, which must live until it is replaced, the calling thread's; null stands for that of the process's
/// program. Gives what was set before, null at first, to be set again later.
FRAMEWORK_API AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) noexcept;

/// Makes a module state the calling thread's while it lives, and then the previous one again.
class FRAMEWORK_API AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) noexcept;
  ~AFX_MAINTAIN_STATE2();
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

 private:
  AFX_MODULE_STATE* m_previous;
};
