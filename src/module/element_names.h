// The two element names of the node tree, made when the library is loaded and freed when it is unloaded.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel {

/// "Node": one tree node. "Nodes": the container of a node's children.
struct ElementNames {
  CComBSTR node = CComBSTR(_T("Node"));
  CComBSTR nodes = CComBSTR(_T("Nodes"));
};

extern const ElementNames g_elementNames;

}  // namespace ondrel
