// The nodes of a document and what owns them.
//
// Nodes, names and values lie in the tree's arena and are never destroyed one by one, so a node that was taken out of
// the document, or a document of a million nested elements, needs no care. The tree counts the references to all of its
// nodes together and goes with the last.
#pragma once

#include <cstdint>

#include <ondrel/platform/os/types.h>

#include "xml/arena.h"
#include "xml/name_path.h"
#include "xml/names.h"

namespace ondrel::platform {

enum class NodeKind : std::uint8_t { document, element, attribute, instruction };

struct ParentNode;

struct TreeNode {
  TreeNode(NodeKind nodeKind, const Name* nodeName) : name(nodeName), kind(nodeKind) {}

  const Name* name;              // null for the document's own node only
  ParentNode* parent = nullptr;  // an attribute's element; null for a node that stands nowhere
  TreeNode* next = nullptr;      // the next child of the parent, or the next attribute of the element
  NodeKind kind;
};

struct ParentNode : TreeNode {
  using TreeNode::TreeNode;

  TreeNode* firstChild = nullptr;
  TreeNode* lastChild = nullptr;
};

/// Attaches a node that stands nowhere as the last child.
inline void Attach(ParentNode& parent, TreeNode& node) {
  (parent.lastChild == nullptr ? parent.firstChild : parent.lastChild->next) = &node;
  parent.lastChild = &node;
  node.parent = &parent;
}

/// Takes a child from its parent. Looks for it from the first child on.
void Detach(TreeNode& node);

/// Whether `node` is `descendant` or stands above it.
bool IsSelfOrAncestor(const TreeNode& node, const TreeNode& descendant);

/// A document's contents. It is made with one reference, which belongs to the document.
struct Tree {
  Tree() : names(*this, arena), root(NodeKind::document, nullptr) {}
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  ULONG AddReference() { return ++references; }
  ULONG ReleaseReference() {
    const ULONG count = --references;
    if (count == 0) delete this;
    return count;
  }

  ULONG references = 1;  // one thread at a time uses a document, so a plain number will do
  Arena arena;
  NameTable names;
  ParentNode root;
  KnownPaths knownPaths;
  bool listsElements = false;  // each name's list of elements is that of the document: nothing was put elsewhere since

 private:
  ~Tree() = default;
};

/// Holds one reference to a tree.
class TreeReference {
 public:
  explicit TreeReference(Tree& tree) : m_tree(tree) { m_tree.AddReference(); }
  ~TreeReference() { m_tree.ReleaseReference(); }
  TreeReference(const TreeReference&) = delete;
  TreeReference& operator=(const TreeReference&) = delete;

  Tree& operator*() const { return m_tree; }
  Tree* operator->() const { return &m_tree; }

 private:
  Tree& m_tree;
};

}  // namespace ondrel::platform
