// The nodes of a document: how they are taken apart, and who stands above whom.

#include "xml/tree.h"

namespace ondrel::platform {

void Detach(TreeNode& node) {
  ParentNode& parent = *node.parent;
  TreeNode* previous = nullptr;
  for (TreeNode* child = parent.firstChild; child != &node; child = child->next) previous = child;
  (previous == nullptr ? parent.firstChild : previous->next) = node.next;
  if (parent.lastChild == &node) parent.lastChild = previous;
  node.parent = nullptr;
  node.next = nullptr;
}

bool IsSelfOrAncestor(const TreeNode& node, const TreeNode& descendant) {
  for (const TreeNode* above = &descendant; above != nullptr; above = above->parent) {
    if (above == &node) return true;
  }
  return false;
}

}  // namespace ondrel::platform
