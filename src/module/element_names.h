// The two element names of the node tree, allocated when the library is loaded and freed when it is unloaded.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel {

/// Owns the two names while the library is loaded. It has no destructor: when the process ends, the destructors of
/// static objects may run before the library is told, so the library frees the names itself.
class ElementNames {
 public:
  constexpr ElementNames() noexcept = default;
  ElementNames(const ElementNames&) = delete;
  ElementNames& operator=(const ElementNames&) = delete;

  /// Raises COleException with E_OUTOFMEMORY when a name cannot be allocated; Free is then still to be called.
  void Allocate();
  void Free() noexcept;

  BSTR node = nullptr;   ///< "Node": one tree node.
  BSTR nodes = nullptr;  ///< "Nodes": the container of a node's children.
};

extern ElementNames g_elementNames;

}  // namespace ondrel
