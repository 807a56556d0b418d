// The operations that all nodes have in common, and the lists that they give.

#include "xml/dom_node.h"

#include "xml/dom_nodes.h"
#include "xml/walks.h"

namespace ondrel::platform {

namespace {

/// What a walk finds, one after the other. It keeps the tree alive.
template <class Walk>
class NodeList final : public IXMLDOMNodeList {
 public:
  NodeList(Tree& tree, Walk walk) : m_tree(tree), m_walk(std::move(walk)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    return FindInterface<IXMLDOMNodeList, IDispatch>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = m_references.Decrement();
    if (count == 0) delete this;
    return count;
  }

  HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode** node) override {
    return node == nullptr ? E_INVALIDARG : GiveNode(m_walk.Next(), node);
  }

 private:
  ~NodeList() = default;

  ReferenceCount m_references;
  TreeReference m_tree;
  Walk m_walk;
};

// Why a child of this tree cannot stand below `parent`, or S_OK.
HRESULT CheckPlace(const Tree& tree, const ParentNode& parent, const TreeNode& child) {
  if (child.kind == NodeKind::attribute) return kWrongPlace;
  if (child.kind != NodeKind::element) return S_OK;
  if (&parent == &tree.root) {
    for (const TreeNode* node = parent.firstChild; node != nullptr; node = node->next) {
      if (node->kind == NodeKind::element && node != &child) return kWrongPlace;
    }
    return S_OK;
  }
  // Only a node with children can stand above another. So building a deep tree from the top down stays linear.
  const bool hasChildren = static_cast<const ParentNode&>(child).firstChild != nullptr;
  if (&child == &parent || (hasChildren && IsSelfOrAncestor(child, parent))) return kWrongPlace;
  return S_OK;
}

}  // namespace

IXMLDOMNode* InterfaceOf(TreeNode& node) {
  switch (node.kind) {
    case NodeKind::element:
      return static_cast<ElementNode*>(&node);
    case NodeKind::attribute:
      return static_cast<AttributeNode*>(&node);
    case NodeKind::instruction:
      return static_cast<InstructionNode*>(&node);
    case NodeKind::document:
      break;
  }
  return nullptr;
}

TreeNode* FindNode(IUnknown* node, const Tree& tree) {
  void* found = nullptr;
  if (node == nullptr || FAILED(node->QueryInterface(kTreeNodeId, &found))) return nullptr;
  auto* const treeNode = static_cast<TreeNode*>(found);
  return treeNode->name->tree == &tree ? treeNode : nullptr;
}

HRESULT GiveNode(TreeNode* node, IXMLDOMNode** given) {
  *given = nullptr;
  if (node == nullptr) return S_FALSE;
  *given = InterfaceOf(*node);
  (*given)->AddRef();  // NOLINT(clang-analyzer-core.CallAndMessage): the document itself is never given
  return S_OK;
}

HRESULT AppendChild(Tree& tree, ParentNode* parent, IXMLDOMNode* child, IXMLDOMNode** appended) {
  if (appended != nullptr) *appended = nullptr;
  TreeNode* const node = FindNode(child, tree);
  if (node == nullptr) return kForeignNode;
  if (parent == nullptr) return kWrongPlace;
  if (const HRESULT status = CheckPlace(tree, *parent, *node); FAILED(status)) return status;
  tree.listsElements = false;
  if (node->parent != nullptr) Detach(*node);
  Attach(*parent, *node);
  return appended == nullptr ? S_OK : GiveNode(node, appended);
}

HRESULT SelectNodes(Tree& tree, const ParentNode* from, BSTR path, IXMLDOMNodeList** nodes) {
  if (path == nullptr || nodes == nullptr) return E_INVALIDARG;
  *nodes = nullptr;
  return WithStatus([&]() -> HRESULT {
    auto names = FindNamePath(tree, TextOf(path));
    if (names == nullptr) return kInvalidPath;
    static const ParentNode childless(NodeKind::document, nullptr);
    *nodes = new NodeList(tree, PathWalk(from != nullptr ? *from : childless, std::move(names)));
    return S_OK;
  });
}

HRESULT SelectSingleNode(Tree& tree, const ParentNode* from, BSTR path, IXMLDOMNode** node) {
  if (path == nullptr || node == nullptr) return E_INVALIDARG;
  *node = nullptr;
  return WithStatus([&]() -> HRESULT {
    auto names = FindNamePath(tree, TextOf(path));
    if (names == nullptr) return kInvalidPath;
    return GiveNode(from != nullptr ? PathWalk(*from, std::move(names)).Next() : nullptr, node);
  });
}

HRESULT GetElementsByTagName(Tree& tree, const ParentNode& above, BSTR name, IXMLDOMNodeList** nodes) {
  if (name == nullptr || nodes == nullptr) return E_INVALIDARG;
  *nodes = nullptr;
  return WithStatus([&]() -> HRESULT {
    *nodes = new NodeList(tree, DescendantWalk(above, tree.names.Find(KeptText(TextOf(name)))));
    return S_OK;
  });
}

}  // namespace ondrel::platform
