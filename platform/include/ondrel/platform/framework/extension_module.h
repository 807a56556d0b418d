// The chain of extension modules: the libraries of the process that extend the framework with classes of theirs.
//
// The process has one chain. A library fills its record with AfxInitExtensionModule when it is loaded and makes a
// CDynLinkLibrary for it, which stands in the chain until AfxTermExtensionModule, at unload, takes it out. Any thread
// may do so at any time.
#pragma once

#include <vector>

#include <ondrel/platform/framework/module_state.h>
#include <ondrel/platform/framework/object.h>

/// The record of an extension module, one in each such library.
struct AFX_EXTENSION_MODULE {
  BOOL bInitialized = FALSE;
  HMODULE hModule = nullptr;
};

/// Fills the record; one that is filled stays as it is. FALSE for a null module.
FRAMEWORK_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& record, HMODULE module) noexcept;

/// Destroys the CDynLinkLibrary objects of the record's module, with `all` also every other that was made under the
/// calling thread's module state, and empties the record. Nothing to do for an empty record.
FRAMEWORK_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& record, BOOL all = FALSE) noexcept;

namespace ondrel::platform {

class ExtensionChain;

/// The modules in the chain, those linked in last first. A module may be gone when the list is read, unless the caller
/// keeps it loaded. Raises std::bad_alloc.
FRAMEWORK_API std::vector<HMODULE> ExtensionModules();

}  // namespace ondrel::platform

/// One library in the chain. Made with `new`, without an owner: AfxTermExtensionModule destroys it.
class FRAMEWORK_API CDynLinkLibrary : public CObject {
 public:
  /// Links the library in at the front. Raises CInvalidArgException for an empty record.
  explicit CDynLinkLibrary(const AFX_EXTENSION_MODULE& record);
  ~CDynLinkLibrary() override;  ///< Takes the library out.

  const HMODULE m_hModule;

 private:
  friend class ondrel::platform::ExtensionChain;

  AFX_MODULE_STATE* const m_pModuleState;  // the one that it was made under
  CDynLinkLibrary* m_pNextDLL = nullptr;
};
