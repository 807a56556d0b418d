// A module's application object, and the framework's start and end for a module.
//
// A library starts, under its module state, with AfxCoreInitModule, AfxWinInit and its application's InitInstance, and
// ends with the application's ExitInstance and AfxWinTerm.
#pragma once

#include <optional>

#include <ondrel/platform/framework/module_state.h>
#include <ondrel/platform/framework/object.h>
#include <ondrel/platform/framework/string.h>

/// The application object of a module. It is the application of the module state that was the thread's when it was
/// made, until it is destroyed or another takes its place; the module state must outlive it.
class FRAMEWORK_API CWinApp : public CObject {
 public:
  /// The name is copied; null for an application without one.
  explicit CWinApp(LPCTSTR appName = nullptr);
  ~CWinApp() override;

  /// What the module has to do when it starts. FALSE: it cannot start.
  virtual BOOL InitInstance();
  /// What the module has to do when it ends, after an InitInstance that failed too. The module's exit code, 0 here.
  virtual int ExitInstance();

 private:
  const std::optional<CString> m_name;
  AFX_MODULE_STATE* const m_pModuleState;

 public:
  const LPCTSTR m_pszAppName;       ///< Null for an application without a name.
  HINSTANCE m_hInstance = nullptr;  ///< The module, from AfxWinInit to AfxWinTerm.
  LPCTSTR m_lpCmdLine = nullptr;    ///< As AfxWinInit was given it.
  int m_nCmdShow = 0;               ///< As AfxWinInit was given it.
};

/// The application of the calling thread's module state; null when it has none.
inline CWinApp* AfxGetApp() noexcept { return AfxGetModuleState()->m_pCurrentWinApp; }

/// Makes the calling thread's module state ready for AfxWinInit. Once more changes nothing.
FRAMEWORK_API void AfxCoreInitModule() noexcept;

/// Tells the calling thread's module state, and its application if it has one, which module they belong to and how it
/// was started. `commandLine` must live until AfxWinTerm. FALSE, and nothing changed: without AfxCoreInitModule before,
/// when the module state already has its module, without an instance or a command line, or with a previous instance,
/// which no module has.
FRAMEWORK_API BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previousInstance, LPCTSTR commandLine,
                              int showCommand) noexcept;

/// Undoes AfxCoreInitModule and AfxWinInit for the calling thread's module state, as far as they came.
FRAMEWORK_API void AfxWinTerm() noexcept;
