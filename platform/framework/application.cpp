// A module's application object, and the framework's start and end for a module.
#include <ondrel/platform/framework/application.h>

CWinApp::CWinApp(LPCTSTR appName)
    : m_name(appName != nullptr ? std::optional<CString>(appName) : std::nullopt),
      m_pModuleState(AfxGetModuleState()),
      m_pszAppName(m_name ? m_name->GetString() : nullptr) {
  m_pModuleState->m_pCurrentWinApp = this;
}

CWinApp::~CWinApp() {
  if (m_pModuleState->m_pCurrentWinApp == this) m_pModuleState->m_pCurrentWinApp = nullptr;
}

BOOL CWinApp::InitInstance() { return TRUE; }

int CWinApp::ExitInstance() { return 0; }

void AfxCoreInitModule() noexcept { AfxGetModuleState()->m_bInitialized = TRUE; }

BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previousInstance, LPCTSTR commandLine, int showCommand) noexcept {
  AFX_MODULE_STATE& state = *AfxGetModuleState();
  if (!state.m_bInitialized || state.m_hCurrentInstanceHandle != nullptr) return FALSE;
  if (instance == nullptr || previousInstance != nullptr || commandLine == nullptr) return FALSE;
  state.m_hCurrentInstanceHandle = instance;
  if (CWinApp* const application = state.m_pCurrentWinApp; application != nullptr) {
    application->m_hInstance = instance;
    application->m_lpCmdLine = commandLine;
    application->m_nCmdShow = showCommand;
  }
  return TRUE;
}

void AfxWinTerm() noexcept {
  AFX_MODULE_STATE& state = *AfxGetModuleState();
  state.m_bInitialized = FALSE;
  state.m_hCurrentInstanceHandle = nullptr;
  if (CWinApp* const application = state.m_pCurrentWinApp; application != nullptr) {
    application->m_hInstance = nullptr;
    application->m_lpCmdLine = nullptr;
    application->m_nCmdShow = 0;
  }
}
