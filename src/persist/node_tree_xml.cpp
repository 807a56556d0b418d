// The console tree in the project file: nested elements, walked with explicit stacks, so that no depth is too deep.

#include <ondrel/MMCObjectSet.h>

#include <vector>

#include "module/element_names.h"
#include "statuses.h"

using ondrel::g_elementNames;
using ondrel::kNotFound;

HRESULT CMMCObjectSet::SerializeNode(__int64 cookie, CComPtr<IXMLDOMDocument> document,
                                     CComPtr<IXMLDOMElement> parent) {
  // A node whose element is written but not yet attached, because its children are still to come.
  struct OpenNode {
    CComPtr<IXMLDOMElement> parent;
    CComPtr<IXMLDOMElement> node;
    CComPtr<IXMLDOMElement> nodes;  // the container of the children; null for a leaf
    std::size_t childrenLeft = 0;   // those still to be written
  };

  TreeWalk walk;
  walk.pending.push_back({cookie, {}, 0});
  const auto open = [&](const CComPtr<IXMLDOMElement>& under, OpenNode& entry) -> HRESULT {
    const CMMCObjectParams* const params = VisitNext(walk, entry.childrenLeft);
    if (params == nullptr) return kNotFound;
    entry.parent = under;
    HRESULT status = document->createElement(g_elementNames.node, &entry.node);
    if (SUCCEEDED(status)) status = params->Serialize(document, entry.node);
    if (FAILED(status)) return status;
    return entry.childrenLeft == 0 ? S_OK : document->createElement(g_elementNames.nodes, &entry.nodes);
  };

  std::vector<OpenNode> path(1);
  HRESULT status = open(parent, path.back());
  while (SUCCEEDED(status) && !path.empty()) {
    OpenNode& current = path.back();
    if (current.childrenLeft > 0) {
      --current.childrenLeft;
      OpenNode entry;
      status = open(current.nodes, entry);
      path.push_back(std::move(entry));
      continue;
    }
    // Attached only now, with the whole subtree in it: a failure below leaves nothing half-written in the document.
    if (current.nodes != nullptr) status = current.node->appendChild(current.nodes, nullptr);
    if (SUCCEEDED(status)) status = current.parent->appendChild(current.node, nullptr);
    path.pop_back();
  }
  return FAILED(status) ? status : S_OK;
}

HRESULT CMMCObjectSet::DeserializeNodes(__int64 parent, CComPtr<IXMLDOMNodeList> containers) {
  // The containers of one parent's children, and the nodes of the container that is being read.
  struct OpenContainers {
    __int64 parent;
    CComPtr<IXMLDOMNodeList> containers;
    CComPtr<IXMLDOMNodeList> nodes;
  };

  std::vector<OpenContainers> path;
  path.push_back({parent, std::move(containers), nullptr});
  HRESULT status = S_FALSE;
  while (!path.empty()) {
    OpenContainers& current = path.back();
    if (current.nodes == nullptr) {
      CComPtr<IXMLDOMNode> container;
      status = current.containers->nextNode(&container);
      if (FAILED(status)) return status;
      if (status == S_FALSE) {
        path.pop_back();
        continue;
      }
      status = container->selectNodes(g_elementNames.node, &current.nodes);
      if (FAILED(status)) return status;
    }
    CComPtr<IXMLDOMNode> node;
    status = current.nodes->nextNode(&node);
    if (FAILED(status)) return status;
    if (status == S_FALSE) {
      current.nodes.Release();
      continue;
    }
    CMMCObjectParams params;
    status = params.Deserialize(node);
    if (FAILED(status)) return status;
    const __int64 cookie = params.GetCookie();
    {
      CSingleLock lock(&m_lock, TRUE);
      status = AddObject(m_tables.nodes, {current.parent, cookie}, std::move(params), m_tables.lastNode);
    }
    if (FAILED(status)) return status;
    CComPtr<IXMLDOMNodeList> childContainers;
    status = node->selectNodes(g_elementNames.nodes, &childContainers);
    if (FAILED(status)) return status;
    path.push_back({cookie, std::move(childContainers), nullptr});
  }
  // The status of the walk that found no further container; callers test for failure alone.
  return status;
}
