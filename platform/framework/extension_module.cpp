// The chain of extension modules of the process.
#include <ondrel/platform/framework/extension_module.h>

#include <mutex>

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/os/static_lock.h>

namespace ondrel::platform {

/// The chain. It has no constructor and no destructor that runs: a library that is loaded until the process ends is
/// taken out only then.
class ExtensionChain {
 public:
  void Link(CDynLinkLibrary& library) noexcept {
    const std::lock_guard guard(m_lock);
    library.m_pNextDLL = m_first;
    m_first = &library;
  }

  void Unlink(const CDynLinkLibrary& library) noexcept {
    const std::lock_guard guard(m_lock);
    CDynLinkLibrary** link = &m_first;
    while (*link != &library) link = &(*link)->m_pNextDLL;
    *link = library.m_pNextDLL;
  }

  /// The first library of the module or made under the module state; null when there is none.
  CDynLinkLibrary* Find(HMODULE module, const AFX_MODULE_STATE* state) noexcept {
    const std::lock_guard guard(m_lock);
    CDynLinkLibrary* library = m_first;
    while (library != nullptr && library->m_hModule != module && library->m_pModuleState != state) {
      library = library->m_pNextDLL;
    }
    return library;
  }

  std::vector<HMODULE> Modules() {
    std::vector<HMODULE> modules;
    const std::lock_guard guard(m_lock);
    for (const CDynLinkLibrary* library = m_first; library != nullptr; library = library->m_pNextDLL) {
      modules.push_back(library->m_hModule);
    }
    return modules;
  }

 private:
  OsStaticLock m_lock;
  CDynLinkLibrary* m_first = nullptr;
};

namespace {
constinit ExtensionChain g_chain;
}  // namespace

std::vector<HMODULE> ExtensionModules() { return g_chain.Modules(); }

}  // namespace ondrel::platform

using ondrel::platform::g_chain;

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) noexcept {
  if (record.bInitialized) return TRUE;
  if (module == nullptr) return FALSE;
  record.hModule = module;
  record.bInitialized = TRUE;
  return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all) noexcept {
  if (!record.bInitialized) return;
  const AFX_MODULE_STATE* const state = all ? AfxGetModuleState() : nullptr;
  while (CDynLinkLibrary* const library = g_chain.Find(record.hModule, state)) delete library;
  record = AFX_EXTENSION_MODULE();
}

CDynLinkLibrary::CDynLinkLibrary(const AFX_EXTENSION_MODULE& record)
    : m_hModule(record.hModule), m_pModuleState(AfxGetModuleState()) {
  if (!record.bInitialized) AfxThrowInvalidArgException();
  g_chain.Link(*this);
}

CDynLinkLibrary::~CDynLinkLibrary() { g_chain.Unlink(*this); }
