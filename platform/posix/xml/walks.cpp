// Walks over the elements of a tree, in document order.

#include "xml/walks.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "xml/dom_nodes.h"

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

std::shared_ptr<const NamePath> FindNamePath(Tree& tree, std::u16string_view text) {
  const auto place = text.empty() ? std::size_t{0} : text.size() * 5 + text.front();
  KnownPath& known = tree.knownPaths[place % tree.knownPaths.size()];
  // A name that was not there may have come since.
  const bool isUpToDate = known.isComplete || known.nameCount == tree.names.Count();
  const bool isSameText =
      known.text.size() == text.size() && std::memcmp(known.text.data(), text.data(), text.size() * sizeof(WCHAR)) == 0;
  if (known.names != nullptr && isSameText && isUpToDate) return known.names;

  auto names = std::make_shared<NamePath>();
  for (std::u16string_view rest = text;;) {
    const std::size_t end = rest.find(u'/');
    const std::u16string_view name = rest.substr(0, end);
    if (!IsXmlName(name)) return nullptr;
    names->push_back(tree.names.Find(KeptText(name)));
    if (end == std::u16string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  const bool isComplete = std::find(names->begin(), names->end(), nullptr) == names->end();
  known.names = nullptr;
  known.text = text;
  known.names = std::move(names);
  known.nameCount = tree.names.Count();
  known.isComplete = isComplete;
  return known.names;
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
    if (node->kind != NodeKind::element || node->name != (*m_path)[m_step]) continue;
    if (m_step + 1 == m_path->size()) return node;
    ++m_step;
    m_parent = static_cast<const ParentNode*>(node);
    m_candidate = m_parent->firstChild;
  }
}

TreeNode* DescendantWalk::Next() {
  if (m_name == nullptr || m_place == nullptr) return nullptr;
  const Tree& tree = *m_name->tree;
  // Below the document's element stands every other.
  if (tree.listsElements && m_above->parent == &tree.root) {
    const bool isFirst = m_place == m_above;
    ElementNode* element = isFirst ? m_name->firstElement : static_cast<const ElementNode*>(m_place)->nextOfName;
    if (element == m_above) element = element->nextOfName;
    m_place = element;
    return element;
  }
  for (;;) {
    TreeNode* const node = Following(*m_place, *m_above);
    m_place = node;
    if (node == nullptr || (node->kind == NodeKind::element && node->name == m_name)) return node;
  }
}

}  // namespace ondrel::platform
