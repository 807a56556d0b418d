// Walks over the elements of a tree, in document order.

#include "xml/walks.h"

#include "xml/kept_text.h"

namespace ondrel::platform {

namespace {

TreeNode* FirstChildOf(const TreeNode& node) {
  return node.kind == NodeKind::element || node.kind == NodeKind::document
             ? static_cast<const ParentNode&>(node).firstChild
             : nullptr;
}

// The node that follows `node` in the document, below `above`; null behind the last.
TreeNode* Following(const TreeNode& node, const ParentNode& above) {
  if (TreeNode* const child = FirstChildOf(node)) return child;
  for (const TreeNode* place = &node; place != nullptr && place != &above; place = place->parent) {
    if (place->next != nullptr) return place->next;
  }
  return nullptr;
}

}  // namespace

bool ReadNamePath(const Tree& tree, std::u16string_view text, NamePath& path) {
  for (;;) {
    const std::size_t end = text.find(u'/');
    const std::u16string_view name = text.substr(0, end);
    if (!IsXmlName(name)) return false;
    path.push_back(tree.names.Find(KeptText(name)));
    if (end == std::u16string_view::npos) return true;
    text.remove_prefix(end + 1);
  }
}

TreeNode* PathWalk::Next() {
  for (;;) {
    if (m_candidate == nullptr) {
      if (m_step == 0 || m_parent->parent == nullptr) return nullptr;
      --m_step;
      m_candidate = m_parent->next;
      m_parent = m_parent->parent;
      continue;
    }
    TreeNode* const node = m_candidate;
    m_candidate = node->next;
    if (node->kind != NodeKind::element || node->name != m_path[m_step]) continue;
    if (m_step + 1 == m_path.size()) return node;
    ++m_step;
    m_parent = static_cast<const ParentNode*>(node);
    m_candidate = m_parent->firstChild;
  }
}

TreeNode* DescendantWalk::Next() {
  while (m_name != nullptr && m_place != nullptr) {
    TreeNode* const node = Following(*m_place, *m_above);
    m_place = node;
    if (node != nullptr && node->kind == NodeKind::element && node->name == m_name) return node;
  }
  return nullptr;
}

}  // namespace ondrel::platform
