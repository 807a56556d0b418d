// Walks over the elements of a tree, in document order. They keep a place, not a list of what they find, and use no
// stack. A node that is moved while a walk stands on it may end the walk early; memory stays the tree's in any case.
#pragma once

#include <memory>
#include <string_view>

#include "xml/tree.h"

namespace ondrel::platform {

/// The names of a relative path, "Name" or "Name/Name", or null when `text` is no such path. A name that the tree does
/// not have is null and matches nothing. Raises std::bad_alloc.
std::shared_ptr<const NamePath> FindNamePath(Tree& tree, std::u16string_view text);

/// The elements that a path leads to from a node.
class PathWalk {
 public:
  PathWalk(const ParentNode& from, std::shared_ptr<const NamePath> path)
      : m_path(std::move(path)), m_parent(&from), m_candidate(from.firstChild) {}

  TreeNode* Next();  ///< Null at the end, and ever after.

 private:
  std::shared_ptr<const NamePath> m_path;
  std::size_t m_step = 0;      // of the path, that the children of m_parent are compared with
  const ParentNode* m_parent;  // whose children are being looked at
  TreeNode* m_candidate;       // the next of them; null behind the last
};

/// All elements of one name below a node.
class DescendantWalk {
 public:
  /// A null `name` finds nothing.
  DescendantWalk(const ParentNode& above, const Name* name) : m_above(&above), m_place(&above), m_name(name) {}

  TreeNode* Next();  ///< Null at the end, and ever after.

 private:
  const ParentNode* m_above;
  const TreeNode* m_place;  // the node that was looked at last; null at the end
  const Name* m_name;
};

}  // namespace ondrel::platform
