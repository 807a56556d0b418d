// The two element names of the node tree, allocated when the library is loaded and freed when it is unloaded.

#include "module/element_names.h"

namespace ondrel {
namespace {

BSTR Allocated(LPCWSTR text) {
  const BSTR name = SysAllocString(text);
  if (name == nullptr) AfxThrowOleException(E_OUTOFMEMORY);  // the status that the load is refused with
  return name;
}

void FreeName(BSTR& name) noexcept {
  if (name != nullptr) SysFreeString(name);
  name = nullptr;
}

}  // namespace

constinit ElementNames g_elementNames;

void ElementNames::Allocate() {
  node = Allocated(_T("Node"));
  nodes = Allocated(_T("Nodes"));
}

void ElementNames::Free() noexcept {
  FreeName(nodes);
  FreeName(node);
}

}  // namespace ondrel
