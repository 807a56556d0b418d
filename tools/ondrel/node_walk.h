// A walk over a definition's console tree.
#pragma once

#include <cstddef>
#include <optional>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::command {

/// Told of every node, parents before their children, siblings in their order.
class NodeVisitor {
 public:
  virtual ~NodeVisitor() = default;
  /// `depth` is 0 for a top-level node; `isLast` says that no sibling follows.
  virtual void EnterNode(const CMMCObjectParams& node, std::size_t depth, bool isLast) = 0;
  /// After the node's whole subtree.
  virtual void LeaveNode(bool isLast) = 0;
};

/// Walks all nodes. The tree may be of any depth: the walk does not use the call stack for it.
void WalkNodes(CMMCObjectSet& set, NodeVisitor& visitor);
/// The same of one node, for which the depth is 0, and of what is below it. Nothing for a cookie that names none.
void WalkSubtree(CMMCObjectSet& set, __int64 node, NodeVisitor& visitor);

std::size_t CountNodes(CMMCObjectSet& set);
std::size_t CountNodes(CMMCObjectSet& set, __int64 node);  ///< Of a subtree, with the node.

/// The node that a node hangs on: RootNode for a top-level one. None for a cookie that the walk over all nodes does not
/// come to, as a negative one and those below it.
std::optional<__int64> FindParent(CMMCObjectSet& set, __int64 node);

}  // namespace ondrel::command
