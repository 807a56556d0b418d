// What the library does when it is loaded, when a thread ends and when it is unloaded.

#include <ondrel/platform/library_entry.h>

#include <new>
#include <utility>

#include <ondrel/platform/framework.h>

#include "module/element_names.h"
#include "module/ondrel_app.h"

using ondrel::g_elementNames;

namespace {

constexpr HRESULT kRefused = HRESULT_FROM_WIN32(ERROR_DLL_INIT_FAILED);

// The objects of the module. Static objects with constructors or destructors would come too late and go too early.
constinit AFX_MODULE_STATE g_moduleState;
constinit AFX_EXTENSION_MODULE g_extensionModule;
constinit COndrelApp* g_application = nullptr;

void CreateObjects() {
  g_elementNames.Allocate();
  g_application = new COndrelApp;
}

void DestroyObjects() noexcept {
  delete std::exchange(g_application, nullptr);
  g_elementNames.Free();
}

void EndApplication() {
  if (CWinApp* const application = AfxGetApp(); application != nullptr) application->ExitInstance();
}

// Locked before, so that the unlock takes away no lock that the thread holds for somebody else.
void UnlockTempMaps() {
  AfxLockTempMaps();
  AfxUnlockTempMaps();
}

HRESULT StartModule(HINSTANCE instance) {
  AfxCoreInitModule();
  if (!AfxWinInit(instance, nullptr, _T(""), 0)) {
    AfxWinTerm();
    return kRefused;
  }
  if (CWinApp* const application = AfxGetApp(); application != nullptr && !application->InitInstance()) {
    application->ExitInstance();
    AfxWinTerm();
    return kRefused;
  }
  AfxInitExtensionModule(g_extensionModule, instance);
  try {
    new CDynLinkLibrary(g_extensionModule);  // the chain's, until AfxTermExtensionModule
  } catch (...) {
    EndApplication();
    AfxWinTerm();
    throw;
  }
  return S_OK;
}

HRESULT StatusOfRaised() noexcept {
  try {
    throw;
  } catch (const COleException& raised) {
    return raised.m_sc;
  } catch (const CMemoryException&) {
    return E_OUTOFMEMORY;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return kRefused;
  }
}

}  // namespace

namespace ondrel::platform {

HRESULT AttachLibrary(HINSTANCE instance) noexcept {
  const AFX_MAINTAIN_STATE2 state(&g_moduleState);
  HRESULT status = S_OK;
  try {
    CreateObjects();
    status = StartModule(instance);
  } catch (...) {
    status = StatusOfRaised();
  }
  if (FAILED(status)) DestroyObjects();
  return status;
}

void DetachLibraryThread(HINSTANCE instance) noexcept {
  const AFX_MAINTAIN_STATE2 state(&g_moduleState);
  UnlockTempMaps();
  AfxTermThread(instance);
}

void DetachLibrary(HINSTANCE) noexcept {
  const AFX_MAINTAIN_STATE2 state(&g_moduleState);
  EndApplication();
  UnlockTempMaps();
  AfxWinTerm();
  AfxTermExtensionModule(g_extensionModule, TRUE);
  DestroyObjects();
}

}  // namespace ondrel::platform
